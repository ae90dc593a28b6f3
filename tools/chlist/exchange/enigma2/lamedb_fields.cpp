// Numbers, tuning parameters and the options of a service.
#include "chlist/exchange/enigma2/lamedb_fields.h"

#include <algorithm>
#include <cstdlib>

#include "chlist/exchange/broadcast_service.h"
#include "chlist/exchange/enigma2/lamedb_tuning.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/text_lines.h"

namespace chlist {
namespace {

constexpr std::uint8_t largest_polarisation = 3;

// Tenths of a degree east; the west is below 0, or above 1800.
int read_position(std::string_view text) {
  const bool is_west = text.starts_with('-');
  const int tenths =
      read_number<int>(text.substr(is_west ? 1 : 0), "orbital position", 0, positions_around_the_earth - 1);
  return is_west && tenths != 0 ? positions_around_the_earth - tenths : tenths;
}

lamedb_transponder read_satellite(const std::vector<std::string_view> &fields) {
  if (fields.size() < 6) {
    throw bad_line("a satellite's transponder has fewer than 6 fields");
  }
  lamedb_transponder made;
  made.frequency_khz = read_number<std::uint32_t>(fields[0], "frequency");
  made.polarisation = read_number<std::uint8_t>(fields[2], "polarisation", 0, largest_polarisation);
  made.from.position = read_position(fields[4]);
  return made;
}

lamedb_transponder read_cable(const std::vector<std::string_view> &fields) {
  return {.from = {delivery::cable}, .frequency_khz = read_number<std::uint32_t>(fields[0], "frequency")};
}

lamedb_transponder read_terrestrial(const std::vector<std::string_view> &fields) {
  const auto hertz = read_number<std::uint32_t>(fields[0], "frequency");
  return {.from = {delivery::terrestrial}, .frequency_khz = hertz / 1000, .has_parts_of_a_khz = hertz % 1000 != 0};
}

struct transponder_kind {
  char letter;
  lamedb_transponder (*read)(const std::vector<std::string_view> &fields);
};

constexpr transponder_kind transponder_kinds[] = {
    {'s', read_satellite}, {'c', read_cable}, {'t', read_terrestrial}, {'a', read_terrestrial}};

// What a cached PID is of: the digits behind "c:".
enum cached : std::uint8_t { cached_video = 0, cached_audio = 1, cached_teletext = 2, cached_pcr = 3, cached_ac3 = 4 };

constexpr std::string_view new_found_flag = "40";

// The options of one service as they come; the audio that is kept is known when all are read.
class options {
 public:
  explicit options(line_up_service &service) : service_(service) {}

  void take(std::string_view part) {
    if (part.size() < 2 || part[1] != ':') {
      take_rest_of_provider(part);
      return;
    }
    const std::string_view value = part.substr(2);
    switch (part.front()) {
      case 'p':
        service_.provider = value;
        break;
      case 'c':
        take_cached(value);
        break;
      case 'C':
        take_ca_id(value);
        break;
      case 'f':
        has_flags_ = has_flags_ || (value != new_found_flag && value != "0");
        break;
      default:
        has_others_ = true;
    }
  }

  void finish(loss_counts &lost) {
    channel_st &fields = service_.fields;
    lost.add("further audio PIDs", fields.audio_pid != unset_pid && ac3_pid_ != unset_pid ? 1 : 0);
    if (fields.audio_pid == unset_pid) {
      fields.audio_pid = ac3_pid_;
    }
    service_.set_flag(CHANNEL_FLAG_FTA, is_scrambled_);
    lost.add("CA ids (but marked as scrambled)", has_ca_ids_ ? 1 : 0);
    lost.add("PIDs of other streams, and kinds of streams", has_other_streams_ ? 1 : 0);
    lost.add("flags of Enigma2", has_flags_ ? 1 : 0);
    lost.add("other settings", has_others_ ? 1 : 0);
  }

 private:
  // A comma within a name takes it apart.
  void take_rest_of_provider(std::string_view part) {
    if (!service_.provider.empty()) {
      service_.provider += "," + std::string(part);
    } else {
      has_others_ = has_others_ || !part.empty();
    }
  }

