// Text of other tables of characters, by the C library's converter: nothing else of the tool includes it.
#pragma once

#include <iconv.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace chlist {

struct converted_text {
  std::string text;
  std::size_t replaced = 0;  // what is no character of the table that it came from, or goes to

  [[nodiscard]] bool is_whole() const { return replaced == 0; }
};

class charset_converter {
 public:
  // from, to: names that iconv_open() knows.
  explicit charset_converter(const std::string &from, const std::string &to = "UTF-8");
  ~charset_converter();
  charset_converter(const charset_converter &) = delete;
  charset_converter &operator=(const charset_converter &) = delete;

  // A C library may come without some of the tables.
  [[nodiscard]] bool is_open() const;

  // To UTF-8. A unit of so many bytes that is no character becomes U+FFFD.
  converted_text convert(std::string_view bytes, std::size_t unit = 1);

  // From UTF-8. A character that the table has not becomes a question mark.
  converted_text encode(std::string_view text);

 private:
  // Takes some characters from the front; false when the first one is none.
  bool take(std::string_view &bytes, std::string &into);

  iconv_t descriptor_;
};

// How the bytes of a file are its text.
struct text_encoding {
  std::string charset;                     // empty: UTF-8, but for some lines
  bool has_mark = false;                   // a byte order mark in front
  std::vector<std::size_t> latin_1_lines;  // their numbers, rising

  [[nodiscard]] bool is_plain() const { return charset.empty() && !has_mark && latin_1_lines.empty(); }
};

// How the bytes of files were read.
struct charset_note {
  std::string charset = "UTF-8";
  std::size_t lines = 0;  // that were not UTF-8
  text_encoding last{};   // of the file that was read last

  // What it is called in reports; empty for UTF-8.
  [[nodiscard]] std::string text() const;
};

// The text of a file as UTF-8: of the charset that is named, else UTF-16 when it begins with the mark of that, else
// UTF-8 but for lines that are not, which are read as Latin-1. Throws std::runtime_error when there is no such charset,
// or the text is not of it.
std::string utf8_of_file(std::string bytes, const std::string &charset, charset_note &note);

// A text with the mark in front that its file had.
std::string with_mark_of(const text_encoding &encoding, std::string_view text);

// The bytes of a text in a charset, with the mark where it has one; nothing when this system does not know the charset.
std::optional<converted_text> bytes_in(const text_encoding &encoding, std::string_view text);

inline constexpr const char *latin_1 = "ISO-8859-1";

// The bytes of a text in Latin-1; nothing when it has other characters.
std::optional<std::string> latin_1_of(std::string_view utf8);

}  // namespace chlist
