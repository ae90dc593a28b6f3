// A temporary folder beside the target, which takes its place by renaming.
#include "chlist/files/text_folder.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <stdexcept>
#include <system_error>

#include "chlist/files/descriptor.h"
#include "chlist/files/replacement.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

descriptor opened(const fs::path &folder) {
  return descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC), folder.string());
}

void bring_to_disk(const fs::path &folder) {
  if (::fsync(opened(folder).get()) != 0) {
    fail(folder.string());
  }
}

// Goes away with what is in it unless it takes the target's place.
class temporary_folder {
 public:
  explicit temporary_folder(const fs::path &beside) : path_((beside / ".chlist-XXXXXX").string()) {
    if (::mkdtemp(path_.data()) == nullptr) {
      fail(beside.string());
    }
  }
  ~temporary_folder() {
    std::error_code ignored;
    if (!is_renamed_) {
      fs::remove_all(path_, ignored);
    }
  }
  temporary_folder(const temporary_folder &) = delete;
  temporary_folder &operator=(const temporary_folder &) = delete;

  [[nodiscard]] const std::string &path() const { return path_; }

  // An empty folder makes place, nothing else does.
  void become(const fs::path &target) {
    if (::chmod(path_.c_str(), mode_of_new(0777)) != 0 || ::rename(path_.c_str(), target.c_str()) != 0) {
      fail(target.string());
    }
    is_renamed_ = true;
  }

 private:
  std::string path_;
  bool is_renamed_ = false;
};

void must_make_place(const fs::path &target) {
  if (!fs::exists(target)) {
    return;
  }
  if (!fs::is_directory(target)) {
    throw std::runtime_error(target.string() + ": not a folder");
  }
  if (!fs::is_empty(target)) {
    throw std::runtime_error(target.string() + ": the folder is not empty, and what is in it would be taken for a part "
                                               "of the list");
  }
}

}  // namespace

void write_text_folder(const fs::path &target, std::span<const named_text> files) {
  const fs::path resolved = fs::weakly_canonical(fs::absolute(target) / "");
  const fs::path place = resolved.has_filename() ? resolved : resolved.parent_path();
  must_make_place(place);
  const descriptor around = opened(place.parent_path());
  temporary_folder folder(place.parent_path());
  for (const named_text &file : files) {
    write_text_file(fs::path(folder.path()) / file.name, file.text);
  }
  bring_to_disk(folder.path());
  folder.become(place);
  ::fsync(around.get());  // it is in its place, whatever comes of this
}

}  // namespace chlist
