#include "chlist/salvage/transfer_damage.h"

#include <cstring>
#include <utility>

namespace chlist {
namespace {

constexpr std::byte line_feed{0x0A};
constexpr std::byte carriage_return{0x0D};

// Fewer may stand in any file.
constexpr std::size_t enough = 4;

// All but a few, which came to the file later, or are at the borders of what was cut out.
bool are_nearly_all(std::size_t some, std::size_t all) { return some >= enough && some + all / 50 >= all; }

// At or behind a place; the file's size when there is none.
std::size_t next_line_feed(byte_span file, std::size_t at) {
  const void *found =
      at < file.size() ? std::memchr(file.data() + at, std::to_integer<int>(line_feed), file.size() - at) : nullptr;
  return found == nullptr ? file.size() : static_cast<std::size_t>(static_cast<const std::byte *>(found) - file.data());
}

bool is_crlf(byte_span file, std::size_t at) {
  return at + 1 < file.size() && file[at] == carriage_return && file[at + 1] == line_feed;
}

// No channel file that was never sent has a carriage return in front of every line feed: 10 is a number like others.
bool has_crlf_line_ends(byte_span file) {
  std::size_t line_feeds = 0;
  std::size_t with_return = 0;
  for (std::size_t at = 0; (at = next_line_feed(file, at)) < file.size(); ++at) {
    ++line_feeds;
    with_return += at > 0 && is_crlf(file, at - 1) ? 1 : 0;
  }
  return are_nearly_all(with_return, line_feeds);
}

std::vector<std::byte> with_line_feeds(byte_span file) {
  std::vector<std::byte> made;
  made.reserve(file.size());
  for (std::size_t i = 0; i < file.size(); ++i) {
    if (!is_crlf(file, i)) {
      made.push_back(file[i]);
    }
  }
  return made;
}

// U+0080 to U+00FF: two bytes, 110000xx 10xxxxxx.
bool is_upper_letter(byte_span file, std::size_t at) {
  return at + 1 < file.size() && (file[at] & std::byte{0xFC}) == std::byte{0xC0} &&
         (file[at + 1] & std::byte{0xC0}) == std::byte{0x80};
}

// A channel file has bytes above 0x7F everywhere, PIDs that are not set among them: 0xFF is none of UTF-8.
bool is_latin1_in_utf8(byte_span file) {
  std::size_t upper = 0;
  std::size_t of_letters = 0;
  for (std::size_t i = 0; i < file.size(); ++i) {
    upper += file[i] >= std::byte{0x80} ? 1 : 0;
    of_letters += is_upper_letter(file, i) ? 2 : 0;
  }
  return are_nearly_all(of_letters, upper);
}

std::vector<std::byte> in_latin1(byte_span file) {
  std::vector<std::byte> made;
  made.reserve(file.size());
  for (std::size_t i = 0; i < file.size(); ++i) {
    if (is_upper_letter(file, i)) {
      made.push_back(file[i] << 6U | (file[i + 1] & std::byte{0x3F}));
      ++i;
    } else {
      made.push_back(file[i]);
    }
  }
  return made;
}

}  // namespace

std::optional<undone_transfer> undo_transfer(byte_span file) {
  if (!is_latin1_in_utf8(file)) {
    return has_crlf_line_ends(file) ? std::optional(undone_transfer{"LF to CRLF", with_line_feeds(file)})
                                    : std::nullopt;
  }
  std::vector<std::byte> bytes = in_latin1(file);
  if (has_crlf_line_ends(bytes)) {
    return undone_transfer{"Latin-1 to UTF-8, and LF to CRLF", with_line_feeds(bytes)};
  }
  return undone_transfer{"Latin-1 to UTF-8", std::move(bytes)};
}

}  // namespace chlist
