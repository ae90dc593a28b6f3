// The lines of an M3U playlist, as its reader and whoever keeps its text take them apart.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace chlist {

enum class m3u_line : std::uint8_t { header, information, comment, blank, address };

// Tells what the first line of a text is.
m3u_line m3u_line_of(std::string_view text);

struct m3u_attribute {
  std::size_t begin = 0;  // of the blanks in front of it
  std::string name;
  std::string_view value;
};

// `#EXTINF:-1 tvg-chno="5" group-title="News, sport",Name`: values may hold commas, and the name follows the first
// behind them.
struct m3u_information {
  std::vector<m3u_attribute> attributes;
  std::size_t name_begin = 0;  // of the comma; the end of the line when there is none
  std::string_view name;
};

m3u_information m3u_information_in(std::string_view line);

}  // namespace chlist
