// Base64: six bits a letter; the padding makes the length one of fours.
#include "chlist/text/base64.h"

#include <cstdint>

namespace chlist {
namespace {

constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string_view without_padding(std::string_view text) {
  for (int i = 0; i < 2 && text.ends_with('='); ++i) {
    text.remove_suffix(1);
  }
  return text;
}

}  // namespace

std::optional<std::string> bytes_of_base64(std::string_view text) {
  if (text.size() % 4 != 0) {
    return std::nullopt;
  }
  std::string bytes;
  std::uint32_t held = 0;
  int bits = 0;
  for (const char each : without_padding(text)) {
    const std::size_t value = letters.find(each);
    if (value == std::string_view::npos) {
      return std::nullopt;
    }
    held = (held << 6U) | static_cast<std::uint32_t>(value);
    bits += 6;
    if (bits >= 8) {
      bits -= 8;
      bytes += static_cast<char>((held >> static_cast<unsigned>(bits)) & 0xFFU);
    }
  }
  const std::uint32_t left_over = held & ((1U << static_cast<unsigned>(bits)) - 1U);
  return left_over == 0 ? std::optional(std::move(bytes)) : std::nullopt;
}

}  // namespace chlist
