// Where the data files live: the target directory, and paths below it.
#pragma once

#include <cstddef>

namespace channel::persist {

// A data file's path: the target directory followed directly by a name. A path that is too long is cut and cannot be
// opened.
class data_path {
 public:
  explicit data_path(const char *name);
  [[nodiscard]] const char *c_str() const { return text_; }
  // The path, or null when it was cut.
  [[nodiscard]] const char *to_open() const { return is_whole_ ? text_ : nullptr; }

 private:
  static constexpr std::size_t size = 64;
  char text_[size] = {};
  bool is_whole_;
};

}  // namespace channel::persist
