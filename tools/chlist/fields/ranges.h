// What numbers of a channel list may be, whatever record they stand in.
#pragma once

#include <channel/records.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <limits>

#include "chlist/fields/pids.h"
#include "chlist/fields/values.h"
#include "chlist/line_up/line_up.h"
#include "chlist/line_up/polarisation.h"

namespace chlist::ranges {

template <class Number>
constexpr value_range all_of(std::string_view text) {
  return {value_kind::number, std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max(), text};
}

inline constexpr value_range free_text = {value_kind::text, 0, 0, "a text"};
inline constexpr value_range name_of_group = {value_kind::text, 0, 0, "a name, or none", 0};
inline constexpr value_range several_texts = {value_kind::texts};

inline constexpr value_range byte = all_of<std::uint8_t>("0 to 255");
inline constexpr value_range id16 = all_of<std::uint16_t>("0 to 65535");
inline constexpr value_range signed8 = all_of<std::int8_t>("-128 to 127");
inline constexpr value_range signed16 = all_of<std::int16_t>("-32768 to 32767");
inline constexpr value_range frequency_khz = {value_kind::number, 1, std::numeric_limits<std::uint32_t>::max(),
                                              "1 to 4294967295"};
inline constexpr value_range position_in_view = {value_kind::number, 1, MAX_CHANNEL, "1 to 5000"};
static_assert(MAX_CHANNEL == 5000);
inline constexpr value_range channel_number = {value_kind::number, 1, largest_channel_number, "1 to 32767"};
inline constexpr value_range minor_number = {value_kind::number, 0, largest_channel_number, "0 to 32767"};
static_assert(largest_channel_number == 32767);
inline constexpr value_range number_of_records = {value_kind::number, 0, std::numeric_limits<std::int64_t>::max(),
                                                  "0 and more"};
inline constexpr value_range pid = {value_kind::number, 0, largest_pid, "0 to 8191, or none", unset_pid};
inline constexpr value_range component_tag = {value_kind::number, 0, 255, "0 to 255, or none", unset_tag};

inline constexpr word no_or_yes[] = {{"yes", 1}, {"no", 0}, {"true", 1}, {"false", 0}};
inline constexpr value_range yes_or_no = {value_kind::yes_or_no, 0, 1, "yes or no", {}, no_or_yes};

inline constexpr auto polarisations = [] {
  std::array<word, std::size(filed_polarisations)> words;
  std::ranges::transform(filed_polarisations, words.begin(), [](const filed_polarisation &each) {
    return word{each.text, each.polarisation};
  });
  return words;
}();
inline constexpr value_range letters_of_polarisation = {value_kind::named,  0,  255,
                                                        "H, V or 0 to 255", {}, polarisations};

}  // namespace chlist::ranges
