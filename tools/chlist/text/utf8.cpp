// The table of well-formed byte sequences of the Unicode standard.
#include "chlist/text/utf8.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace chlist {
namespace {

// Characters by their first byte; the second byte is within a range of its own, all others are 0x80..0xBF.
struct sequence {
  unsigned char first_least;
  unsigned char first_most;
  unsigned char second_least;
  unsigned char second_most;
  std::size_t size;
};

constexpr sequence sequences[] = {
    {0x00, 0x7F, 0x00, 0xFF, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

bool is_within(char c, unsigned char least, unsigned char most) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= least && byte <= most;
}

// Of the character that a text begins with; 0 when that is none.
std::size_t size_of_first(std::string_view text) {
  const auto *const found = std::ranges::find_if(
      sequences, [&](const sequence &each) { return is_within(text.front(), each.first_least, each.first_most); });
  if (found == std::end(sequences) || found->size > text.size()) {
    return 0;
  }
  const std::string_view tail = text.substr(1, found->size - 1);
  const bool is_well_formed = std::ranges::all_of(tail, [](char c) { return is_within(c, 0x80, 0xBF); }) &&
                              (tail.empty() || is_within(tail.front(), found->second_least, found->second_most));
  return is_well_formed ? found->size : 0;
}

}  // namespace

std::string_view without_byte_order_mark(std::string_view text) {
  return text.starts_with(byte_order_mark) ? text.substr(byte_order_mark.size()) : text;
}

bool is_utf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t size = size_of_first(text);
    if (size == 0) {
      return false;
    }
    text.remove_prefix(size);
  }
  return true;
}

}  // namespace chlist
