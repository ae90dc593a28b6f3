#include "chlist/text/shown.h"

#include <fmt/format.h>

#include <algorithm>

#include "chlist/json/json.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

// JSON leaves the controls U+007F to U+009F as they are.
void replace_late_controls(std::string &text) {
  constexpr char lead = '\xC2';
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_control = i + 1 < text.size() && text[i] == lead && static_cast<unsigned char>(text[i + 1]) < 0xA0U;
    if (is_control || text[i] == '\x7F') {
      text.replace(i, is_control ? 2 : 1, "?");
    }
  }
}

}  // namespace

std::string shown(std::string_view text) {
  std::string quoted = json(text).dump();
  replace_late_controls(quoted);
  return quoted;
}

std::string harmless(std::string_view text) {
  if (is_printable_ascii(text)) {
    return std::string(text);
  }
  std::string valid = valid_utf8(text);
  std::ranges::replace_if(
      valid, [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
  replace_late_controls(valid);
  return valid;
}

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
