// Text of other tables of characters, by the C library's converter: nothing else of the tool includes it.
#pragma once

#include <iconv.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace chlist {

struct converted_text {
  std::string text;      // UTF-8
  bool is_whole = true;  // no when something was no character of the table
};

class charset_converter {
 public:
  // By the name that iconv_open() knows.
  explicit charset_converter(const std::string &from);
  ~charset_converter();
  charset_converter(const charset_converter &) = delete;
  charset_converter &operator=(const charset_converter &) = delete;

  // A C library may come without some of the tables.
  [[nodiscard]] bool is_open() const;

  // A unit of so many bytes that is no character becomes U+FFFD.
  converted_text convert(std::string_view bytes, std::size_t unit = 1);

 private:
  iconv_t descriptor_;
};

// How the bytes of files were read.
struct charset_note {
  std::string charset = "UTF-8";
  std::size_t lines = 0;                   // that were not UTF-8
  std::vector<std::size_t> latin_1_lines;  // their numbers, of the file that was read last

  // For people; empty of UTF-8.
  [[nodiscard]] std::string text() const;
};

// The text of a file as UTF-8: of the charset that is named, else UTF-16 when it begins with the mark of that, else
// UTF-8 but for lines that are not, which are read as Latin-1. Throws std::runtime_error when there is no such charset,
// or the text is not of it.
std::string utf8_of_file(std::string bytes, const std::string &charset, charset_note &note);

// The bytes of a text that was read as Latin-1; characters beyond it become '?'.
std::string latin_1_of(std::string_view utf8);

}  // namespace chlist
