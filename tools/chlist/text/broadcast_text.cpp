// The tables of EN 300 468 and their characters, which the C library's converter knows.
#include "chlist/text/broadcast_text.h"

#include <iconv.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>

#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr char first_printable = 0x20;
constexpr std::string_view replacement = "\xEF\xBF\xBD";  // U+FFFD

struct character_table {
  std::string_view selector;
  const char *name;  // as iconv_open() has it
  std::size_t unit = 1;
};

using namespace std::string_view_literals;

// The three bytes 0x10 0x00 N name ISO 8859-N.
constexpr character_table tables[] = {
    {"\x01", "ISO-8859-5"},
    {"\x02", "ISO-8859-6"},
    {"\x03", "ISO-8859-7"},
    {"\x04", "ISO-8859-8"},
    {"\x05", "ISO-8859-9"},
    {"\x06", "ISO-8859-10"},
    {"\x07", "ISO-8859-11"},
    {"\x09", "ISO-8859-13"},
    {"\x0A", "ISO-8859-14"},
    {"\x0B", "ISO-8859-15"},
    {"\x10\0\x01"sv, "ISO-8859-1"},
    {"\x10\0\x02"sv, "ISO-8859-2"},
    {"\x10\0\x03"sv, "ISO-8859-3"},
    {"\x10\0\x04"sv, "ISO-8859-4"},
    {"\x10\0\x05"sv, "ISO-8859-5"},
    {"\x10\0\x06"sv, "ISO-8859-6"},
    {"\x10\0\x07"sv, "ISO-8859-7"},
    {"\x10\0\x08"sv, "ISO-8859-8"},
    {"\x10\0\x09"sv, "ISO-8859-9"},
    {"\x11", "UCS-2BE", 2},
    {"\x12", "EUC-KR"},
    {"\x13", "GB2312"},
    {"\x14", "BIG5"},
    {"\x15", "UTF-8"},
};

class converter {
 public:
  explicit converter(const char *from) : descriptor_(iconv_open("UTF-8", from)) {}
  ~converter() {
    if (is_open()) {
      iconv_close(descriptor_);
    }
  }
  converter(const converter &) = delete;
  converter &operator=(const converter &) = delete;

  // A C library may come without some of the tables.
  [[nodiscard]] bool is_open() const { return reinterpret_cast<std::intptr_t>(descriptor_) != -1; }

  // A unit that is no character is replaced.
  plain_text convert(std::string_view bytes, std::size_t unit) {
    plain_text made;
    while (!bytes.empty()) {
      char piece[256];
      char *in = const_cast<char *>(bytes.data());  // iconv() does not write there
      std::size_t left = bytes.size();
      char *out = piece;
      std::size_t room = sizeof piece;
      const bool is_stopped = iconv(descriptor_, &in, &left, &out, &room) == std::size_t(-1);
      made.text.append(piece, out);
      const bool is_stuck = is_stopped && left == bytes.size();
      bytes.remove_prefix(bytes.size() - left);
      if (is_stuck) {
        made.text += replacement;
        made.is_whole = false;
        bytes.remove_prefix(std::min(unit, bytes.size()));
      }
    }
    return made;
  }

 private:
  iconv_t descriptor_;
};

// 0x8A ends a line, as controls below 0x20 may; others turn emphasis on and off. None is a part of a name.
std::string without_controls(std::string_view utf8) {
  std::string made;
  for (std::size_t at = 0; at < utf8.size(); ++at) {
    const auto next = static_cast<unsigned char>(at + 1 < utf8.size() ? utf8[at + 1] : '\0');
    if (utf8[at] == '\xC2' && next >= 0x80 && next <= 0x9F) {
      made += next == 0x8A ? " " : "";
      ++at;
    } else {
      made += static_cast<unsigned char>(utf8[at]) >= first_printable ? utf8[at] : ' ';
    }
  }
  return made;
}

// The selector of an unknown table: 0x1F is followed by the number of an encoding, 0x10 by two bytes.
std::size_t size_of_unknown(char selector) { return selector == 0x1F ? 2 : selector == 0x10 ? 3 : 1; }

}  // namespace

bool names_table(std::string_view broadcast_text) {
  return !broadcast_text.empty() && static_cast<unsigned char>(broadcast_text.front()) < first_printable;
}

plain_text utf8_of(std::string_view broadcast_text) {
  if (!names_table(broadcast_text)) {
    return {std::string(broadcast_text)};
  }
  const auto *const table = std::ranges::find_if(
      tables, [&](const character_table &each) { return broadcast_text.starts_with(each.selector); });
  if (table != std::end(tables)) {
    if (converter known(table->name); known.is_open()) {
      plain_text made = known.convert(broadcast_text.substr(table->selector.size()), table->unit);
      return {without_controls(made.text), made.is_whole};
    }
  }
  broadcast_text.remove_prefix(std::min(size_of_unknown(broadcast_text.front()), broadcast_text.size()));
  return {without_controls(broadcast_text), broadcast_text.empty()};
}

}  // namespace chlist
