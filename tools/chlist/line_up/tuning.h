// What a service is received with and what it consists of, beyond what a channel list keeps of it: in the terms of EN
// 300 468, whatever the format that tells it. A format that has words of its own has a table that turns them into
// these.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace chlist {

enum class tuning_parameter : std::uint8_t {
  system,        // of delivery
  polarisation,  // a channel list tells two of the four apart
  symbol_rate,   // symbols a second
  modulation,    // of a terrestrial system its constellation
  inner_fec,     // with a hierarchy, of the high priority
  low_priority_fec,
  roll_off,
  pilot,
  inversion,
  bandwidth,          // Hz
  transmission_mode,  // how many carriers
  guard_interval,
  hierarchy,  // its alpha
  stream_id,  // the input stream, or the physical layer pipe
  t2_system_id,
  antennas,  // of the transmitter
};
inline constexpr std::size_t tuning_parameters = 16;

// One of them, as documents and messages have it.
struct parameter_words {
  std::string_view name;                    // "inner_fec"
  std::span<const std::string_view> words;  // that the value may be, besides "auto"; of a number none

  [[nodiscard]] bool is_number() const { return words.empty(); }
};

const parameter_words &words_of(tuning_parameter parameter);

// Values by what they are of: a word of the parameter ("DVB-S2", "8PSK", "3/4"), "auto" where the receiver is to find
// it, or a number in decimal digits. What the source does not tell is not there.
using tuning = std::map<tuning_parameter, std::string>;

// Whether a text is one that a parameter may have.
bool is_value_of(tuning_parameter parameter, std::string_view value);

enum class stream_kind : std::uint8_t { video, audio, dolby, teletext, subtitles, other };

// "video", "audio", "dolby", "teletext", "subtitles" or "other".
std::string_view name_of_stream(stream_kind kind);

// A component of the service. One of a PID that the channel list holds tells what that does not: type and language.
struct elementary_stream {
  std::uint16_t pid = 0;
  stream_kind kind = stream_kind::other;
  std::uint8_t type = 0;   // the stream type of ISO/IEC 13818-1; of a private stream its descriptor's tag (0x6A: AC-3)
  std::string language{};  // ISO 639-2, several with '+' between them; empty: not told

  bool operator==(const elementary_stream &) const = default;
};

struct further_facts {
  tuning tuned{};
  std::vector<elementary_stream> streams{};  // in the order of the source, video and the first audio among them
  std::vector<std::uint16_t> ca_ids{};       // of the conditional access systems

  [[nodiscard]] bool is_empty() const { return tuned.empty() && streams.empty() && ca_ids.empty(); }
  bool operator==(const further_facts &) const = default;
};

// What is told wins over what was known. How another delivery system is received tells nothing of this one.
void take_further(further_facts &known, const further_facts &newer);

}  // namespace chlist
