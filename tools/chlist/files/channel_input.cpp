// Reads channel files through the library, from any path.
#include "chlist/files/channel_input.h"

#include <channel/files.h>
#include <channel/store.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cstdint>
#include <cstdio>
#include <stdexcept>

#include "chlist/files/distinct_files.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

// The library composes paths of at most 63 characters. The side files of groups are not there, so that a list does not
// depend on what lies beside it.
constexpr const char *open_files = "/proc/self/fd/";

constexpr std::uint8_t keep_file_order = 255;

// The library tells every load on standard output, which belongs to the tool's report.
class silent_stdout {
 public:
  silent_stdout() : null_(::open("/dev/null", O_WRONLY | O_CLOEXEC), "/dev/null"), saved_(::dup(STDOUT_FILENO), name) {
    become(null_);
  }
  ~silent_stdout() { static_cast<void>(becomes(saved_)); }
  silent_stdout(const silent_stdout &) = delete;
  silent_stdout &operator=(const silent_stdout &) = delete;

  // Throws when the report would not come through.
  void end() const { become(saved_); }

 private:
  static constexpr const char *name = "standard output";

  static bool becomes(const descriptor &file) {
    return std::fflush(stdout) == 0 && ::dup2(file.get(), STDOUT_FILENO) >= 0;
  }
  static void become(const descriptor &file) {
    if (!becomes(file)) {
      fail(name);
    }
  }

  descriptor null_;
  descriptor saved_;
};

}  // namespace

// Without O_NONBLOCK the open would wait for the writer of a pipe.
channel_input::channel_input(const fs::path &path)
    : path_(path), file_(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC), path.string()) {
  struct stat found = {};
  if (::fstat(file_.get(), &found) != 0) {
    fail(path.string());
  }
  if (!S_ISREG(found.st_mode)) {
    refuse("not a regular file");
  }
  unsigned char number[2] = {};
  if (::pread(file_.get(), number, sizeof number, 0) != sizeof number) {
    refuse("too short for a channel file");
  }
  version_ = static_cast<std::int16_t>(number[0] | number[1] << 8U);
}

std::string channel_input::library_path() const { return open_files + std::to_string(file_.get()); }

void channel_input::refuse(const std::string &why) const { throw std::runtime_error(path_.string() + ": " + why); }

void channel_input::must_be_current() const {
  if (version_ == CHANNEL_LIST_VERSION) {
    return;
  }
  const bool is_convertible = version_ >= 7 && version_ < CHANNEL_LIST_VERSION;
  refuse("is of version " + std::to_string(version_) + ", not " + std::to_string(+CHANNEL_LIST_VERSION) +
         (is_convertible ? ": `chlist convert` makes one of it" : ""));
}

void channel_input::must_not_be(const fs::path &target) const { must_differ(path_, target); }

void channel_input::load() const {
  const silent_stdout silence;
  reset_channel_list();
  set_target_dir(open_files);
  if (load_channel(std::to_string(file_.get()).c_str(), keep_file_order) != CHANNEL_LIST_VERSION) {
    refuse("ends too early for a channel file of its version");
  }
  silence.end();
}

}  // namespace chlist
