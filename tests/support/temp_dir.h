// A scratch directory with a short path (the library takes directories of at most 31 characters), and whole files in
// it.
#pragma once

#include <filesystem>
#include <string>

namespace test_support {

using bytes = std::string;

// Made at construction, removed with all its contents at the end; path() ends with "/".
class temp_dir {
 public:
  explicit temp_dir(const std::string &parent = "/tmp");
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