  // Two decimal digits for the kind, the rest is the PID. 0 is none.
  void take_cached(std::string_view text) {
    const auto kind = read_number<std::uint8_t>(text.substr(0, 2), "kind of a cached PID");
    const auto value = read_hexadecimal<std::uint32_t>(text.size() > 2 ? text.substr(2) : "", "cached PID");
    const bool is_pid = value <= largest_pid && is_stream_pid(static_cast<std::uint16_t>(value));
    const auto pid = static_cast<std::uint16_t>(is_pid ? value : unset_pid);
    if (is_pid) {
      take_stream(kind, pid);
    }
    switch (kind) {
      case cached_video:
        service_.fields.video_pid = pid;
        break;
      case cached_audio:
        service_.fields.audio_pid = pid;
        break;
      case cached_pcr:
        service_.fields.pcr_pid = pid;
        break;
      case cached_ac3:
        ac3_pid_ = pid;
        break;
      default:
        has_other_streams_ = true;
    }
  }

  void take_stream(std::uint8_t kind, std::uint16_t pid) {
    if (kind == cached_audio || kind == cached_ac3 || kind == cached_teletext) {
      const stream_kind is = kind == cached_audio ? stream_kind::audio
                             : kind == cached_ac3 ? stream_kind::dolby
                                                  : stream_kind::teletext;
      service_.further.streams.push_back({pid, is, 0, {}});
    }
  }

  void take_ca_id(std::string_view text) {
    is_scrambled_ = true;
    const auto id = read_hexadecimal<std::uint32_t>(text, "CA id");
    has_ca_ids_ = has_ca_ids_ || id != 0;
    if (id != 0 && id <= 0xFFFF) {
      service_.further.ca_ids.push_back(static_cast<std::uint16_t>(id));
    }
  }

  line_up_service &service_;
  std::uint16_t ac3_pid_ = unset_pid;
  bool is_scrambled_ = false;
  bool has_ca_ids_ = false;
  bool has_other_streams_ = false;
  bool has_flags_ = false;
  bool has_others_ = false;
};

bool is_hexadecimal(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

}  // namespace

transponder_reference read_transponder_reference(std::string_view text) {
  const auto fields = split(text, ':');
  if (fields.size() != 3) {
    throw bad_line("transponder " + quoted(text) + " is not NAMESPACE:TSID:ONID");
  }
  return {read_hexadecimal<std::uint32_t>(fields[0], "namespace"), read_hexadecimal<std::uint16_t>(fields[1], "TSID"),
          read_hexadecimal<std::uint16_t>(fields[2], "ONID")};
}

lamedb_transponder read_transponder(std::string_view text) {
  const std::string_view parameters = without_blanks_around(text);
  const char letter = parameters.empty() ? '\0' : parameters.front();
  const auto *const kind = std::ranges::find(transponder_kinds, letter, &transponder_kind::letter);
  if (kind == std::end(transponder_kinds) || parameters.size() < 3) {
    throw bad_line("transponder " + quoted(text) + " is of no known kind (s, c, t or a)");
  }
  const std::vector<std::string_view> fields = split(without_blanks_around(parameters.substr(2)), ':');
  lamedb_transponder made = kind->read(fields);
  made.tuned = lamedb_tuning(made.from.by, fields);
  return made;
}

lamedb_service read_service_line(std::string_view text) {
  const auto fields = split(text, ':');
  if (fields.size() < 6 || fields.size() > 7) {
    throw bad_line("service " + quoted(text) + " is not SID:NAMESPACE:TSID:ONID:TYPE:NUMBER");
  }
  lamedb_service made;
  made.reference.service_id = read_hexadecimal<std::uint16_t>(fields[0], "SID");
  made.reference.transponder.name_space = read_hexadecimal<std::uint32_t>(fields[1], "namespace");
  made.reference.transponder.transport_id = read_hexadecimal<std::uint16_t>(fields[2], "TSID");
  made.reference.transponder.network_id = read_hexadecimal<std::uint16_t>(fields[3], "ONID");
  made.service_type = read_number<std::uint8_t>(fields[4], "service type");
  made.number = read_number<int>(fields[5], "service number");
  return made;
}

bool is_like_service_line(std::string_view text) {
  const auto fields = split(text, ':');
  return fields.size() >= 6 && std::all_of(fields.begin(), fields.begin() + 4, is_hexadecimal);
}

std::optional<std::string> read_options(std::string_view text, line_up_service &service, loss_counts &lost) {
  options taken(service);
  std::optional<std::string> wrong;
  for (const std::string_view part : split(text, ',')) {
    try {
      taken.take(part);
    } catch (const bad_line &bad) {
      wrong = wrong.value_or(bad.reason);
    }
  }
  taken.finish(lost);
  return wrong;
}

}  // namespace chlist
