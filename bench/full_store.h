// The scene of every measurement: the full list, in memory and as a channel file on a file system in memory, the
// library's `sync` left out, its log at the level that it starts with.
#pragma once

#include <channel/records.h>
#include <unistd.h>

#include <cstddef>
#include <span>
#include <string>

namespace bench {

// The full list as the hierarchy holds it.
inline constexpr int networks = 2;
inline constexpr int transponders_per_network = 250;
inline constexpr int services_per_transponder = 10;
inline constexpr int records = networks * (1 + transponders_per_network * (1 + services_per_transponder));
inline constexpr int entries_of_all_views =
    MAX_CHANNEL + MAX_TV_CHANNEL + MAX_RADIO_CHANNEL + MAX_CHANNEL + MAX_PROMO_CHANNEL + MAX_FAV * MAX_FAV_NUM;

// Sizes of the file's records.
inline constexpr std::size_t header_bytes = 460'032;
inline constexpr std::size_t network_bytes = 416;
inline constexpr std::size_t transponder_bytes = 336;
inline constexpr std::size_t service_bytes = 312;
inline constexpr std::size_t file_bytes =
    header_bytes + networks * (network_bytes + transponders_per_network *
                                                   (transponder_bytes + services_per_transponder * service_bytes));

// The channel file, below the target directory, and another one to save to.
inline constexpr char list_file[] = "channel.dat";
inline constexpr char saved_file[] = "saved.dat";

// A new scan of the same list: the first service of every transponder replaced by another one, every tenth. And the
// list as version 8 filed it.
inline constexpr char scan_file[] = "scan.dat";
inline constexpr char version_8_file[] = "v8.dat";

// What a replaced service's id is raised by.
inline constexpr int to_replacing_id = 0x2000;

// More would want more ids than there are for services and those that replace them.
inline constexpr int most_services = 20'000;

// Builds the list and its files. Called once, before everything else. What grows with the list is measured at other
// numbers of services too. Every provider but the last has services.
void build_full_store(int services = MAX_CHANNEL);

// How many services the list was built with, and how many of them the scan replaces.
int services_in_store();
int replaced_services();

// Releases the list and loads it from its file: the ALL view is current and in the file's order.
void restore_full_store();

// A path in the scratch directory, which is the target directory.
std::string scratch_path(const char *name);

// What the channel file holds.
std::span<const char> file_contents();

// The sizes of the records behind the file's header, in the file's order.
std::span<const std::size_t> record_sizes();

// The ALL view in an order that is always the same, and far from the names' order.
std::span<const virtual_channel_st> shuffled_entries();

// A measurement of something that failed is worth nothing: stops the program.
void require(bool succeeded, const char *what);

// A file descriptor goes nowhere while this lives.
class muted_descriptor {
 public:
  explicit muted_descriptor(int descriptor);
  ~muted_descriptor();
  muted_descriptor(const muted_descriptor &) = delete;
  muted_descriptor &operator=(const muted_descriptor &) = delete;

 private:
  int descriptor_;
  int saved_;
};

// Standard output: every load prints a line there.
struct muted_stdout : muted_descriptor {
  muted_stdout() : muted_descriptor(STDOUT_FILENO) {}
};

// Standard error, where the log goes.
struct muted_stderr : muted_descriptor {
  muted_stderr() : muted_descriptor(STDERR_FILENO) {}
};

// The library logs nothing while this lives, not even errors.
class silenced_log {
 public:
  silenced_log();
  ~silenced_log();
  silenced_log(const silenced_log &) = delete;
  silenced_log &operator=(const silenced_log &) = delete;

 private:
  int level_;
};

}  // namespace bench
