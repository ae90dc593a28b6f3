// Shows an address in the user's browser.
#pragma once

#include <filesystem>
#include <string>

namespace chlist {

// The system's opener is given a file that leads there, which nobody else may read: everybody on the machine sees the
// arguments of programs. The file goes when this does.
class page_opener {
 public:
  // Throws when there is no opener, or no room for the file.
  explicit page_opener(const std::string &address);
  ~page_opener();
  page_opener(const page_opener &) = delete;
  page_opener &operator=(const page_opener &) = delete;

 private:
  std::filesystem::path file_;
};

}  // namespace chlist
