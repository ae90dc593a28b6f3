// Sources and positions.
#include "chlist/exchange/reception.h"

#include <fmt/format.h>

#include <charconv>
#include <system_error>

namespace chlist {
namespace {

constexpr std::int64_t lowest_satellite_khz = 1'000'000;

std::optional<int> read_satellite_number(std::string_view text) {
  std::uint8_t number = 0;
  const char *end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data() + (text.starts_with('#') ? 1 : 0), end, number);
  return text.starts_with('#') && stop == end && error == std::errc() ? std::optional<int>(number) : std::nullopt;
}

std::optional<reception> read_source_letter(std::string_view source) {
  const std::string_view rest = source.substr(source.empty() ? 0 : 1);
  const auto position = read_orbital_position(rest);
  const auto number = read_satellite_number(rest);
  if (source.empty() || (!rest.empty() && !position && !(number && source.front() == 'S'))) {
    return std::nullopt;
  }
  switch (source.front()) {
    case 'S':
      return reception{delivery::satellite, position, number};
    case 'C':
      return reception{delivery::cable};
    case 'A':
    case 'T':
      return reception{delivery::terrestrial};
    default:
      return std::nullopt;
  }
}

}  // namespace

std::optional<int> read_orbital_position(std::string_view text) {
  const bool is_west = text.ends_with('W');
  if (!is_west && !text.ends_with('E')) {
    return std::nullopt;
  }
  text.remove_suffix(1);
  int degrees = 0;
  int tenths = 0;
  const char *end = text.data() + text.size();
  const auto [point, error] = std::from_chars(text.data(), end, degrees);
  const bool has_tenths = end - point == 2 && point[0] == '.' && point[1] >= '0' && point[1] <= '9';
  if (error != std::errc() || degrees < 0 || degrees > 180 || (point != end && !has_tenths)) {
    return std::nullopt;
  }
  if (has_tenths) {
    tenths = point[1] - '0';
  }
  const int position = degrees * 10 + tenths;
  if (position > positions_around_the_earth / 2) {
    return std::nullopt;
  }
  return (is_west ? positions_around_the_earth - position : position) % positions_around_the_earth;
}

reception reception_of(const line_up_service &service) {
  if (const auto known = read_source_letter(service.source)) {
    return *known;
  }
  return {service.fields.frequency >= lowest_satellite_khz ? delivery::satellite : delivery::terrestrial};
}

std::string source_of(const reception &from) {
  if (from.by != delivery::satellite) {
    return from.by == delivery::cable ? "C" : "T";
  }
  if (from.position) {
    const bool is_west = *from.position > positions_around_the_earth / 2;
    const int tenths = is_west ? positions_around_the_earth - *from.position : *from.position;
    return fmt::format("S{}.{}{}", tenths / 10, tenths % 10, is_west ? 'W' : 'E');
  }
  return from.satellite_number ? fmt::format("S#{}", *from.satellite_number) : "S";
}

}  // namespace chlist
