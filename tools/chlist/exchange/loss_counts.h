// What is lost between a channel list and another format, counted by its kind.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "chlist/line_up/line_up.h"

namespace chlist {

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
