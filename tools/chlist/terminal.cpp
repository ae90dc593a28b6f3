// Escape sequences for terminals.
#include "chlist/terminal.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace chlist {
namespace {

constexpr std::chrono::seconds silence{1};
constexpr std::chrono::milliseconds interval{200};

constexpr std::size_t usual_columns = 80;
constexpr std::size_t least_columns = 40;
constexpr std::size_t most_columns_of_prose = 100;

struct screen {
  bool is_terminal = false;
  std::size_t columns = 0;  // 0: it does not say
  std::size_t rows = 0;
};

// What the user says of the terminal counts more than what it says itself.
std::size_t size_from(const char *variable, std::size_t own) {
  const char *text = std::getenv(variable);
  std::size_t size = 0;
  return text != nullptr && std::from_chars(text, text + std::strlen(text), size).ec == std::errc() ? size : own;
}

screen screen_at_first() {
  if (::isatty(STDOUT_FILENO) != 1) {
    return {};
  }
  winsize size = {};
  static_cast<void>(::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size));
  return {true, size_from("COLUMNS", size.ws_col), size_from("LINES", size.ws_row)};
}

const screen &first_screen() {
  static const screen found = screen_at_first();
  return found;
}

std::optional<std::size_t> unless_zero(std::size_t size) { return size != 0 ? std::optional(size) : std::nullopt; }

bool is_terminal(std::FILE *stream) {
  return stream == stdout ? first_screen().is_terminal : ::isatty(::fileno(stream)) == 1;
}

bool takes_colours(std::FILE *stream) {
  const char *refused = std::getenv("NO_COLOR");
  const char *terminal = std::getenv("TERM");
  return is_terminal(stream) && (refused == nullptr || *refused == '\0') &&
         (terminal == nullptr || std::string_view(terminal) != "dumb");
}

constexpr int code_of(style look) {
  switch (look) {
    case style::bold:
      return 1;
    case style::dim:
      return 2;
    case style::red:
      return 31;
    case style::yellow:
      return 33;
    case style::green:
      return 32;
  }
  return 0;
}

}  // namespace

std::optional<std::size_t> columns_of_screen() { return unless_zero(first_screen().columns); }
std::optional<std::size_t> rows_of_screen() { return unless_zero(first_screen().rows); }

std::size_t width_of_prose() {
  return std::clamp(columns_of_screen().value_or(usual_columns), least_columns, most_columns_of_prose);
}

std::string painted(std::string_view text, style look, std::FILE *stream) {
  return takes_colours(stream) ? fmt::format("\033[{}m{}\033[0m", code_of(look), text) : std::string(text);
}

progress::progress(std::string what)
    : what_(std::move(what)), next_(clock::now() + silence), is_terminal_(::isatty(STDERR_FILENO) == 1) {}

progress::~progress() {
  if (is_shown_) {
    static_cast<void>(std::fputs("\r\033[K", stderr));
  }
}

void progress::reached(std::size_t done, std::size_t total) {
  if (!is_terminal_ || total == 0 || clock::now() < next_) {
    return;
  }
  next_ = clock::now() + interval;
  is_shown_ = true;
  fmt::print(stderr, "\r\033[K{}: {} of {} ({} %)", what_, done, total, done * 100 / total);
  static_cast<void>(std::fflush(stderr));
}

}  // namespace chlist
