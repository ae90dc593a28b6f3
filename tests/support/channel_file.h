// Channel files put together byte by byte, at the offsets of the file, without the library under test.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "record_fields.h"
#include "store_builder.h"
#include "temp_dir.h"

namespace test_support {

constexpr std::size_t list_size = 460'032;
constexpr std::size_t network_size = 416;
constexpr std::size_t transponder_size = 336;
constexpr std::size_t service_size = 312;
constexpr std::size_t entry_size = 24;
constexpr std::size_t group_size = 104;

// A value in the low bytes first, at a place of an image.
void put(bytes &image, std::size_t at, std::size_t width, std::uint64_t value);
std::uint64_t get(const bytes &image, std::size_t at, std::size_t width);

// Where a view, or a group table, stands in the image of the channel list.
struct array_place {
  int code;  // the view's, or the kind of the groups
  std::size_t array;
  std::size_t count;
  int capacity;
};

// Every saved view: 0 to 3, 5 and the favourite groups.
const std::vector<array_place> &view_places();
// Genres, providers, countries and favourite groups.
const std::vector<array_place> &group_places();
const array_place &view_place(int code);
const array_place &group_place(int kind);

enum class record_kind { list, network, transponder, service };

struct record_place {
  record_kind kind;
  std::size_t offset;
  std::size_t size;
};

// A file that grows record by record; its counts are kept in step. It begins as an initialised, empty list.
class channel_file {
 public:
  channel_file();
  channel_file &network(std::uint8_t net_index, std::uint16_t network_id, const std::string &name);
  channel_file &transponder(std::uint16_t ts_id, std::uint32_t frequency, std::uint8_t polarisation);
  // A service on the last transponder; a network and a transponder come first when the last ones are not its own.
  channel_file &service(const service_data &data);
  channel_file &entry(int view, const service_data &data, int major, int favorite_id = 0);
  channel_file &group(int kind, int id, const std::string &name);

  // A field of the list's image.
  channel_file &set(std::size_t at, std::size_t width, std::uint64_t value);
  // A field of the last record of a kind.
  channel_file &set_last(record_kind kind, std::size_t at, std::size_t width, std::uint64_t value);

  bytes data;
  std::vector<record_place> records;

 private:
  record_place &append(record_kind kind, std::size_t size);
  const record_place *last(record_kind kind) const;
  void count_up(std::size_t at);
};

// Every slot of a pointer in a file made of these records is set to a byte.
void fill_pointer_slots(bytes &file, const std::vector<record_place> &records, char byte);

// A side file: a count and a whole table, the used slots named "kind 0", "kind 1" and so on, with the ids 100, 101, ...
bytes side_file(int capacity, int count, const std::string &kind);

// What a load says of empty tables whose side files are missing.
inline const std::string no_genres = "ERROR: load_group_list:# Fail to open 'genre.dat'\n";
inline const std::string no_countries = "ERROR: load_group_list:# Fail to open 'country.dat'\n";

// A store test with a directory of its own as target directory. The log is off; what loads print on standard output is
// caught.
class file_test : public store_test {
 protected:
  void SetUp() override;

  [[nodiscard]] std::string path(const std::string &name = "list.dat") const { return dir.path() + name; }
  // Writes a file and loads it.
  int load(const bytes &contents, int sort_mode = 255);
  static int load_named(const char *name, int sort_mode = 255);
  // The contents of a file that save_channel wrote.
  bytes save();

  temp_dir dir;
};

// Says where two files differ first, instead of printing both.
void expect_same_bytes(const bytes &actual, const bytes &expected);

// The bytes of the list in memory.
bytes list_in_memory();

// The same right after init_channel_list. The list is empty afterwards.
bytes initialised_list();

}  // namespace test_support
