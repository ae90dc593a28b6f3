// The single fields of a VDR service line.
#include "chlist/exchange/vdr/vdr_fields.h"

#include <algorithm>
#include <utility>

#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/reception.h"

namespace chlist {
namespace {

constexpr std::uint32_t largest_satellite_mhz = 20'000;

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_upper_case(char c) { return c >= 'A' && c <= 'Z'; }

char upper_case(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string upper_case(std::string_view text) {
  std::string upper(text);
  std::ranges::transform(upper, upper.begin(), [](char c) { return upper_case(c); });
  return upper;
}

}  // namespace

std::string readable_name(std::string_view text) {
  std::string name(text);
  std::ranges::replace(name, '|', ':');
  return name;
}

std::vector<vdr_stream> read_streams(std::string_view text, std::string_view what) {
  std::vector<vdr_stream> streams;
  for (const std::string_view part : split(text, ',')) {
    const auto [described, type] = split_at_first(part, '@');
    const auto [pid, language] = split_at_first(described, '=');
    vdr_stream stream;
    stream.pid = read_pid(pid, what);
    stream.language = language.value_or(std::string_view());
    stream.type = type ? read_number<std::uint8_t>(*type, "stream type") : std::uint8_t{0};
    if (stream.pid != 0) {
      streams.push_back(std::move(stream));
    }
  }
  return streams;
}

std::vector<std::uint16_t> read_ca_ids(std::string_view text) {
  std::vector<std::uint16_t> ids;
  for (const std::string_view part : split(text, ',')) {
    if (const auto id = read_hexadecimal<std::uint16_t>(part, "CA id"); id != 0) {
      ids.push_back(id);
    }
  }
  return ids;
}

std::string read_source(std::string_view text) {
  std::string source = upper_case(text);
  const bool has_letter = !source.empty() && is_upper_case(source.front());
  const std::string_view position = has_letter ? std::string_view(source).substr(1) : std::string_view();
  const bool may_lack_position = has_letter && source.front() != 'S';
  if (!has_letter || !(read_orbital_position(position) || (may_lack_position && position.empty()))) {
    throw bad_line("source " + quoted(text) + " is unknown");
  }
  return source;
}

std::string read_source_of_any_age(std::string_view text, std::string_view frequency) {
  constexpr std::uint32_t least_satellite_mhz = 1000;
  if (text == "S" || text == "s") {
    return "S";
  }
  if (text.empty() || !std::ranges::all_of(text, is_digit)) {
    return read_source(text);
  }
  const auto number = read_number<std::uint8_t>(text, "source");
  const bool is_satellite = read_number<std::uint32_t>(frequency, "frequency", 1) >= least_satellite_mhz;
  return source_of({is_satellite ? delivery::satellite : delivery::cable, std::nullopt, number});
}

std::uint32_t read_frequency_khz(std::string_view text, bool is_satellite) {
  if (is_satellite) {
    return read_number<std::uint32_t>(text, "frequency", 1, largest_satellite_mhz) * 1000;
  }
  // No broadcast is below 1 MHz, so a smaller number is in a larger unit.
  std::uint64_t hertz = read_number<std::uint32_t>(text, "frequency", 1);
  while (hertz < 1'000'000) {
    hertz *= 1000;
  }
  return static_cast<std::uint32_t>(hertz / 1000);
}

vdr_parameters read_parameters(std::string_view text, bool is_satellite) {
  vdr_parameters parameters;
  std::string polarisations;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = upper_case(text[i]);
    if (!is_upper_case(c) && (!is_digit(c) || i == 0)) {
      throw bad_line("parameters " + quoted(text) + " are not letters with numbers");
    }
    (std::string_view("HVLR").find(c) != std::string_view::npos ? polarisations : parameters.modulation) += c;
  }
  if (polarisations.size() > 1 || (is_satellite && polarisations.empty())) {
    throw bad_line("parameters " + quoted(text) + " do not give one polarisation (H, V, L or R)");
  }
  parameters.is_vertical = polarisations == "V" || polarisations == "R";
  parameters.is_circular = polarisations == "L" || polarisations == "R";
  return parameters;
}

}  // namespace chlist
