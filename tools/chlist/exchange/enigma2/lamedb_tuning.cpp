// A row for each place: what stands there, by which numbers, and what is assumed when nobody knows.
#include "chlist/exchange/enigma2/lamedb_tuning.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>

#include "chlist/exchange/streams.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

struct lamedb_code {
  std::string_view digits;
  std::string_view word;
};

constexpr lamedb_code lamedb_fecs[] = {{"0", "auto"}, {"1", "1/2"},  {"2", "2/3"},  {"3", "3/4"},
                                       {"4", "5/6"},  {"5", "7/8"},  {"6", "8/9"},  {"7", "3/5"},
                                       {"8", "4/5"},  {"9", "9/10"}, {"10", "6/7"}, {"15", "none"}};
constexpr lamedb_code lamedb_inversions[] = {{"0", "off"}, {"1", "on"}, {"2", "auto"}};
constexpr lamedb_code satellite_systems[] = {{"0", "DVB-S"}, {"1", "DVB-S2"}};
constexpr lamedb_code satellite_modulations[] = {{"0", "auto"},  {"1", "QPSK"},   {"2", "8PSK"},
                                                 {"3", "16QAM"}, {"4", "16APSK"}, {"5", "32APSK"}};
constexpr lamedb_code satellite_roll_offs[] = {{"0", "0.35"}, {"1", "0.25"}, {"2", "0.20"}, {"3", "auto"}};
constexpr lamedb_code satellite_pilots[] = {{"0", "off"}, {"1", "on"}, {"2", "auto"}};
constexpr lamedb_code cable_modulations[] = {{"0", "auto"},  {"1", "16QAM"},  {"2", "32QAM"},
                                             {"3", "64QAM"}, {"4", "128QAM"}, {"5", "256QAM"}};
constexpr lamedb_code terrestrial_bandwidths[] = {{"0", "8000000"}, {"1", "7000000"}, {"2", "6000000"}, {"3", "auto"},
                                                  {"4", "5000000"}, {"5", "1712000"}, {"6", "10000000"}};
constexpr lamedb_code terrestrial_rates[] = {{"0", "1/2"}, {"1", "2/3"},  {"2", "3/4"}, {"3", "5/6"},
                                             {"4", "7/8"}, {"5", "auto"}, {"6", "6/7"}, {"7", "8/9"}};
constexpr lamedb_code constellations[] = {
    {"0", "QPSK"}, {"1", "16QAM"}, {"2", "64QAM"}, {"3", "auto"}, {"4", "256QAM"}};
constexpr lamedb_code terrestrial_modes[] = {{"0", "2k"}, {"1", "8k"},  {"2", "auto"}, {"3", "4k"},
                                             {"4", "1k"}, {"5", "16k"}, {"6", "32k"}};
constexpr lamedb_code lamedb_guards[] = {{"0", "1/32"}, {"1", "1/16"},  {"2", "1/8"},    {"3", "1/4"},
                                         {"4", "auto"}, {"5", "1/128"}, {"6", "19/128"}, {"7", "19/256"}};
constexpr lamedb_code lamedb_hierarchies[] = {{"0", "none"}, {"1", "1"}, {"2", "2"}, {"3", "4"}, {"4", "auto"}};
constexpr lamedb_code terrestrial_systems[] = {{"0", "DVB-T"}, {"1", "DVB-T2"}};

struct lamedb_place {
  std::size_t place;  // among the fields, of which the frequency is 0
  tuning_parameter parameter;
  std::span<const lamedb_code> codes;  // none: the number itself
  std::string_view usual;              // what is written of it when it is not known
};

