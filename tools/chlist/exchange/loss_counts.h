// What is lost between a channel list and another format, counted by its kind.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
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
    std::string note;          // what it means, or the first of them; may be empty
  };

  // The first note of a kind stays.
  void add(std::string_view what, std::size_t count = 1, std::string note = {}) {
    add({std::string(what), count, false, std::move(note)});
  }
  void leave_out(std::string_view what, std::size_t count = 1, std::string note = {}) {
    add({std::string(what), count, true, std::move(note)});
  }
  void add(const loss_counts &others);
  [[nodiscard]] const std::vector<row> &rows() const { return rows_; }
  [[nodiscard]] bool has_left_out() const;

 private:
  void add(row more);

  std::vector<row> rows_;
  std::unordered_map<std::string, std::size_t> places_[2];  // in the rows; of those that are left out apart
};

}  // namespace chlist
