// A whole channel file or none: temporary file, fsync, rename.
#include "chlist/files/list_file.h"

#include <channel/files.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <stdexcept>
#include <string>

#include "chlist/files/descriptor.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

// The library composes paths of at most 63 characters, so it is given names in the working directory.
class working_directory {
 public:
  explicit working_directory(const descriptor &directory, const std::string &name)
      : before_(::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC), "working directory") {
    if (::fchdir(directory.get()) != 0) {
      fail(name);
    }
  }
  ~working_directory() { static_cast<void>(::fchdir(before_.get()) == 0); }
  working_directory(const working_directory &) = delete;
  working_directory &operator=(const working_directory &) = delete;

 private:
  descriptor before_;
};

// An empty file in the working directory, which goes away unless it is renamed.
class temporary_file {
 public:
  temporary_file() : file_(::mkostemp(name_, O_CLOEXEC), "temporary file") {}
  ~temporary_file() {
    if (!is_renamed_) {
      ::unlink(name_);
    }
  }
  temporary_file(const temporary_file &) = delete;
  temporary_file &operator=(const temporary_file &) = delete;

  [[nodiscard]] const char *name() const { return name_; }

  // Gives the file its mode, brings it to the disk, and puts it in the target's place.
  void become(const std::string &target, mode_t mode) {
    if (::fchmod(file_.get(), mode) != 0 || ::fsync(file_.get()) != 0 || std::rename(name_, target.c_str()) != 0) {
      fail(target);
    }
    is_renamed_ = true;
  }

 private:
  char name_[16] = ".chlist-XXXXXX";
  descriptor file_;
  bool is_renamed_ = false;
};

mode_t mode_of_new_files() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666U & ~mask;
}

// The mode of the file that is replaced, if there is one.
mode_t mode_for(const fs::path &target) {
  struct stat found = {};
  if (::stat(target.c_str(), &found) != 0) {
    if (errno != ENOENT) {
      fail(target.string());
    }
    return mode_of_new_files();
  }
  if (!S_ISREG(found.st_mode)) {
    throw std::runtime_error(target.string() + ": not a regular file");
  }
  return found.st_mode & 07777U;
}

}  // namespace

void save_list_as(const fs::path &target) {
  // A symbolic link stays one: what it points to is replaced.
  const fs::path resolved = fs::weakly_canonical(fs::absolute(target));
  const mode_t mode = mode_for(resolved);
  const std::string folder = resolved.parent_path();
  const descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC), folder);
  const working_directory inside(directory, folder);
  temporary_file file;
  set_target_dir("./");
  if (save_channel(file.name()) != 1) {
    throw std::runtime_error(target.string() + ": the channel file could not be written");
  }
  file.become(resolved.filename(), mode);
  ::fsync(directory.get());
}

}  // namespace chlist