constexpr lamedb_place satellite_places[] = {
    {1, tuning_parameter::symbol_rate, {}, "27500000"},
    {3, tuning_parameter::inner_fec, lamedb_fecs, "0"},
    {5, tuning_parameter::inversion, lamedb_inversions, "2"},
    {7, tuning_parameter::system, satellite_systems, "0"},
    {8, tuning_parameter::modulation, satellite_modulations, "0"},
    {9, tuning_parameter::roll_off, satellite_roll_offs, "0"},
    {10, tuning_parameter::pilot, satellite_pilots, "2"},
};
constexpr lamedb_place cable_places[] = {
    {1, tuning_parameter::symbol_rate, {}, "6900000"},
    {2, tuning_parameter::inversion, lamedb_inversions, "2"},
    {3, tuning_parameter::modulation, cable_modulations, "0"},
    {4, tuning_parameter::inner_fec, lamedb_fecs, "0"},
};
constexpr lamedb_place terrestrial_places[] = {
    {1, tuning_parameter::bandwidth, terrestrial_bandwidths, "0"},
    {2, tuning_parameter::inner_fec, terrestrial_rates, "5"},
    {3, tuning_parameter::low_priority_fec, terrestrial_rates, "5"},
    {4, tuning_parameter::modulation, constellations, "3"},
    {5, tuning_parameter::transmission_mode, terrestrial_modes, "2"},
    {6, tuning_parameter::guard_interval, lamedb_guards, "4"},
    {7, tuning_parameter::hierarchy, lamedb_hierarchies, "4"},
    {8, tuning_parameter::inversion, lamedb_inversions, "2"},
    {10, tuning_parameter::system, terrestrial_systems, "0"},
    {11, tuning_parameter::stream_id, {}, "0"},
};

std::span<const lamedb_place> places_of(delivery by) {
  if (by == delivery::satellite) {
    return satellite_places;
  }
  return by == delivery::cable ? std::span<const lamedb_place>(cable_places) : terrestrial_places;
}

// Newer lists have bandwidths in Hz.
std::string_view word_at(const lamedb_place &place, std::string_view digits) {
  const auto found = std::ranges::find(place.codes, digits, &lamedb_code::digits);
  return found != place.codes.end() ? found->word : digits;
}

std::string digits_at(const lamedb_place &place, const line_up_service &service) {
  const std::string word = value_of(service.further, place.parameter);
  const auto found = std::ranges::find(place.codes, word, &lamedb_code::word);
  if (found != place.codes.end()) {
    return std::string(found->digits);
  }
  const bool is_number = place.codes.empty() && !word.empty() && word != "auto";
  return is_number ? word : std::string(place.usual);
}

// Those behind the flags are written of the second generation alone, which cannot do without.
bool is_of_second_generation(const line_up_service &service) {
  const std::string system = value_of(service.further, tuning_parameter::system);
  return system == "DVB-S2" || system == "DVB-T2";
}

std::size_t place_of_flags(delivery by) { return by == delivery::satellite ? 6 : by == delivery::cable ? 5 : 9; }

int polarisation_number(const line_up_service &service) {
  const bool is_vertical = service.fields.polarisation != 0;
  const bool is_circular =
      value_of(service.further, tuning_parameter::polarisation) == (is_vertical ? "right" : "left");
  return (is_vertical ? 1 : 0) + (is_circular ? 2 : 0);
}

}  // namespace

tuning lamedb_tuning(delivery by, const std::vector<std::string_view> &fields) {
  tuning tuned;
  for (const lamedb_place &each : places_of(by)) {
    if (each.place < fields.size() && is_value_of(each.parameter, word_at(each, fields[each.place]))) {
      tuned[each.parameter] = word_at(each, fields[each.place]);
    }
  }
  if (by == delivery::satellite && fields.size() > 2 && (fields[2] == "2" || fields[2] == "3")) {
    tuned[tuning_parameter::polarisation] = fields[2] == "2" ? "left" : "right";
  }
  return tuned;
}

std::string lamedb_parameters(const line_up_service &service, delivery by, int position, int version) {
  const std::size_t flags = place_of_flags(by);
  std::vector<std::string> fields(flags + (version == 3 ? 0 : 1), "0");
  for (const lamedb_place &each : places_of(by)) {
    const bool is_behind = each.place > flags;
    if (is_behind && (version == 3 || !is_of_second_generation(service))) {
      continue;
    }
    fields.resize(std::max(fields.size(), each.place + 1), "0");
    fields[each.place] = digits_at(each, service);
  }
  if (by == delivery::satellite) {
    fields[2] = std::to_string(polarisation_number(service));
    fields[4] = std::to_string(position);
  }
  return joined(std::span(fields).subspan(1), ":");
}

}  // namespace chlist
