// A table for the keys, and one for the words of each.
#include "chlist/exchange/dvbv5/dvbv5_tuning.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <span>

#include "chlist/exchange/dvbv5/dvbv5_words.h"
#include "chlist/exchange/streams.h"

namespace chlist {
namespace {

struct section_system {
  std::string_view name;
  delivery by;
  std::string_view word;  // empty: EN 300 468 knows none
};

constexpr section_system section_systems[] = {
    {"DVBS", delivery::satellite, "DVB-S"},
    {"DVBS2", delivery::satellite, "DVB-S2"},
    {"TURBO", delivery::satellite, "Turbo"},
    {"ISDBS", delivery::satellite, "ISDB-S"},
    {"DSS", delivery::satellite, "DSS"},
    {"DVBC/ANNEX_A", delivery::cable, "DVB-C"},
    {"DVBC/ANNEX_B", delivery::cable, "ITU-T J.83 B"},
    {"DVBC/ANNEX_C", delivery::cable, ""},
    {"DVBC", delivery::cable, "DVB-C"},
    {"ISDBC", delivery::cable, "ISDB-C"},
    {"DVBT", delivery::terrestrial, "DVB-T"},
    {"DVBT2", delivery::terrestrial, "DVB-T2"},
    {"DVBH", delivery::terrestrial, "DVB-H"},
    {"ISDBT", delivery::terrestrial, "ISDB-T"},
    {"ATSC", delivery::terrestrial, "ATSC"},
    {"ATSCMH", delivery::terrestrial, "ATSC-MH"},
    {"DTMB", delivery::terrestrial, "DTMB"},
    {"CMMB", delivery::terrestrial, "CMMB"},
    {"DAB", delivery::terrestrial, "DAB"},
};

struct section_word {
  std::string_view own;
  std::string_view word;
};

constexpr section_word section_modulations[] = {
    {"QPSK", "QPSK"},    {"PSK/8", "8PSK"},   {"APSK/16", "16APSK"}, {"APSK/32", "32APSK"}, {"DQPSK", "DQPSK"},
    {"QAM/16", "16QAM"}, {"QAM/32", "32QAM"}, {"QAM/64", "64QAM"},   {"QAM/128", "128QAM"}, {"QAM/256", "256QAM"},
    {"VSB/8", "8VSB"},   {"VSB/16", "16VSB"}, {"QAM/AUTO", "auto"}};
constexpr section_word section_rates[] = {{"NONE", "none"}};  // all others are the same words
constexpr section_word section_roll_offs[] = {{"35", "0.35"}, {"25", "0.25"}, {"20", "0.20"},
                                              {"15", "0.15"}, {"10", "0.10"}, {"5", "0.05"}};
constexpr section_word section_switches[] = {{"OFF", "off"}, {"ON", "on"}};
constexpr section_word section_carriers[] = {{"1K", "1k"}, {"2K", "2k"},   {"4K", "4k"},
                                             {"8K", "8k"}, {"16K", "16k"}, {"32K", "32k"}};

// A key as it stands in the sections of some deliveries.
struct section_key {
  std::string_view name;
  tuning_parameter parameter;
  std::span<const section_word> words;
};

constexpr section_key section_keys[] = {
    {"SYMBOL_RATE", tuning_parameter::symbol_rate, {}},
    {"INNER_FEC", tuning_parameter::inner_fec, section_rates},
    {"BANDWIDTH_HZ", tuning_parameter::bandwidth, {}},
    {"MODULATION", tuning_parameter::modulation, section_modulations},
    {"PILOT", tuning_parameter::pilot, section_switches},
    {"ROLLOFF", tuning_parameter::roll_off, section_roll_offs},
    {"INVERSION", tuning_parameter::inversion, section_switches},
    {"CODE_RATE_HP", tuning_parameter::inner_fec, section_rates},
    {"CODE_RATE_LP", tuning_parameter::low_priority_fec, section_rates},
    {"GUARD_INTERVAL", tuning_parameter::guard_interval, {}},
    {"TRANSMISSION_MODE", tuning_parameter::transmission_mode, section_carriers},
    {"HIERARCHY", tuning_parameter::hierarchy, section_rates},
    {"STREAM_ID", tuning_parameter::stream_id, {}},
};

// What a receiver cannot do without.
struct usual_value {
  delivery by;
  std::string_view key;
  std::string_view value;
};

constexpr usual_value usual_values[] = {
    {delivery::satellite, "SYMBOL_RATE", "27500000"},   {delivery::satellite, "INNER_FEC", "AUTO"},
    {delivery::satellite, "MODULATION", "QPSK"},        {delivery::satellite, "INVERSION", "AUTO"},
    {delivery::cable, "SYMBOL_RATE", "6900000"},        {delivery::cable, "INNER_FEC", "AUTO"},
    {delivery::cable, "MODULATION", "QAM/AUTO"},        {delivery::cable, "INVERSION", "AUTO"},
    {delivery::terrestrial, "BANDWIDTH_HZ", "8000000"}, {delivery::terrestrial, "MODULATION", "QAM/AUTO"},
    {delivery::terrestrial, "INVERSION", "AUTO"},
};

std::string word_of(const section_key &key, std::string_view value) {
  if (is_same_word(value, "AUTO")) {
    return "auto";
  }
  const auto found = std::ranges::find_if(key.words, [&](const auto &each) { return is_same_word(each.own, value); });
  return std::string(found != key.words.end() ? found->word : value);
}

std::string own_word_of(const section_key &key, const std::string &word) {
  const auto found = std::ranges::find(key.words, word, &section_word::word);
  if (found != key.words.end()) {
    return std::string(found->own);
  }
  return word == "auto" ? "AUTO" : word;
}

// Terrestrial sections have two code rates, others one inner error correction.
bool is_key_of(const section_key &key, delivery by) {
  const bool is_rate_of_two = key.name == "CODE_RATE_HP" || key.name == "CODE_RATE_LP";
  const bool is_rate_of_one = key.name == "INNER_FEC";
  return by == delivery::terrestrial ? !is_rate_of_one : !is_rate_of_two;
}

std::string value_for(const line_up_service &service, const section_key &key, delivery by) {
  if (const std::string known = value_of(service.further, key.parameter); !known.empty()) {
    return own_word_of(key, known);
  }
  const auto *const usual = std::ranges::find_if(
      usual_values, [&](const usual_value &each) { return each.by == by && each.key == key.name; });
  return usual != std::end(usual_values) && is_key_of(key, by) ? std::string(usual->value) : std::string();
}

std::string_view system_for(const line_up_service &service, delivery by) {
  const std::string known = value_of(service.further, tuning_parameter::system);
  const auto *found = std::ranges::find_if(
      section_systems, [&](const section_system &each) { return each.by == by && each.word == known; });
  if (known.empty() || found == std::end(section_systems)) {
    found = std::ranges::find(section_systems, by, &section_system::by);
  }
  return found->name;
}

}  // namespace

std::optional<delivery> delivery_by(std::string_view system) {
  const auto *const found = std::ranges::find_if(
      section_systems, [&](const section_system &known) { return is_same_word(known.name, system); });
  return found != std::end(section_systems) ? std::optional(found->by) : std::nullopt;
}

void take_tuning(further_facts &facts, std::string_view key, std::string_view value) {
  if (is_same_word(key, "DELIVERY_SYSTEM")) {
    const auto *const system = std::ranges::find_if(
        section_systems, [&](const section_system &known) { return is_same_word(known.name, value); });
    if (system != std::end(section_systems) && !system->word.empty()) {
      facts.tuned[tuning_parameter::system] = system->word;
    }
    return;
  }
  const auto *const known =
      std::ranges::find_if(section_keys, [&](const section_key &each) { return is_same_word(each.name, key); });
  if (known != std::end(section_keys) && is_value_of(known->parameter, word_of(*known, value))) {
    facts.tuned[known->parameter] = word_of(*known, value);
  }
}

std::string tuning_lines(const line_up_service &service) {
  const delivery by = reception_of(service).by;
  std::string lines;
  for (const section_key &key : section_keys) {
    const std::string value = is_key_of(key, by) ? value_for(service, key, by) : std::string();
    if (!value.empty()) {
      lines += fmt::format("\t{} = {}\n", key.name, value);
    }
  }
  return lines + fmt::format("\tDELIVERY_SYSTEM = {}\n", system_for(service, by));
}

}  // namespace chlist
