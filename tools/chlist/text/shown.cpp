#include "chlist/text/shown.h"

#include <fmt/format.h>

#include <algorithm>

#include "chlist/json/json.h"
#include "chlist/text/plain_text.h"

namespace chlist {
// JSON escapes the controls below U+0020 and leaves those from U+007F on as they are.
std::string shown(std::string_view text) { return in_one_line(json(text).dump(), U'?'); }

std::string harmless(std::string_view text) { return in_one_line(text, U'?'); }

std::string shell_word(std::string_view word) {
  constexpr std::string_view harmless_to_shells = "@%+=:,./-_";
  const bool is_plain = !word.empty() && std::ranges::all_of(word, [&](char each) {
    const bool is_letter = (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z');
    const bool is_other_than_ascii = static_cast<unsigned char>(each) >= 0x80;
    return is_letter || (each >= '0' && each <= '9') || is_other_than_ascii ||
           harmless_to_shells.find(each) != std::string_view::npos;
  });
  if (is_plain) {
    return std::string(word);
  }
  std::string quoted = "'";
  for (const char each : word) {
    quoted += each == '\'' ? "'\\''" : std::string(1, each);
  }
  return quoted + '\'';
}

std::string counted(std::size_t count, std::string_view what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

std::string joined(std::span<const std::string> texts, std::string_view separator) {
  std::string all;
  for (const std::string &each : texts) {
    all.append(&each == texts.data() ? "" : separator).append(each);
  }
  return all;
}

}  // namespace chlist
