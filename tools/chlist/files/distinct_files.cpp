// Files are the same when device and inode are. What is not there is no other file's; what cannot be looked at could
// be.
#include "chlist/files/distinct_files.h"

#include <sys/stat.h>

#include <cerrno>
#include <stdexcept>

#include "chlist/files/descriptor.h"

namespace chlist {
namespace {

bool look_at(const std::filesystem::path &path, struct stat &found) {
  if (::stat(path.c_str(), &found) == 0) {
    return true;
  }
  if (errno != ENOENT && errno != ENOTDIR) {
    fail(path.string());
  }
  return false;
}

}  // namespace

void must_differ(const std::filesystem::path &input, const std::filesystem::path &output) {
  struct stat read = {};
  struct stat written = {};
  if (look_at(input, read) && look_at(output, written) && read.st_dev == written.st_dev &&
      read.st_ino == written.st_ino) {
    throw std::runtime_error(output.string() + ": is the input itself");
  }
}

}  // namespace chlist
