// The words of the parameters.
#include "chlist/line_up/tuning.h"

#include <algorithm>
#include <array>

namespace chlist {
namespace {

constexpr std::string_view systems[] = {"DVB-S",        "DVB-S2", "DVB-C",  "DVB-C2", "DVB-T", "DVB-T2",
                                        "DVB-H",        "ISDB-S", "ISDB-C", "ISDB-T", "ATSC",  "ATSC-MH",
                                        "ITU-T J.83 B", "DSS",    "Turbo",  "DTMB",   "CMMB",  "DAB"};
constexpr std::string_view polarisations[] = {"horizontal", "vertical", "left", "right"};
constexpr std::string_view modulations[] = {"QPSK",  "8PSK",  "16APSK", "32APSK", "DQPSK", "16QAM",
                                            "32QAM", "64QAM", "128QAM", "256QAM", "8VSB",  "16VSB"};
constexpr std::string_view code_rates[] = {"none", "1/2", "1/3", "1/4", "2/3", "2/5", "3/4",
                                           "3/5",  "4/5", "5/6", "6/7", "7/8", "8/9", "9/10"};
constexpr std::string_view roll_offs[] = {"0.35", "0.25", "0.20", "0.15", "0.10", "0.05"};
constexpr std::string_view switches[] = {"off", "on"};
constexpr std::string_view transmission_modes[] = {"1k", "2k", "4k", "8k", "16k", "32k"};
constexpr std::string_view guard_intervals[] = {"1/4", "1/8", "1/16", "1/32", "1/128", "19/128", "19/256"};
constexpr std::string_view hierarchies[] = {"none", "1", "2", "4"};
constexpr std::string_view antenna_counts[] = {"SISO", "MISO"};

constexpr std::array<parameter_words, tuning_parameters> parameters = {{
    {"system", systems},
    {"polarisation", polarisations},
    {"symbol_rate", {}},
    {"modulation", modulations},
    {"inner_fec", code_rates},
    {"low_priority_fec", code_rates},
    {"roll_off", roll_offs},
    {"pilot", switches},
    {"inversion", switches},
    {"bandwidth", {}},
    {"transmission_mode", transmission_modes},
    {"guard_interval", guard_intervals},
    {"hierarchy", hierarchies},
    {"stream_id", {}},
    {"t2_system_id", {}},
    {"antennas", antenna_counts},
}};

constexpr std::string_view stream_kinds[] = {"video", "audio", "dolby", "teletext", "subtitles", "other"};

bool is_decimal(std::string_view text) {
  constexpr std::size_t most_digits = 10;
  return !text.empty() && text.size() <= most_digits && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool is_other_system(const tuning &known, const tuning &newer) {
  const auto was = known.find(tuning_parameter::system);
  const auto is = newer.find(tuning_parameter::system);
  return was != known.end() && is != newer.end() && was->second != is->second;
}

}  // namespace

const parameter_words &words_of(tuning_parameter parameter) { return parameters[static_cast<std::size_t>(parameter)]; }

bool is_value_of(tuning_parameter parameter, std::string_view value) {
  const parameter_words &known = words_of(parameter);
  return value == "auto" || (known.is_number() ? is_decimal(value) : std::ranges::count(known.words, value) > 0);
}

std::string_view name_of_stream(stream_kind kind) { return stream_kinds[static_cast<std::size_t>(kind)]; }

void take_further(further_facts &known, const further_facts &newer) {
  if (is_other_system(known.tuned, newer.tuned)) {
    known.tuned.clear();
  }
  for (const auto &[parameter, value] : newer.tuned) {
    known.tuned[parameter] = value;
  }
  if (!newer.streams.empty()) {
    known.streams = newer.streams;
  }
  if (!newer.ca_ids.empty()) {
    known.ca_ids = newer.ca_ids;
  }
}

}  // namespace chlist
