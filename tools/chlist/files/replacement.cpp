// Temporary file, fsync, rename; and the folder is brought to the disk behind the rename.
#include "chlist/files/replacement.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <stdexcept>

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr mode_t may_write = 0222;

// What is known of the file that is replaced, if there is one. A rename would replace one that nobody may write, too.
std::optional<struct stat> look_at(const fs::path &target) {
  struct stat found = {};
  if (::stat(target.c_str(), &found) != 0) {
    if (errno != ENOENT) {
      fail(target.string());
    }
    return std::nullopt;
  }
  if (!S_ISREG(found.st_mode)) {
    throw std::runtime_error(target.string() + ": not a regular file");
  }
  if ((found.st_mode & may_write) == 0) {
    throw std::runtime_error(target.string() + ": is read-only");
  }
  return found;
}

// The system itself follows no more.
constexpr int most_links = 40;

}  // namespace

fs::path behind_links(const fs::path &target) {
  fs::path place = fs::absolute(target);
  for (int links = 0; links < most_links && fs::is_symlink(place) && !fs::exists(place); ++links) {
    place = place.parent_path() / fs::read_symlink(place);
  }
  return fs::weakly_canonical(place);
}

mode_t mode_of_new(mode_t wanted) {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return wanted & ~mask;
}

void must_be_replaceable(const fs::path &target) { look_at(target); }

working_directory::working_directory(const descriptor &directory, const std::string &name)
    : before_(::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC), "working directory") {
  if (::fchdir(directory.get()) != 0) {
    fail(name);
  }
}

working_directory::~working_directory() { static_cast<void>(::fchdir(before_.get()) == 0); }

replacement::replacement(const fs::path &target)
    : target_(behind_links(target)), model_(look_at(target_)), folder_name_(target_.parent_path()),
      folder_(::open(folder_name_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC), folder_name_),
      inside_(folder_, folder_name_), file_(::mkostemp(name_, O_CLOEXEC), "temporary file in " + folder_name_) {}

replacement::~replacement() {
  if (!is_renamed_) {
    ::unlink(name_);
  }
}

// The system may take less than it is given, and be interrupted.
void replacement::write(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(file_.get(), text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      fail(target_.string());
    }
  }
}

// The owner goes first: giving a file away takes bits from its mode. Only root may give it to anybody.
void replacement::take_attributes() const {
  if (model_) {
    static_cast<void>(::fchown(file_.get(), model_->st_uid, model_->st_gid) == 0);
  }
  if (::fchmod(file_.get(), model_ ? model_->st_mode & 07777U : mode_of_new(0666)) != 0) {
    fail(target_.string());
  }
}

void replacement::bring_to_disk() {
  take_attributes();
  if (::fsync(file_.get()) != 0) {
    fail(target_.string());
  }
}

void replacement::take_place() {
  const std::string target_name = target_.filename();
  bring_to_disk();
  if (std::rename(name_, target_name.c_str()) != 0) {
    fail(target_.string());
  }
  is_renamed_ = true;
  ::fsync(folder_.get());
}

void replacement::take_place_for_now() {
  if (!fs::exists(target_)) {
    take_place();
    return;
  }
  const std::string target_name = target_.filename();
  bring_to_disk();
  was_there_ = ::renameat2(AT_FDCWD, name_, AT_FDCWD, target_name.c_str(), RENAME_EXCHANGE) == 0;
  if (!was_there_ && (errno != EINVAL && errno != ENOSYS)) {
    fail(target_.string());
  }
  if (!was_there_) {
    take_place();
  }
  ::fsync(folder_.get());
}

void replacement::put_back() {
  const std::string target_name = target_.filename();
  if (was_there_) {
    was_there_ = ::renameat2(AT_FDCWD, name_, AT_FDCWD, target_name.c_str(), RENAME_EXCHANGE) != 0;
  } else if (is_renamed_ && !model_) {
    ::unlink(target_name.c_str());
  }
}

void write_text_file(const fs::path &target, std::string_view text) {
  replacement file(target);
  file.write(text);
  file.take_place();
}

}  // namespace chlist
