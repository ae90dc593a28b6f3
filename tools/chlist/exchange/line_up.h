// What channel lists of any format have in common: services with their fields and numbers, and groups of favourites.
// Readers of formats give one, writers take one; neither knows the channel list in memory.
#pragma once

#include <channel/records.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "channel/store/hierarchy.h"

namespace chlist {

// The largest channel number that a list can show.
inline constexpr int largest_channel_number = 32767;

struct channel_number {
  int major = 0;
  int minor = 0;
  bool operator==(const channel_number &) const = default;
};

// One service. Texts are whole here, however long; the fields hold everything else that the channel list keeps of a
// service, but no names and no ids of groups.
struct line_up_service {
  std::size_t line = 0;  // where it stands in the source, 0 when that has no lines
  std::string name;
  std::string short_name;
  std::string provider;
  std::string genre;
  std::string country;
  std::string source;  // where it is received from, "S19.2E", "C" or "T"; the network's name in a channel list
  channel_st fields = channel::unset_service;  // frequency in kHz; net_index 0: numbered by source when it is filed
  std::optional<channel_number> number;        // none: the next one that is free
  int lowest_number = 1;                       // which is not below this
  bool is_listed = true;                       // in the ALL view; services that are not keep no number

  [[nodiscard]] bool has_flag(int bit) const { return (fields.flag & bit) != 0; }
  void set_flag(int bit, bool set) {
    fields.flag = static_cast<std::uint8_t>(set ? fields.flag | bit : fields.flag & ~bit);
  }
};

// A favourite group: positions in the services, in the group's order, with the numbers that it shows.
struct favourite_group {
  struct entry {
    std::size_t service = 0;
    channel_number number;  // 0: the service's own
  };
  std::string name;
  std::vector<entry> entries;
};

// A line, or a service, that was left out, and why.
struct skipped_line {
  std::size_t line = 0;
  std::string reason;
};

struct line_up {
  std::vector<line_up_service> services;  // in the order of the ALL view; those in no view behind them
  std::vector<favourite_group> favourites;
  std::vector<skipped_line> skipped;
};

// What the other side has no place for, and for how many services, numbers or groups that is so; in order of
// appearance.
class loss_counts {
 public:
  struct row {
    std::string what;  // "locks", "PCR PIDs"
    std::size_t count = 0;
    bool is_left_out = false;  // not a matter of the format: this once there was no room, or no way to say it
  };

  void add(std::string_view what, std::size_t count = 1) { add(what, count, false); }
  void leave_out(std::string_view what, std::size_t count = 1) { add(what, count, true); }
  [[nodiscard]] const std::vector<row> &rows() const { return rows_; }
  [[nodiscard]] bool has_left_out() const;

 private:
  void add(std::string_view what, std::size_t count, bool is_left_out);

  std::vector<row> rows_;
  std::unordered_map<std::string, std::size_t> places_[2];  // in the rows; of those that are left out apart
};

}  // namespace chlist
