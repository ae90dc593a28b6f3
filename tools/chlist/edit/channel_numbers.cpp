// Numbers on command lines are checked here; the records hold signed 16-bit values.
#include "chlist/edit/channel_numbers.h"

#include <fmt/format.h>

#include <charconv>
#include <optional>
#include <stdexcept>

#include "chlist/line_up/selection.h"
#include "chlist/report.h"

namespace chlist {
namespace {

std::optional<int> integer_from(std::string_view text, int least) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool is_whole = error == std::errc() && end == text.data() + text.size();
  return is_whole && value >= least && value <= largest_channel_number ? std::optional(value) : std::nullopt;
}

}  // namespace

channel_number number_from(std::string_view text) {
  const std::size_t dash = text.find('-', 1);
  const auto major = integer_from(text.substr(0, dash), 1);
  const auto minor = dash == std::string_view::npos ? std::optional(0) : integer_from(text.substr(dash + 1), 0);
  if (!major || !minor) {
    throw std::runtime_error(
        fmt::format("{} is no channel number: NUMBER is 1 to {}, or NUMBER-MINOR with a minor number of 0 to {}",
                    shown(text), largest_channel_number, largest_channel_number));
  }
  return {*major, *minor};
}

channel_number number_of(const virtual_channel_st &entry) { return {entry.major_ch_num, entry.minor_ch_num}; }

void set_number(virtual_channel_st &entry, const channel_number &number) {
  entry.major_ch_num = static_cast<std::int16_t>(number.major);
  entry.minor_ch_num = static_cast<std::int16_t>(number.minor);
}

}  // namespace chlist
