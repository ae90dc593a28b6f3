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

// 0 when the terminal does not say.
std::size_t columns_of_terminal() {
  const char *told = std::getenv("COLUMNS");
  std::size_t columns = 0;
  if (told != nullptr && std::from_chars(told, told + std::strlen(told), columns).ec == std::errc()) {
    return columns;
  }
  winsize size = {};
  return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool takes_colours(std::FILE *stream) {
  const char *refused = std::getenv("NO_COLOR");
  const char *terminal = std::getenv("TERM");
  return ::isatty(::fileno(stream)) == 1 && (refused == nullptr || *refused == '\0') &&
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

std::size_t width_of_prose() {
  const std::size_t columns = ::isatty(STDOUT_FILENO) == 1 ? columns_of_terminal() : 0;
  return columns == 0 ? usual_columns : std::clamp(columns, least_columns, most_columns_of_prose);
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
