// The lines of a text that somebody else wrote: numbered, without their ends (LF or CRLF) and without the byte order
// mark in front of the first.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace chlist {

inline constexpr std::string_view blanks = " \t\r\v\f";

std::string_view without_leading_blanks(std::string_view text);
std::string_view without_trailing_blanks(std::string_view text);
std::string_view without_blanks_around(std::string_view text);

class text_lines {
 public:
  explicit text_lines(std::string_view text);

  // Nothing behind the last line.
  std::optional<std::string_view> next();

  // The next line without going on to it.
  [[nodiscard]] std::optional<std::string_view> peek() const;

  // The number of the line that next() gave last; 0 before the first.
  [[nodiscard]] std::size_t number() const { return number_; }

 private:
  std::string_view rest_;
  std::size_t number_ = 0;
};

}  // namespace chlist
