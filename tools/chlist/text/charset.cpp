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

// How many bytes the first character of UTF-8 has.
std::size_t length_of_first(std::string_view text) {
  std::size_t length = 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
    ++length;
  }
  return length;
}

bool has_mark_of_utf16(std::string_view bytes) {
  return bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("\xFE\xFF"sv);
}

// "UTF-16" leaves the order of bytes to the mark, which is no part of the text.
bool leaves_order_to_mark(std::string name) {
  std::ranges::transform(name, name.begin(),
                         [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  return name == "UTF-16" || name == "UTF16";
}

// Who writes it says the order. Of other charsets a mark is a character like others, where they have it.
text_encoding encoding_of(const std::string &charset, std::string_view bytes, std::string_view text) {
  if (!leaves_order_to_mark(charset)) {
    return {charset, text.starts_with(byte_order_mark), {}};
  }
  return {bytes.starts_with("\xFE\xFF"sv) ? "UTF-16BE" : "UTF-16LE", has_mark_of_utf16(bytes), {}};
}

std::string converted_from(const std::string &charset, std::string_view bytes) {
  charset_converter converter(charset);
  if (!converter.is_open()) {
    throw std::runtime_error("--charset: no charset is named " + charset);
  }
  converted_text made = converter.convert(bytes);
  if (!made.is_whole()) {
    throw std::runtime_error("is no text of " + charset);
  }
  return made.text;
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
      note.last.latin_1_lines.push_back(number);
    }
    bytes.remove_prefix(whole.size());
  }
  note.charset = latin_1;
  return text;
}

}  // namespace

charset_converter::charset_converter(const std::string &from, const std::string &to)
    : descriptor_(iconv_open(to.c_str(), from.c_str())) {}

charset_converter::~charset_converter() {
  if (is_open()) {
    iconv_close(descriptor_);
  }
}

bool charset_converter::is_open() const { return reinterpret_cast<std::intptr_t>(descriptor_) != -1; }

bool charset_converter::take(std::string_view &bytes, std::string &into) {
  char piece[256];
  char *in = const_cast<char *>(bytes.data());  // iconv() does not write there
  std::size_t left = bytes.size();
  char *out = piece;
  std::size_t room = sizeof piece;
  const bool is_stopped = iconv(descriptor_, &in, &left, &out, &room) == std::size_t(-1);
  into.append(piece, out);
  const bool is_stuck = is_stopped && left == bytes.size();
  bytes.remove_prefix(bytes.size() - left);
  return !is_stuck;
}

converted_text charset_converter::convert(std::string_view bytes, std::size_t unit) {
  converted_text made;
  while (!bytes.empty()) {
    if (!take(bytes, made.text)) {
      append_utf8(made.text, U'\uFFFD');
      ++made.replaced;
      bytes.remove_prefix(std::min(unit, bytes.size()));
    }
  }
  return made;
}

converted_text charset_converter::encode(std::string_view text) {
  converted_text made;
  while (!text.empty()) {
    if (!take(text, made.text)) {
      std::string_view question_mark = "?";
      take(question_mark, made.text);
      ++made.replaced;
      text.remove_prefix(length_of_first(text));
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
  note.last = {};
  if (!charset.empty() || has_mark_of_utf16(bytes)) {
    note.charset = charset.empty() ? "UTF-16" : charset;
    const std::string text = converted_from(note.charset, bytes);
    note.last = encoding_of(note.charset, bytes, text);
    return std::string(without_byte_order_mark(text));
  }
  note.last.has_mark = bytes.starts_with(byte_order_mark);
  return is_utf8(bytes) ? bytes : with_lines_of_latin_1(bytes, note);
}

std::string with_mark_of(const text_encoding &encoding, std::string_view text) {
  const bool lacks_mark = encoding.has_mark && !text.starts_with(byte_order_mark);
  return (lacks_mark ? std::string(byte_order_mark) : std::string()) + std::string(text);
}

std::optional<converted_text> bytes_in(const text_encoding &encoding, std::string_view text) {
  charset_converter converter("UTF-8", encoding.charset);
  return converter.is_open() ? std::optional(converter.encode(with_mark_of(encoding, text))) : std::nullopt;
}

std::optional<std::string> latin_1_of(std::string_view utf8) {
  constexpr char32_t largest = 0xFF;
  std::string bytes;
  for (const char32_t character : characters_of(utf8)) {
    if (character > largest) {
      return std::nullopt;
    }
    bytes += static_cast<char>(character);
  }
  return bytes;
}

}  // namespace chlist
