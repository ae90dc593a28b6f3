// The report waits in memory, and is the pager's standard input: no pipe can break, and the pager can go back in it.
#include "chlist/pager.h"

#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "chlist/terminal.h"

namespace chlist {
namespace {

constexpr const char *usual_pager = "command -v less >/dev/null || exit 127; exec less -FRX";
constexpr int not_found = 127;

std::string pager_of_user() {
  const char *named = std::getenv("PAGER");
  return named != nullptr ? named : usual_pager;
}

bool is_paged() {
  const char *terminal = std::getenv("TERM");
  const std::string pager = pager_of_user();
  return rows_of_screen() && !is_without_pager() && !pager.empty() && pager != "cat" && terminal != nullptr &&
         std::string_view(terminal) != "dumb";
}

// Handles each chunk of a file from its beginning on.
template <class Handle>
void read_all(int file, const Handle &handle) {
  std::array<char, 65536> chunk = {};
  ::lseek(file, 0, SEEK_SET);
  for (ssize_t size = 0; (size = ::read(file, chunk.data(), chunk.size())) > 0;) {
    handle(std::string_view(chunk.data(), static_cast<std::size_t>(size)));
  }
  ::lseek(file, 0, SEEK_SET);
}

std::size_t lines_in(int file) {
  std::size_t lines = 0;
  read_all(file, [&lines](std::string_view chunk) {
    for (const char c : chunk) {
      lines += c == '\n' ? 1U : 0U;
    }
  });
  return lines;
}

[[noreturn]] void become_pager(int file) {
  ::signal(SIGINT, SIG_DFL);
  ::dup2(file, STDIN_FILENO);
  const std::string pager = pager_of_user();
  ::execl("/bin/sh", "sh", "-c", pager.c_str(), nullptr);
  ::_exit(not_found);
}

// False when there is no such pager. An interrupt is for the pager, which goes on.
bool show_in_pager(int file) {
  const auto before = ::signal(SIGINT, SIG_IGN);
  const pid_t pager = ::fork();
  if (pager == 0) {
    become_pager(file);
  }
  int status = 0;
  const bool is_run = pager > 0 && ::waitpid(pager, &status, 0) == pager;
  ::signal(SIGINT, before);
  return is_run && !(WIFEXITED(status) && WEXITSTATUS(status) == not_found);
}

void show_at_once(int file) {
  read_all(file, [](std::string_view chunk) { std::fwrite(chunk.data(), 1, chunk.size(), stdout); });
  if (std::fflush(stdout) != 0) {
    fail("standard output");
  }
}

}  // namespace

bool &is_without_pager() {
  static bool is_without = false;
  return is_without;
}

paged_output::paged_output() {
  if (!is_paged() || std::fflush(stdout) != 0) {
    return;
  }
  kept_ = std::make_unique<descriptor>(::memfd_create("report", MFD_CLOEXEC), "report");
  terminal_ = std::make_unique<descriptor>(::dup(STDOUT_FILENO), "standard output");
  ::dup2(kept_->get(), STDOUT_FILENO);
}

paged_output::~paged_output() { give_back(); }

void paged_output::give_back() {
  if (terminal_ != nullptr) {
    static_cast<void>(std::fflush(stdout));
    ::dup2(terminal_->get(), STDOUT_FILENO);
    terminal_.reset();
  }
}

void paged_output::show() {
  if (kept_ == nullptr) {
    return;
  }
  give_back();
  const bool is_long = lines_in(kept_->get()) >= *rows_of_screen();
  if (!is_long || !show_in_pager(kept_->get())) {
    show_at_once(kept_->get());
  }
  kept_.reset();
}

}  // namespace chlist
