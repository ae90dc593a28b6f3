// Child processes of the tests, with their output in memory or on a pseudo terminal.
#include "tool/program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <spawn.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <sstream>
#include <thread>

#include "support/rounds.h"

namespace tool_test {
namespace {

constexpr int patience_ms = 10'000;

// What the system calls want; valid as long as the command is.
std::vector<char *> pointers_to(const std::vector<std::string> &command) {
  std::vector<char *> arguments;
  for (const std::string &argument : command) {
    arguments.push_back(const_cast<char *>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  return arguments;
}

[[noreturn]] void execute(const std::vector<std::string> &command) {
  const std::vector<char *> arguments = pointers_to(command);
  ::execv(arguments.front(), arguments.data());
  ::_exit(127);
}

int wait_for_end(pid_t pid) {
  int status = 0;
  ::waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool ends_soon(pid_t pid) {
  constexpr int step_ms = 5;
  for (int waited = 0; waited < patience_ms; waited += step_ms) {
    if (::waitpid(pid, nullptr, WNOHANG) != 0) {
      return true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(step_ms));
  }
  return false;
}

// What the test made is not taken apart, which would copy every page of it. A sanitizer tells what was not released at
// an ordinary end.
[[noreturn]] void leave(int exit_code) {
  if (test_support::is_sanitized) {
    ::exit(exit_code);
  }
  ::fflush(nullptr);
  ::_exit(exit_code);
}

// A file in memory that a program's output goes to.
class sink {
 public:
  sink() : fd_(::memfd_create("output", MFD_CLOEXEC)) {}
  ~sink() { ::close(fd_); }
  sink(const sink &) = delete;
  sink &operator=(const sink &) = delete;

  void become(int fd) const { ::dup2(fd_, fd); }
  void become(int fd, posix_spawn_file_actions_t &actions) const {
    ::posix_spawn_file_actions_adddup2(&actions, fd_, fd);
  }

  [[nodiscard]] std::string text() const {
    std::string all(static_cast<std::size_t>(::lseek(fd_, 0, SEEK_END)), '\0');
    const ssize_t length = ::pread(fd_, all.data(), all.size(), 0);
    all.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return all;
  }

 private:
  int fd_;
};

}  // namespace

program_result run_program(const std::vector<std::string> &command, const std::string &directory) {
  const sink out;
  const sink err;
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  out.become(STDOUT_FILENO, actions);
  err.become(STDERR_FILENO, actions);
  if (!directory.empty()) {
    ::posix_spawn_file_actions_addchdir_np(&actions, directory.c_str());
  }
  const std::vector<char *> arguments = pointers_to(command);
  pid_t pid = -1;
  const bool is_started = ::posix_spawn(&pid, arguments.front(), &actions, nullptr, arguments.data(), environ) == 0;
  ::posix_spawn_file_actions_destroy(&actions);
  const int exit_code = is_started ? wait_for_end(pid) : -1;
  return {exit_code, out.text(), err.text()};
}

program_result run_in_fork(const std::function<int()> &program, const std::string &directory) {
  const sink out;
  const sink err;
  ::fflush(nullptr);  // or the fork would write it, too
  const pid_t pid = ::fork();
  if (pid == 0) {
    if (::chdir(directory.c_str()) != 0) {
      ::_exit(126);
    }
    ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
    out.become(STDOUT_FILENO);
    err.become(STDERR_FILENO);
    leave(program());
  }
  const int exit_code = wait_for_end(pid);
  return {exit_code, out.text(), err.text()};
}

terminal::terminal(const std::vector<std::string> &command) : terminal(command, 0, 0) {}

terminal::terminal(const std::vector<std::string> &command, std::uint16_t rows, std::uint16_t columns) {
  const winsize size = {rows, columns, 0, 0};
  pid_ = ::forkpty(&fd_, nullptr, nullptr, &size);
  if (pid_ == 0) {
    ::setenv("TERM", "xterm", 1);  // wherever the tests themselves run
    ::unsetenv("NO_COLOR");
    execute(command);
  }
}

// Hangs up, as somebody does who closes the window: a program that is killed would leave no counters of what it ran.
terminal::~terminal() {
  ::close(fd_);
  if (pid_ > 0 && !ends_soon(pid_)) {
    ::kill(pid_, SIGKILL);
    wait_for_end(pid_);
  }
}

bool terminal::read_more() {
  pollfd ready = {fd_, POLLIN, 0};
  char chunk[4096];
  if (::poll(&ready, 1, patience_ms) != 1) {
    return false;
  }
  const ssize_t length = ::read(fd_, chunk, sizeof chunk);
  if (length <= 0) {
    return false;
  }
  unread_.append(chunk, static_cast<std::size_t>(length));
  std::erase(unread_, '\r');
  return true;
}

std::string terminal::wait_for(const std::string &text) {
  std::size_t found = unread_.find(text);
  while (found == std::string::npos) {
    if (!read_more()) {
      ADD_FAILURE() << "'" << text << "' did not come; there is: " << unread_;
      return std::exchange(unread_, "");
    }
    found = unread_.find(text);
  }
  const std::string read = unread_.substr(0, found + text.size());
  unread_.erase(0, read.size());
  return read;
}

void terminal::type(const std::string &text) const {
  EXPECT_EQ(::write(fd_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

std::string terminal::answer(const std::string &line) {
  type(line + "\n");
  wait_for(line + "\n");
  std::string text = wait_for("> ");
  // The banner of the channel on the screen begins with the prompt's characters.
  while (text.size() == 2 || text[text.size() - 3] == '\n') {
    text += wait_for("> ");
  }
  return text;
}

int terminal::exit_code() {
  while (read_more()) {
  }
  return wait_for_end(std::exchange(pid_, -1));
}

std::vector<std::string> lines_of(const std::string &text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

bool has_line(const std::string &text, const std::string &line) {
  const std::vector<std::string> lines = lines_of(text);
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

}  // namespace tool_test
