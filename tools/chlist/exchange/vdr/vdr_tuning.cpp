// A table for the letters of the parameters, and one for the values of each.
#include "chlist/exchange/vdr/vdr_tuning.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <span>

#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/streams.h"
#include "chlist/fields/pids.h"

namespace chlist {
namespace {

struct vdr_value {
  std::string_view digits;
  std::string_view word;
};

struct vdr_letter {
  char letter;
  tuning_parameter parameter;
  std::span<const vdr_value> values;  // none: the number itself
};

constexpr std::string_view automatic_digits = "999";
constexpr std::string_view unknown_parameters = "I999";

constexpr vdr_value bandwidths[] = {{"5", "5000000"}, {"6", "6000000"},   {"7", "7000000"},
                                    {"8", "8000000"}, {"10", "10000000"}, {"1712", "1712000"}};
constexpr vdr_value vdr_code_rates[] = {{"0", "none"}, {"12", "1/2"}, {"13", "1/3"}, {"14", "1/4"},  {"23", "2/3"},
                                        {"25", "2/5"}, {"34", "3/4"}, {"35", "3/5"}, {"45", "4/5"},  {"56", "5/6"},
                                        {"67", "6/7"}, {"78", "7/8"}, {"89", "8/9"}, {"910", "9/10"}};
constexpr vdr_value guards[] = {{"4", "1/4"},     {"8", "1/8"},        {"16", "1/16"},     {"32", "1/32"},
                                {"128", "1/128"}, {"19128", "19/128"}, {"19256", "19/256"}};
constexpr vdr_value vdr_switches[] = {{"0", "off"}, {"1", "on"}};
constexpr vdr_value vdr_modulations[] = {{"2", "QPSK"},   {"5", "8PSK"},   {"6", "16APSK"},   {"7", "32APSK"},
                                         {"10", "8VSB"},  {"11", "16VSB"}, {"12", "DQPSK"},   {"16", "16QAM"},
                                         {"32", "32QAM"}, {"64", "64QAM"}, {"128", "128QAM"}, {"256", "256QAM"},
                                         {"998", "auto"}};
constexpr vdr_value vdr_roll_offs[] = {{"0", "auto"},  {"35", "0.35"}, {"25", "0.25"}, {"20", "0.20"},
                                       {"15", "0.15"}, {"10", "0.10"}, {"5", "0.05"}};
constexpr vdr_value carriers[] = {{"1", "1k"}, {"2", "2k"}, {"4", "4k"}, {"8", "8k"}, {"16", "16k"}, {"32", "32k"}};
constexpr vdr_value vdr_hierarchies[] = {{"0", "none"}, {"1", "1"}, {"2", "2"}, {"4", "4"}};
constexpr vdr_value vdr_antennas[] = {{"0", "SISO"}, {"1", "MISO"}};

constexpr vdr_letter letters[] = {
    {'B', tuning_parameter::bandwidth, bandwidths},
    {'C', tuning_parameter::inner_fec, vdr_code_rates},
    {'D', tuning_parameter::low_priority_fec, vdr_code_rates},
    {'G', tuning_parameter::guard_interval, guards},
    {'I', tuning_parameter::inversion, vdr_switches},
    {'M', tuning_parameter::modulation, vdr_modulations},
    {'N', tuning_parameter::pilot, vdr_switches},
    {'O', tuning_parameter::roll_off, vdr_roll_offs},
    {'P', tuning_parameter::stream_id, {}},
    {'Q', tuning_parameter::t2_system_id, {}},
    {'S', tuning_parameter::system, {}},
    {'T', tuning_parameter::transmission_mode, carriers},
    {'X', tuning_parameter::antennas, vdr_antennas},
    {'Y', tuning_parameter::hierarchy, vdr_hierarchies},
};

// The letter S tells the first generation of a delivery system from the second.
struct vdr_system {
  char source;
  std::string_view generation;
  std::string_view word;
};

constexpr vdr_system vdr_systems[] = {{'S', "0", "DVB-S"},  {'S', "1", "DVB-S2"}, {'T', "0", "DVB-T"},
                                      {'T', "1", "DVB-T2"}, {'C', "0", "DVB-C"},  {'A', "0", "ATSC"}};

std::string_view system_of(char source, std::string_view generation) {
  const auto *const system = std::ranges::find_if(
      vdr_systems, [&](const vdr_system &each) { return each.source == source && each.generation == generation; });
  return system != std::end(vdr_systems) ? system->word : std::string_view();
}

std::string_view generation_of(std::string_view word) {
  const auto *const system = std::ranges::find(vdr_systems, word, &vdr_system::word);
  return system != std::end(vdr_systems) ? system->generation : std::string_view();
}

std::string_view word_of(const vdr_letter &letter, std::string_view digits, char source) {
  if (letter.parameter == tuning_parameter::system) {
    return system_of(source, digits);
  }
  if (digits == automatic_digits || letter.values.empty()) {
    return digits == automatic_digits ? "auto" : digits;
  }
  const auto found = std::ranges::find(letter.values, digits, &vdr_value::digits);
  return found != letter.values.end() ? found->word : std::string_view();
}

std::string_view digits_of(const vdr_letter &letter, std::string_view word) {
  if (letter.parameter == tuning_parameter::system) {
    return generation_of(word);
  }
  const auto found = std::ranges::find(letter.values, word, &vdr_value::word);
  if (found != letter.values.end()) {
    return found->digits;
  }
  return word == "auto" ? automatic_digits : letter.values.empty() ? word : std::string_view();
}

void take_parameter(tuning &tuned, char source, char name, std::string_view digits) {
  const auto *const letter = std::ranges::find(letters, name, &vdr_letter::letter);
  if (letter == std::end(letters)) {
    return;
  }
  if (const std::string_view word = word_of(*letter, digits, source); is_value_of(letter->parameter, word)) {
    tuned[letter->parameter] = word;
  }
}

// "C34M5O35S1"
tuning tuning_in(std::string_view parameters, char source) {
  constexpr std::string_view all_digits = "0123456789";
  tuning tuned;
  while (!parameters.empty()) {
    const std::size_t end = std::min(parameters.find_first_not_of(all_digits, 1), parameters.size());
    take_parameter(tuned, source, parameters.front(), parameters.substr(1, end - 1));
    parameters.remove_prefix(end);
  }
  return tuned;
}

void add_streams(further_facts &facts, const std::vector<vdr_stream> &read, stream_kind kind) {
  for (const vdr_stream &each : read) {
    facts.streams.push_back({each.pid, kind, each.type, each.language});
  }
}

// "101=deu@4"
std::string stream_text(const elementary_stream &stream) {
  return fmt::format("{}{}{}{}{}", stream.pid, stream.language.empty() ? "" : "=", stream.language,
                     stream.type != 0 ? "@" : "", stream.type != 0 ? std::to_string(stream.type) : "");
}

std::string streams_text(const std::vector<elementary_stream> &streams, stream_kind kind) {
  std::string text;
  for (const elementary_stream &each : streams) {
    if (each.kind == kind) {
      text += (text.empty() ? "" : ",") + stream_text(each);
    }
  }
  return text;
}

std::string with_streams_behind(const std::string &text, const std::string &others) {
  return others.empty() ? text : text + ';' + others;
}

std::string pid_text(std::uint16_t pid) { return is_stream_pid(pid) ? std::to_string(pid) : "0"; }

std::string_view polarisation_letter_of(const line_up_service &service, bool is_satellite) {
  const bool is_vertical = service.fields.polarisation != 0;
  if (value_of(service.further, tuning_parameter::polarisation) == (is_vertical ? "right" : "left")) {
    return is_vertical ? "R" : "L";
  }
  return is_vertical ? "V" : is_satellite ? "H" : "";
}

}  // namespace

further_facts further_of(const vdr_service &service) {
  further_facts facts;
  facts.tuned = tuning_in(service.modulation, service.source.front());
  if (service.symbol_rate != 0) {
    facts.tuned[tuning_parameter::symbol_rate] = std::to_string(std::uint64_t{service.symbol_rate} * 1000);
  }
  if (service.is_circular) {
    facts.tuned[tuning_parameter::polarisation] = service.is_vertical ? "right" : "left";
  }
  if (service.has_video() && service.video_type != 0) {
    facts.streams.push_back({service.video_pid, stream_kind::video, service.video_type, ""});
  }
  add_streams(facts, service.audio, stream_kind::audio);
  add_streams(facts, service.dolby, stream_kind::dolby);
  if (service.teletext_pid != 0) {
    facts.streams.push_back({service.teletext_pid, stream_kind::teletext, 0, ""});
  }
  add_streams(facts, service.subtitles, stream_kind::subtitles);
  std::ranges::copy_if(service.ca_ids, std::back_inserter(facts.ca_ids),
                       [](std::uint16_t id) { return id >= vdr_service::least_broadcast_ca_id; });
  return facts;
}

// No field of VDR's may be empty: without any it is told to find the inversion.
std::string parameters_text(const line_up_service &service, bool is_satellite) {
  std::string text(polarisation_letter_of(service, is_satellite));
  for (const vdr_letter &each : letters) {
    const std::string word = value_of(service.further, each.parameter);
    if (const std::string_view digits = digits_of(each, word); !digits.empty()) {
      text += fmt::format("{}{}", each.letter, digits);
    }
  }
  return text.empty() ? std::string(unknown_parameters) : text;
}

std::string symbol_rate_text(const line_up_service &service) {
  const std::string rate = value_of(service.further, tuning_parameter::symbol_rate);
  constexpr std::size_t thousands = 3;
  return rate.size() > thousands ? rate.substr(0, rate.size() - thousands) : "0";
}

std::string video_text(const line_up_service &service) {
  const channel_st &fields = service.fields;
  std::string text = pid_text(fields.video_pid);
  if (fields.pcr_pid != unset_pid && fields.pcr_pid != fields.video_pid) {
    text += '+' + pid_text(fields.pcr_pid);
  }
  for (const elementary_stream &each : streams_of(service)) {
    const bool is_main = each.kind == stream_kind::video && each.pid == fields.video_pid;
    text += is_main && each.type != 0 ? fmt::format("={}", each.type) : "";
  }
  return text;
}

std::string audio_text(const line_up_service &service) {
  const std::vector<elementary_stream> streams = streams_of(service);
  const std::string audio = streams_text(streams, stream_kind::audio);
  return with_streams_behind(audio.empty() ? "0" : audio, streams_text(streams, stream_kind::dolby));
}

std::string teletext_text(const line_up_service &service) {
  const std::vector<elementary_stream> streams = streams_of(service);
  const auto teletext = std::ranges::find(streams, stream_kind::teletext, &elementary_stream::kind);
  return with_streams_behind(pid_text(teletext != streams.end() ? teletext->pid : std::uint16_t{0}),
                             streams_text(streams, stream_kind::subtitles));
}

// Ids below 100 name a device; VDR replaces this one by those that it receives.
std::string ca_ids_text(const line_up_service &service) {
  if (!service.has_flag(CHANNEL_FLAG_FTA)) {
    return "0";
  }
  std::string text;
  for (const std::uint16_t id : service.further.ca_ids) {
    text += fmt::format("{}{:x}", text.empty() ? "" : ",", id);
  }
  return text.empty() ? "100" : text;
}

}  // namespace chlist
