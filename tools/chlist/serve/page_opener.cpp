#include "chlist/serve/page_opener.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

#include "chlist/files/descriptor.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view ending_of_page = ".html";

// mkstemp() makes a file that its owner alone may read.
fs::path private_file(const std::string &text) {
  const char *runtime = ::getenv("XDG_RUNTIME_DIR");
  const fs::path folder =
      runtime != nullptr && fs::is_directory(runtime) ? fs::path(runtime) : fs::temp_directory_path();
  std::string name = (folder / "chlist-XXXXXX").string().append(ending_of_page);
  const descriptor file(::mkostemps(name.data(), static_cast<int>(ending_of_page.size()), O_CLOEXEC), name);
  if (::write(file.get(), text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
    fail(name);
  }
  return name;
}

// What the opener and the browser are started with: no stream of ours, no signal blocked, a group of their own that
// Ctrl-C does not reach.
class start_settings {
 public:
  start_settings() {
    ::posix_spawn_file_actions_init(&streams_);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      ::posix_spawn_file_actions_addopen(&streams_, stream, "/dev/null", O_RDWR, 0);
    }
    sigset_t nothing;
    ::sigemptyset(&nothing);
    ::posix_spawnattr_init(&attributes_);
    ::posix_spawnattr_setsigmask(&attributes_, &nothing);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
  }
  ~start_settings() {
    ::posix_spawn_file_actions_destroy(&streams_);
    ::posix_spawnattr_destroy(&attributes_);
  }
  start_settings(const start_settings &) = delete;
  start_settings &operator=(const start_settings &) = delete;

  void run(const char *program, const std::string &argument) {
    std::string name = program;
    std::string only_one = argument;  // which the call does not promise to leave alone
    const std::array<char *, 3> arguments = {name.data(), only_one.data(), nullptr};
    if (const int error = ::posix_spawnp(nullptr, program, &streams_, &attributes_, arguments.data(), environ);
        error != 0) {
      errno = error;
      fail(program);
    }
  }

 private:
  posix_spawn_file_actions_t streams_ = {};
  posix_spawnattr_t attributes_ = {};
};

}  // namespace

page_opener::page_opener(const std::string &address)
    : file_(private_file(fmt::format("<!doctype html><meta charset=\"utf-8\"><meta name=\"referrer\" "
                                     "content=\"no-referrer\"><meta http-equiv=\"refresh\" content=\"0; url={0}\">"
                                     "<title>Channel list</title><a href=\"{0}\">Edit the list</a>\n",
                                     address))) {
  try {
    start_settings().run("xdg-open", file_.string());
  } catch (const std::system_error &) {
    ::unlink(file_.c_str());
    throw;
  }
}

page_opener::~page_opener() { ::unlink(file_.c_str()); }

}  // namespace chlist
