// The keys of a section.
#include "chlist/exchange/dvbv5/dvbv5_section.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "chlist/exchange/broadcast_service.h"
#include "chlist/exchange/dvbv5/dvbv5_tuning.h"
#include "chlist/exchange/dvbv5/dvbv5_words.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/text_lines.h"

namespace chlist {
namespace {

// What libdvbv5 writes for a frequency that it does not know.
constexpr std::uint32_t unknown_frequency = std::numeric_limits<std::uint32_t>::max();

constexpr std::string_view polarisation_words[] = {"HORIZONTAL", "VERTICAL", "LEFT", "RIGHT"};

// Numbers with blanks between them; 0 is no PID.
void read_pids(std::string_view text, std::string_view what, std::vector<std::uint16_t> &pids) {
  while (!text.empty()) {
    const std::string_view number = text.substr(0, text.find_first_of(blanks));
    if (const std::uint16_t pid = read_pid(number, what); pid != 0) {
      pids.push_back(pid);
    }
    text = without_leading_blanks(text.substr(number.size()));
  }
}

}  // namespace

struct dvbv5_section::key {
  std::string_view name;
  bool is_essential;
  void (*take)(dvbv5_section &section, std::string_view value);
};

const dvbv5_section::key *dvbv5_section::find(std::string_view name) {
  static constexpr key keys[] = {
      {"SERVICE_ID", true,
       [](dvbv5_section &s, std::string_view v) { s.service_id_ = read_number<std::uint16_t>(v, "SERVICE_ID"); }},
      {"NETWORK_ID", true,
       [](dvbv5_section &s, std::string_view v) { s.network_id_ = read_number<std::uint16_t>(v, "NETWORK_ID"); }},
      {"TRANSPORT_ID", true,
       [](dvbv5_section &s, std::string_view v) { s.transport_id_ = read_number<std::uint16_t>(v, "TRANSPORT_ID"); }},
      {"FREQUENCY", true, [](dvbv5_section &s, std::string_view v) { s.take_frequency(v); }},
      {"DELIVERY_SYSTEM", true, [](dvbv5_section &s, std::string_view v) { s.take_delivery_system(v); }},
      {"POLARIZATION", true, [](dvbv5_section &s, std::string_view v) { s.take_polarisation(v); }},
      {"VIDEO_PID", false, [](dvbv5_section &s, std::string_view v) { read_pids(v, "VIDEO_PID", s.video_pids_); }},
      {"AUDIO_PID", false, [](dvbv5_section &s, std::string_view v) { read_pids(v, "AUDIO_PID", s.audio_pids_); }},
      {"VCHANNEL", false, [](dvbv5_section &s, std::string_view v) { s.take_number(v); }},
      {"SAT_NUMBER", false,
       [](dvbv5_section &s, std::string_view v) { s.satellite_number_ = read_number<std::uint8_t>(v, "SAT_NUMBER"); }},
      {"LNB", false, [](dvbv5_section &s, std::string_view) { s.has_antenna_ = true; }},
      {"FREQ_BPF", false, [](dvbv5_section &s, std::string_view) { s.has_antenna_ = true; }},
      {"DISEQC_WAIT", false, [](dvbv5_section &s, std::string_view) { s.has_antenna_ = true; }},
  };
  const key *const found = std::ranges::find_if(keys, [&](const key &known) { return is_same_word(known.name, name); });
  return found != std::end(keys) ? found : nullptr;
}

// libdvbv5 names a section that has no name "CHANNEL".
dvbv5_section::dvbv5_section(std::size_t line, std::string_view name)
    : line_(line), name_(name == "CHANNEL" ? std::string_view() : name) {}

void dvbv5_section::take(std::string_view line) {
  const auto [name, value] = key_and_value(line);
  if (!value) {
    throw bad_line("is neither a section nor KEY = value");
  }
  take_tuning(further_, name, *value);
  if (const key *known = find(name)) {
    known->take(*this, *value);
  } else if (name.size() > 4 && is_same_word(name.substr(0, 4), "PID_")) {
    take_other_pids(name.substr(4), *value);
  } else {
    has_other_settings_ = true;
  }
}

bool dvbv5_section::is_essential(std::string_view line) {
  const key *known = find(key_and_value(line).first);
  return known != nullptr && known->is_essential;
}

void dvbv5_section::take_frequency(std::string_view value) {
  frequency_ = read_number<std::uint32_t>(value, "FREQUENCY");
  if (frequency_ == unknown_frequency) {
    frequency_.reset();
  }
}

void dvbv5_section::take_delivery_system(std::string_view value) {
  delivery_ = delivery_by(value);
  if (!delivery_) {
    throw bad_line("DELIVERY_SYSTEM " + quoted(value) + " is unknown");
  }
}

void dvbv5_section::take_polarisation(std::string_view value) {
  const auto *const found =
      std::ranges::find_if(polarisation_words, [&](auto name) { return is_same_word(name, value); });
  const bool is_off = is_same_word(value, "OFF");
  if (found == std::end(polarisation_words) && !is_off) {
    throw bad_line("POLARIZATION " + quoted(value) + " is unknown");
  }
  polarisation_ = is_off ? '\0' : found->front();
}

// "7", "7.1" or "7-1".
void dvbv5_section::take_number(std::string_view value) {
  const auto [major, minor] = split_at_first(value, value.find('.') != std::string_view::npos ? '.' : '-');
  number_ = channel_number{read_number<int>(major, "VCHANNEL", 0, largest_channel_number),
                           minor ? read_number<int>(*minor, "VCHANNEL", 0, largest_channel_number) : 0};
}

// Without a delivery system, a polarisation tells a satellite's.
reception dvbv5_section::received() const {
  reception from{delivery_.value_or(polarisation_ != 0 ? delivery::satellite : delivery::terrestrial)};
  if (from.by == delivery::satellite && satellite_number_) {
    from.satellite_number = *satellite_number_;
  }
  return from;
}

// "PID_06 = 32 33": the stream type, in hexadecimal digits. What nobody can read stays in the text alone.
void dvbv5_section::take_other_pids(std::string_view type, std::string_view value) {
  has_other_pids_ = true;
  try {
    std::vector<std::uint16_t> pids;
    read_pids(value, "PID", pids);
    for (const std::uint16_t pid : pids) {
      other_streams_.push_back({pid, stream_kind::other, read_hexadecimal<std::uint8_t>(type, "stream type"), {}});
    }
  } catch (const bad_line &) {
    return;
  }
}

further_facts dvbv5_section::further() const {
  further_facts facts = further_;
  for (const std::uint16_t pid : video_pids_) {
    facts.streams.push_back({pid, stream_kind::video, 0, {}});
  }
  for (const std::uint16_t pid : audio_pids_) {
    facts.streams.push_back({pid, stream_kind::audio, 0, {}});
  }
  facts.streams.insert(facts.streams.end(), other_streams_.begin(), other_streams_.end());
  if (polarisation_ == 'L' || polarisation_ == 'R') {
    facts.tuned[tuning_parameter::polarisation] = polarisation_ == 'L' ? "left" : "right";
  }
  return facts;
}

line_up_service dvbv5_section::service() const {
  if (!service_id_) {
    throw bad_line("has no SERVICE_ID: a transponder, not a service");
  }
  if (!frequency_) {
    throw bad_line("has no FREQUENCY");
  }
  line_up_service made = broadcast_service(line_);
  const reception from = received();
  made.name = name_;
  made.source = source_of(from);
  made.number = number_;
  made.fields.service_id = *service_id_;
  made.fields.network_id = network_id_;
  made.fields.ts_id = transport_id_;
  made.fields.frequency = from.by == delivery::satellite ? *frequency_ : *frequency_ / 1000;
  made.fields.polarisation = polarisation_ == 'V' || polarisation_ == 'R' ? 1 : 0;
  made.fields.video_pid = video_pids_.empty() ? unset_pid : video_pids_.front();
  made.fields.audio_pid = audio_pids_.empty() ? unset_pid : audio_pids_.front();
  made.fields.service_type = service_type_by_streams(made.fields);
  made.further = further();
  return made;
}

void dvbv5_section::count_losses(loss_counts &lost) const {
  const reception from = received();
  const struct {
    std::string_view what;
    bool is_lost;
  } found[] = {
      {"symbol rates, modulation and other settings", has_other_settings_},
      {"settings of the antenna", has_antenna_},
      {"further video PIDs", video_pids_.size() > 1},
      {"further audio PIDs", audio_pids_.size() > 1},
      {"PIDs of other streams", has_other_pids_},
      {circular_polarisations, polarisation_ == 'L' || polarisation_ == 'R'},
      {"parts of a kHz", from.by != delivery::satellite && frequency_.value_or(0) % 1000 != 0},
      {"satellite numbers of services that come from elsewhere", from.by != delivery::satellite && satellite_number_},
  };
  for (const auto &loss : found) {
    lost.add(loss.what, loss.is_lost ? 1 : 0);
  }
}

}  // namespace chlist
