// Lines are told apart one by one: a list that somebody edited with another program is of both.
#include "chlist/text/charset.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>

#include "chlist/text/utf8.h"

namespace chlist {
namespace {

using namespace std::string_view_literals;

constexpr const char *latin_1 = "ISO-8859-1";

bool has_mark_of_utf16(std::string_view bytes) {
  return bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("\xFE\xFF"sv);
}

std::string converted_from(const std::string &charset, std::string_view bytes) {
  charset_converter converter(charset);
  if (!converter.is_open()) {
    throw std::runtime_error("--charset: no charset is named " + charset);
  }
  converted_text made = converter.convert(bytes);
  if (!made.is_whole) {
    throw std::runtime_error("is no text of " + charset);
  }
  return std::string(without_byte_order_mark(made.text));
}

// Every byte of Latin-1 is the character of its number.
void append_latin_1(std::string &text, std::string_view line) {
  for (const char c : line) {
    append_utf8(text, static_cast<unsigned char>(c));
  }
}

std::string with_lines_of_latin_1(std::string_view bytes, charset_note &note) {
  std::string text;
  text.reserve(bytes.size());
  std::size_t number = 0;
  while (!bytes.empty()) {
    const std::string_view line = bytes.substr(0, bytes.find('\n') + 1);
    const std::string_view whole = line.empty() ? bytes : line;
    ++number;
    if (is_utf8(whole)) {
      text += whole;
    } else {
      append_latin_1(text, whole);
      ++note.lines;
      note.latin_1_lines.push_back(number);
    }
    bytes.remove_prefix(whole.size());
  }
  note.charset = latin_1;
  return text;
}

}  // namespace

charset_converter::charset_converter(const std::string &from) : descriptor_(iconv_open("UTF-8", from.c_str())) {}

charset_converter::~charset_converter() {
  if (is_open()) {
    iconv_close(descriptor_);
  }
}

bool charset_converter::is_open() const { return reinterpret_cast<std::intptr_t>(descriptor_) != -1; }

converted_text charset_converter::convert(std::string_view bytes, std::size_t unit) {
  converted_text made;
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
      append_utf8(made.text, U'\uFFFD');
      made.is_whole = false;
      bytes.remove_prefix(std::min(unit, bytes.size()));
    }
  }
  return made;
}

std::string charset_note::text() const {
  if (lines > 0) {
    return fmt::format("{} {} not UTF-8 and read as Latin-1 (--charset names another)", lines,
                       lines == 1 ? "line is" : "lines are");
  }
  return charset != "UTF-8" ? "is read as " + charset : "";
}

std::string utf8_of_file(std::string bytes, const std::string &charset, charset_note &note) {
  note.latin_1_lines.clear();
  if (!charset.empty() || has_mark_of_utf16(bytes)) {
    note.charset = charset.empty() ? "UTF-16" : charset;
    return converted_from(note.charset, bytes);
  }
  return is_utf8(bytes) ? bytes : with_lines_of_latin_1(bytes, note);
}

std::string latin_1_of(std::string_view utf8) {
  constexpr char32_t largest = 0xFF;
  std::string bytes;
  for (const char32_t character : characters_of(utf8)) {
    bytes += character <= largest ? static_cast<char>(character) : '?';
  }
  return bytes;
}

}  // namespace chlist
