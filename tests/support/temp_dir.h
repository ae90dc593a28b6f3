// A scratch directory with a short path (the library takes directories of at most 31 characters), and whole files in
// it.
#pragma once

#include <filesystem>
#include <string>

namespace test_support {

using bytes = std::string;

// A folder in memory where there is one with room, so that nothing waits for a disk.
std::string fastest_folder();

// Made at construction, removed with all its contents at the end; path() ends with "/".
class temp_dir {
 public:
  explicit temp_dir(const std::string &parent = fastest_folder());
  ~temp_dir();
  temp_dir(const temp_dir &) = delete;
  temp_dir &operator=(const temp_dir &) = delete;
  [[nodiscard]] const std::string &path() const { return path_; }

 private:
  std::string path_;
};

bytes read_file(const std::filesystem::path &path);
void write_file(const std::filesystem::path &path, const bytes &contents);

}  // namespace test_support
