// Where a service is received from, as formats need it that know satellites by their position, cable and antenna: told
// from a source ("S19.2E", "C", "T"), or from the frequency when the source is a name of another kind.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "chlist/exchange/loss_counts.h"

namespace chlist {

enum class delivery { satellite, cable, terrestrial };

// Tenths of a degree east of Greenwich: 192 is 19.2 east, 3300 is 30.0 west.
inline constexpr int positions_around_the_earth = 3600;

// Satellites that no position tells apart are numbered from 0.
inline constexpr int largest_satellite_number = 255;

struct reception {
  delivery by = delivery::satellite;
  std::optional<int> position = std::nullopt;          // satellites only; nothing when the source does not tell
  std::optional<int> satellite_number = std::nullopt;  // of a source that is told apart by a number alone: "S#2"
};

// "19.2E", "30W": nothing when it is none. Tenths may be left out.
std::optional<int> read_orbital_position(std::string_view text);

// A source that is no letter with a position is a satellite's from 1 GHz on, and below it an antenna's.
reception reception_of(const line_up_service &service);

// "S19.2E", "S30.0W", "S#2", "S", "C" or "T".
std::string source_of(const reception &from);

}  // namespace chlist
