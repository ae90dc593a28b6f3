// One line of a message is one write, so that lines of two programs do not mix.
#include "chlist/messages.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "chlist/text/shown.h"

namespace chlist {
namespace {

std::string &beginning() {
  static std::string text = "chlist: ";
  return text;
}

// A message may have several lines.
std::string harmless_lines(std::string_view text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  const std::string first = harmless(text.substr(0, end));
  return end == text.size() ? first : first + '\n' + harmless_lines(text.substr(end + 1));
}

}  // namespace

void speak_as(std::string line) {
  if (const std::size_t blank = line.find(' '); blank != std::string::npos) {
    line.insert(blank, 1, ':');
  }
  beginning() = std::move(line) + ": ";
}

std::string reason_of(const std::exception &error) {
  const auto *of_path = dynamic_cast<const std::filesystem::filesystem_error *>(&error);
  return of_path != nullptr ? of_path->path1().string() + ": " + of_path->code().message() : error.what();
}

void print_message(std::string_view text) {
  std::string line = beginning();
  line.append(harmless_lines(text)).append(1, '\n');
  static_cast<void>(std::fputs(line.c_str(), stderr));
}

}  // namespace chlist
