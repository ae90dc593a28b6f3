// Reading the fields of a line, for the formats that are text: taking it apart, its numbers, and what is said of one
// that cannot be read.
#pragma once

#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "chlist/fields/pids.h"

namespace chlist {

// Ends a line, and no more.
struct bad_line {
  explicit bad_line(std::string why) : reason(std::move(why)) {}
  std::string reason;
};

// What stands before the first separator, and what stands behind it if there is one.
std::pair<std::string_view, std::optional<std::string_view>> split_at_first(std::string_view text, char separator);

// The parts between separators: one more than there are separators.
std::vector<std::string_view> split(std::string_view text, char separator);

// Text of the file for a message: in quotes, short, and harmless on a terminal.
std::string quoted(std::string_view text);

// A number that is all of a text, without sign, from least to most. Throws bad_line, whose reason names the field.
template <class Number>
Number read_number(std::string_view text, std::string_view what, Number least = 0,
                   Number most = std::numeric_limits<Number>::max(), int base = 10) {
  Number value{};
  const char *end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, base);
  if (stop != end || error == std::errc::invalid_argument || text.front() == '-') {
    throw bad_line(std::string(what) + " " + quoted(text) + " is not a number");
  }
  if (error != std::errc() || value < least || value > most) {
    throw bad_line(std::string(what) + " " + quoted(text) + " is not within " + std::to_string(least) + ".." +
                   std::to_string(most));
  }
  return value;
}

template <class Number>
Number read_hexadecimal(std::string_view text, std::string_view what) {
  constexpr int base = 16;
  return read_number<Number>(text, what, 0, std::numeric_limits<Number>::max(), base);
}

inline std::uint16_t read_pid(std::string_view text, std::string_view what) {
  return read_number<std::uint16_t>(text, what, 0, largest_pid);
}

}  // namespace chlist
