// Where and how a transport stream is received: satellites, cables and antennas, of the first generation and the
// second.
#include <iterator>
#include <span>
#include <utility>

#include "chlist/scan/bit_reader.h"
#include "chlist/scan/descriptors.h"

namespace chlist {
namespace {

namespace delivery_tag {
constexpr std::uint8_t satellite = 0x43;
constexpr std::uint8_t cable = 0x44;
constexpr std::uint8_t terrestrial = 0x5A;
constexpr std::uint8_t satellite_s2 = 0x79;
constexpr unsigned extended_t2 = 0x04;
constexpr unsigned extended_c2 = 0x0D;
}  // namespace delivery_tag

// Sets a parameter to the word that a code stands for; codes beyond the table are reserved and tell nothing.
void set(tuning &tuned, tuning_parameter parameter, std::span<const std::string_view> words, unsigned code) {
  if (code < words.size() && !words[code].empty()) {
    tuned[parameter] = words[code];
  }
}

void set_number(tuning &tuned, tuning_parameter parameter, std::uint32_t value) {
  if (value != 0) {
    tuned[parameter] = std::to_string(value);
  }
}

constexpr std::string_view polarisations[] = {"horizontal", "vertical", "left", "right"};
constexpr std::string_view inner_fec[] = {"",    "1/2",  "2/3", "3/4", "5/6", "7/8", "8/9", "3/5",
                                          "4/5", "9/10", "",    "",    "",    "",    "",    "none"};
constexpr std::uint32_t symbols_per_step = 100;

delivery_facts satellite_delivery(std::string_view data, bool is_s2_alone) {
  constexpr std::string_view roll_offs[] = {"0.35", "0.25", "0.20"};
  constexpr std::string_view modulations[] = {"auto", "QPSK", "8PSK", "16QAM"};
  bit_reader bits(data);
  delivery_facts made;
  made.frequency_khz = bits.take_digits(8) * 10;
  const auto tenths = static_cast<int>(bits.take_digits(4)) % positions_around_the_earth;
  const bool is_east = bits.take(1) != 0;
  made.from = {delivery::satellite, is_east || tenths == 0 ? tenths : positions_around_the_earth - tenths};
  const unsigned polarisation = bits.take(2);
  made.is_vertical = (polarisation & 1U) != 0;
  const unsigned roll_off = bits.take(2);
  const bool is_s2 = bits.take(1) != 0 || is_s2_alone;
  made.tuned[tuning_parameter::system] = is_s2 ? "DVB-S2" : "DVB-S";
  made.tuned[tuning_parameter::polarisation] = polarisations[polarisation];
  if (is_s2) {
    set(made.tuned, tuning_parameter::roll_off, roll_offs, roll_off);
  }
  set(made.tuned, tuning_parameter::modulation, modulations, bits.take(2));
  set_number(made.tuned, tuning_parameter::symbol_rate, bits.take_digits(7) * symbols_per_step);
  set(made.tuned, tuning_parameter::inner_fec, inner_fec, bits.take(4));
  return made;
}

// Goes with the descriptor of the satellite.
void add_s2(std::string_view data, tuning &tuned) {
  bit_reader bits(data);
  const bool has_scrambling_sequence = bits.take(1) != 0;
  const bool has_stream_id = bits.take(1) != 0;
  bits.skip(6 + (has_scrambling_sequence ? 24 : 0));
  if (has_stream_id && bits.has(1)) {
    tuned[tuning_parameter::stream_id] = std::to_string(bits.take_byte());
  }
}

delivery_facts cable_delivery(std::string_view data) {
  constexpr std::string_view modulations[] = {"", "16QAM", "32QAM", "64QAM", "128QAM", "256QAM"};
  constexpr std::uint32_t steps_per_khz = 10;
  bit_reader bits(data);
  delivery_facts made;
  made.from = {delivery::cable};
  made.frequency_khz = bits.take_digits(8) / steps_per_khz;
  bits.skip(16);
  made.tuned[tuning_parameter::system] = "DVB-C";
  set(made.tuned, tuning_parameter::modulation, modulations, bits.take_byte());
  set_number(made.tuned, tuning_parameter::symbol_rate, bits.take_digits(7) * symbols_per_step);
  set(made.tuned, tuning_parameter::inner_fec, inner_fec, bits.take(4));
  return made;
}

// In steps of 10 Hz; all ones where there are several.
std::uint32_t terrestrial_khz(std::uint32_t steps) {
  constexpr std::uint32_t steps_per_khz = 100;
  return steps != 0xFFFFFFFF ? steps / steps_per_khz : 0;
}

delivery_facts terrestrial_delivery(std::string_view data) {
  constexpr std::string_view bandwidths[] = {"8000000", "7000000", "6000000", "5000000"};
  constexpr std::string_view constellations[] = {"QPSK", "16QAM", "64QAM"};
  constexpr std::string_view hierarchies[] = {"none", "1", "2", "4", "none", "1", "2", "4"};
  constexpr std::string_view code_rates[] = {"1/2", "2/3", "3/4", "5/6", "7/8"};
  constexpr std::string_view guard_intervals[] = {"1/32", "1/16", "1/8", "1/4"};
  constexpr std::string_view modes[] = {"2k", "8k", "4k"};
  bit_reader bits(data);
  delivery_facts made;
  made.from = {delivery::terrestrial};
  made.frequency_khz = terrestrial_khz(bits.take(32));
  made.tuned[tuning_parameter::system] = "DVB-T";
  set(made.tuned, tuning_parameter::bandwidth, bandwidths, bits.take(3));
  bits.skip(5);
  set(made.tuned, tuning_parameter::modulation, constellations, bits.take(2));
  const unsigned hierarchy = bits.take(3);
  set(made.tuned, tuning_parameter::hierarchy, hierarchies, hierarchy);
  set(made.tuned, tuning_parameter::inner_fec, code_rates, bits.take(3));
  const unsigned low_priority = bits.take(3);
  if ((hierarchy & 3U) != 0) {
    set(made.tuned, tuning_parameter::low_priority_fec, code_rates, low_priority);
  }
  set(made.tuned, tuning_parameter::guard_interval, guard_intervals, bits.take(2));
  set(made.tuned, tuning_parameter::transmission_mode, modes, bits.take(2));
  return made;
}

// The frequency of the first cell.
std::uint32_t first_t2_frequency(bit_reader &bits, bool has_several) {
  bits.skip(16 + (has_several ? 8 : 0));
  return bits.has(4) ? terrestrial_khz(bits.take(32)) : 0;
}

delivery_facts t2_delivery(std::string_view data) {
  constexpr std::string_view antennas[] = {"SISO", "MISO"};
  constexpr std::string_view bandwidths[] = {"8000000", "7000000", "6000000", "5000000", "10000000", "1712000"};
  constexpr std::string_view guard_intervals[] = {"1/32", "1/16", "1/8", "1/4", "1/128", "19/128", "19/256"};
  constexpr std::string_view modes[] = {"2k", "8k", "4k", "1k", "16k", "32k"};
  bit_reader bits(data);
  bits.skip(8);
  delivery_facts made;
  made.from = {delivery::terrestrial};
  made.tuned[tuning_parameter::system] = "DVB-T2";
  made.tuned[tuning_parameter::stream_id] = std::to_string(bits.take_byte());
  made.tuned[tuning_parameter::t2_system_id] = std::to_string(bits.take_word());
  if (bits.has(2)) {
    set(made.tuned, tuning_parameter::antennas, antennas, bits.take(2));
    set(made.tuned, tuning_parameter::bandwidth, bandwidths, bits.take(4));
    bits.skip(2);
    set(made.tuned, tuning_parameter::guard_interval, guard_intervals, bits.take(3));
    set(made.tuned, tuning_parameter::transmission_mode, modes, bits.take(3));
    bits.skip(1);
    const bool has_several = bits.take(1) != 0;
    made.frequency_khz = first_t2_frequency(bits, has_several);
  }
  return made;
}

delivery_facts c2_delivery(std::string_view data) {
  constexpr std::uint32_t hz_per_khz = 1000;
  bit_reader bits(data);
  bits.skip(8);
  delivery_facts made;
  made.from = {delivery::cable};
  made.tuned[tuning_parameter::system] = "DVB-C2";
  made.tuned[tuning_parameter::stream_id] = std::to_string(bits.take_byte());
  bits.skip(8);
  made.frequency_khz = bits.take(32) / hz_per_khz;
  return made;
}

constexpr std::size_t satellite_size = 11;
constexpr std::size_t cable_size = 11;
constexpr std::size_t terrestrial_size = 7;
constexpr std::size_t t2_size = 4;
constexpr std::size_t c2_size = 8;

std::optional<delivery_facts> delivery_of(const descriptor_bytes &each) {
  const std::size_t size = each.data.size();
  if (each.tag == delivery_tag::satellite && size >= satellite_size) {
    return satellite_delivery(each.data, false);
  }
  if (each.tag == delivery_tag::cable && size >= cable_size) {
    return cable_delivery(each.data);
  }
  if (each.tag == delivery_tag::terrestrial && size >= terrestrial_size) {
    return terrestrial_delivery(each.data);
  }
  if (is_extension(each, delivery_tag::extended_t2) && size >= t2_size) {
    return t2_delivery(each.data);
  }
  if (is_extension(each, delivery_tag::extended_c2) && size >= c2_size) {
    return c2_delivery(each.data);
  }
  return std::nullopt;
}

}  // namespace

std::string_view polarisation_word(unsigned bits) { return polarisations[bits % std::size(polarisations)]; }

std::optional<delivery_facts> delivery_in(const descriptor_loop &loop) {
  std::optional<delivery_facts> made;
  for (const descriptor_bytes &each : loop) {
    if (auto delivery = delivery_of(each); delivery && (!made || made->frequency_khz == 0)) {
      made = std::move(delivery);
    }
  }
  const descriptor_bytes *s2 = find_descriptor(loop, delivery_tag::satellite_s2);
  if (made && s2 != nullptr) {
    add_s2(s2->data, made->tuned);
  }
  return made;
}

}  // namespace chlist
