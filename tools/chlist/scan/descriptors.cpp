// Bits of descriptors, in the order in which the standards have them.
#include "chlist/scan/descriptors.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <utility>

namespace chlist {
namespace {

namespace tag {
constexpr std::uint8_t registration = 0x05;
constexpr std::uint8_t conditional_access = 0x09;
constexpr std::uint8_t language = 0x0A;
constexpr std::uint8_t network_name = 0x40;
constexpr std::uint8_t service_list = 0x41;
constexpr std::uint8_t satellite = 0x43;
constexpr std::uint8_t cable = 0x44;
constexpr std::uint8_t bouquet_name = 0x47;
constexpr std::uint8_t service = 0x48;
constexpr std::uint8_t component_tag = 0x52;
constexpr std::uint8_t teletext = 0x56;
constexpr std::uint8_t subtitling = 0x59;
constexpr std::uint8_t terrestrial = 0x5A;
constexpr std::uint8_t service_names = 0x5D;
constexpr std::uint8_t private_data = 0x5F;
constexpr std::uint8_t ac3 = 0x6A;
constexpr std::uint8_t satellite_s2 = 0x79;
constexpr std::uint8_t enhanced_ac3 = 0x7A;
constexpr std::uint8_t dts = 0x7B;
constexpr std::uint8_t aac = 0x7C;
constexpr std::uint8_t extension = 0x7F;
constexpr std::uint8_t logical_channels = 0x83;
constexpr std::uint8_t logical_channels_2 = 0x87;
constexpr std::uint8_t simulcast_channels = 0x88;
constexpr std::uint8_t isdb_terrestrial = 0xFA;
}  // namespace tag

namespace extension_tag {
constexpr unsigned t2_delivery = 0x04;
constexpr unsigned c2_delivery = 0x0D;
constexpr unsigned dts_hd = 0x0E;
constexpr unsigned ac4 = 0x15;
}  // namespace extension_tag

// Takes bits off the front; beyond the end they are 0, and the reader knows.
class bit_reader {
 public:
  explicit bit_reader(std::string_view bytes) : bytes_(bytes) {}

  std::uint32_t take(unsigned bits) {
    std::uint32_t value = 0;
    for (; bits > 0; --bits, ++at_) {
      const std::size_t byte = at_ / 8;
      const bool is_set = byte < bytes_.size() && (static_cast<unsigned char>(bytes_[byte]) >> (7 - at_ % 8) & 1U) != 0;
      value = value << 1U | (is_set ? 1U : 0U);
    }
    return value;
  }
  std::uint16_t take_word() { return static_cast<std::uint16_t>(take(16)); }
  std::uint8_t take_byte() { return static_cast<std::uint8_t>(take(8)); }
  void skip(unsigned bits) { at_ += bits; }

  // Decimal digits of four bits each; one that is none counts as 0.
  std::uint32_t take_digits(unsigned digits) {
    std::uint32_t value = 0;
    for (; digits > 0; --digits) {
      const std::uint32_t digit = take(4);
      value = value * 10 + (digit < 10 ? digit : 0);
    }
    return value;
  }

  // At the beginning of a byte only.
  std::string_view take_text(std::size_t size) {
    const std::string_view text = rest().substr(0, size);
    at_ += size * 8;
    return text;
  }
  // A text with its length in front.
  std::string_view take_text() { return take_text(take_byte()); }

  [[nodiscard]] bool has(std::size_t bytes) const { return bytes_.size() * 8 >= at_ + bytes * 8; }
  // False behind the end, too.
  [[nodiscard]] bool is_within() const { return at_ <= bytes_.size() * 8; }
  [[nodiscard]] std::string_view rest() const { return bytes_.substr(std::min(at_ / 8, bytes_.size())); }

 private:
  std::string_view bytes_;
  std::size_t at_ = 0;  // in bits
};

const descriptor_bytes *find(const descriptor_loop &loop, std::uint8_t tag) {
  const auto found = std::ranges::find(loop, tag, &descriptor_bytes::tag);
  return found != loop.end() ? &*found : nullptr;
}

bool is_extension(const descriptor_bytes &each, unsigned extension) {
  return each.tag == tag::extension && !each.data.empty() && static_cast<unsigned char>(each.data.front()) == extension;
}

std::string text_in(const descriptor_loop &loop, std::uint8_t tag) {
  const descriptor_bytes *found = find(loop, tag);
  return found != nullptr ? found->data : std::string();
}

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
constexpr std::size_t extended_size = 4;

std::optional<delivery_facts> delivery_of(const descriptor_bytes &each) {
  const std::size_t size = each.data.size();
  if (each.tag == tag::satellite && size >= satellite_size) {
    return satellite_delivery(each.data, false);
  }
  if (each.tag == tag::cable && size >= cable_size) {
    return cable_delivery(each.data);
  }
  if (each.tag == tag::terrestrial && size >= terrestrial_size) {
    return terrestrial_delivery(each.data);
  }
  if (is_extension(each, extension_tag::t2_delivery) && size >= extended_size) {
    return t2_delivery(each.data);
  }
  if (is_extension(each, extension_tag::c2_delivery) && size >= extended_size) {
    return c2_delivery(each.data);
  }
  return std::nullopt;
}

// What of a text stands between the marks of emphasis is its short form (ETSI TR 101 211, 4.6.1). In UTF-8 the marks
// take two bytes; the tables of two bytes a character have others, and are left.
std::string marked_in(std::string_view text) {
  const bool is_utf8 = text.starts_with('\x15');
  const std::size_t selector = text.starts_with('\x10') ? 3 : !text.empty() && text[0] >= 0 && text[0] < ' ' ? 1 : 0;
  if (!text.empty() && text[0] >= '\x11' && text[0] <= '\x14') {
    return {};
  }
  const std::string_view begin = is_utf8 ? "\xC2\x86" : "\x86";
  const std::string_view end = is_utf8 ? "\xC2\x87" : "\x87";
  std::string marked;
  for (std::size_t at = text.find(begin, selector); at != std::string_view::npos; at = text.find(begin, at)) {
    at += begin.size();
    marked += text.substr(at, text.find(end, at) - at);
  }
  return marked.empty() ? marked : std::string(text.substr(0, selector)) + marked;
}

std::string name_in_another_language(const descriptor_loop &loop, std::string_view name) {
  const descriptor_bytes *found = find(loop, tag::service_names);
  for (bit_reader bits(found != nullptr ? std::string_view(found->data) : std::string_view()); bits.has(5);) {
    bits.skip(24);
    bits.take_text();
    const std::string_view other = bits.take_text();
    if (!other.empty() && other != name) {
      return std::string(other);
    }
  }
  return {};
}

// Networks say in front of private descriptors whose they are.
namespace specifier {
constexpr std::uint32_t none = 0;  // many networks leave it out and mean the first one
constexpr std::uint32_t eacem = 0x28;
constexpr std::uint32_t nordig = 0x29;
constexpr std::uint32_t uk = 0x233A;
constexpr std::uint32_t australia_first = 0x3200;
constexpr std::uint32_t australia_last = 0x320F;
}  // namespace specifier

bool is_of_ten_bits(std::uint32_t whose) {
  return whose == specifier::none || whose == specifier::eacem || whose == specifier::uk ||
         (whose >= specifier::australia_first && whose <= specifier::australia_last);
}

// Records of four bytes: the service, whether it is shown, and its number in the last bits. What in the United Kingdom
// stands for whether it is shown is reserved, and set.
void add_channels(bit_reader bits, unsigned number_bits, bool is_simulcast, std::vector<logical_channel> &into) {
  while (bits.has(4)) {
    logical_channel made;
    made.service_id = bits.take_word();
    made.is_visible = bits.take(1) != 0;
    bits.skip(15 - number_bits);
    made.number = static_cast<int>(bits.take(number_bits));
    made.is_simulcast = is_simulcast;
    into.push_back(made);
  }
}

constexpr unsigned usual_number_bits = 10;
constexpr unsigned nordig_number_bits = 14;

// Several lists for the countries of one network: the first one is taken.
void add_first_list(std::string_view data, std::vector<logical_channel> &into) {
  bit_reader bits(data);
  bits.skip(8);
  bits.take_text();
  bits.skip(24);
  add_channels(bit_reader(bits.take_text()), usual_number_bits, false, into);
}

void add_channels(const descriptor_bytes &each, std::uint32_t whose, std::vector<logical_channel> &into) {
  if (each.tag == tag::logical_channels && is_of_ten_bits(whose)) {
    add_channels(bit_reader(each.data), usual_number_bits, false, into);
  } else if (each.tag == tag::logical_channels && whose == specifier::nordig) {
    add_channels(bit_reader(each.data), nordig_number_bits, false, into);
  } else if (each.tag == tag::logical_channels_2 && whose == specifier::nordig) {
    add_first_list(each.data, into);
  } else if (each.tag == tag::simulcast_channels && (whose == specifier::none || whose == specifier::eacem)) {
    add_channels(bit_reader(each.data), usual_number_bits, true, into);
  }
}

void join(std::string &languages, std::string_view language) {
  if (language.size() == 3 && languages.find(language) == std::string::npos) {
    languages += languages.empty() ? std::string(language) : '+' + std::string(language);
  }
}

// Of records that begin with a language.
std::string languages_in(const descriptor_loop &loop, std::uint8_t tag, std::size_t record_size) {
  std::string languages;
  const descriptor_bytes *found = find(loop, tag);
  for (bit_reader bits(found != nullptr ? std::string_view(found->data) : std::string_view()); bits.has(record_size);) {
    join(languages, bits.take_text(3));
    bits.skip(static_cast<unsigned>(record_size - 3) * 8);
  }
  return languages;
}

constexpr std::uint8_t video_types[] = {0x01, 0x02, 0x10, 0x1B, 0x1F, 0x20, 0x24, 0x33, 0x42, 0xD1, 0xEA};
constexpr std::uint8_t audio_types[] = {0x03, 0x04, 0x0F, 0x11, 0x1C, 0x2D};
constexpr std::uint8_t dolby_types[] = {0x81, 0x87};  // ATSC A/52
constexpr std::uint8_t private_type = 0x06;           // its descriptors say what it is

struct private_stream {
  std::uint8_t tag;
  stream_kind kind;
};
constexpr private_stream private_streams[] = {
    {tag::ac3, stream_kind::dolby}, {tag::enhanced_ac3, stream_kind::dolby}, {tag::aac, stream_kind::audio},
    {tag::dts, stream_kind::audio}, {tag::teletext, stream_kind::teletext},  {tag::subtitling, stream_kind::subtitles},
};

struct registered_format {
  std::string_view format;
  stream_kind kind;
};
constexpr registered_format registered_formats[] = {{"AC-3", stream_kind::dolby}, {"EAC3", stream_kind::dolby},
                                                    {"HEVC", stream_kind::video}, {"VC-1", stream_kind::video},
                                                    {"DTS1", stream_kind::audio}, {"DTS2", stream_kind::audio},
                                                    {"DTS3", stream_kind::audio}, {"Opus", stream_kind::audio}};

stream_kind kind_by_registration(const descriptor_loop &loop) {
  const std::string format = text_in(loop, tag::registration).substr(0, 4);
  const auto *const known = std::ranges::find(registered_formats, format, &registered_format::format);
  return known != std::end(registered_formats) ? known->kind : stream_kind::other;
}

elementary_stream private_stream_of(const program_stream &stream) {
  for (const private_stream &each : private_streams) {
    if (find(stream.descriptors, each.tag) != nullptr) {
      return {stream.pid, each.kind, each.tag};
    }
  }
  for (const descriptor_bytes &each : stream.descriptors) {
    if (is_extension(each, extension_tag::ac4) || is_extension(each, extension_tag::dts_hd)) {
      return {stream.pid, is_extension(each, extension_tag::ac4) ? stream_kind::dolby : stream_kind::audio, each.tag};
    }
  }
  return {stream.pid, kind_by_registration(stream.descriptors), stream.type};
}

stream_kind kind_of_type(std::uint8_t type) {
  if (std::ranges::count(video_types, type) > 0) {
    return stream_kind::video;
  }
  if (std::ranges::count(audio_types, type) > 0) {
    return stream_kind::audio;
  }
  return std::ranges::count(dolby_types, type) > 0 ? stream_kind::dolby : stream_kind::other;
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
  const descriptor_bytes *s2 = find(loop, tag::satellite_s2);
  if (made && s2 != nullptr) {
    add_s2(s2->data, made->tuned);
  }
  return made;
}

std::string network_name_in(const descriptor_loop &loop) { return text_in(loop, tag::network_name); }
std::string bouquet_name_in(const descriptor_loop &loop) { return text_in(loop, tag::bouquet_name); }

service_facts service_in(const descriptor_loop &loop) {
  service_facts made;
  if (const descriptor_bytes *found = find(loop, tag::service); found != nullptr && !found->data.empty()) {
    bit_reader bits(found->data);
    made.type = bits.take_byte();
    made.provider = bits.take_text();
    made.name = bits.take_text();
  }
  made.short_name = marked_in(made.name);
  made.name_elsewise = name_in_another_language(loop, made.name);
  return made;
}

std::vector<listed_service> service_list_in(const descriptor_loop &loop) {
  std::vector<listed_service> listed;
  for (const descriptor_bytes &each : loop) {
    for (bit_reader bits(each.tag == tag::service_list ? std::string_view(each.data) : std::string_view());
         bits.has(3);) {
      const std::uint16_t id = bits.take_word();
      listed.push_back({id, bits.take_byte()});
    }
  }
  return listed;
}

std::vector<logical_channel> logical_channels_in(const descriptor_loop &loop) {
  std::vector<logical_channel> channels;
  std::uint32_t whose = specifier::none;
  for (const descriptor_bytes &each : loop) {
    if (each.tag == tag::private_data) {
      whose = bit_reader(each.data).take(32);
    } else {
      add_channels(each, whose, channels);
    }
  }
  return channels;
}

std::vector<conditional_access> conditional_access_in(const descriptor_loop &loop) {
  std::vector<conditional_access> all;
  for (const descriptor_bytes &each : loop) {
    if (bit_reader bits(each.data); each.tag == tag::conditional_access && bits.has(4)) {
      const std::uint16_t system = bits.take_word();
      bits.skip(3);
      all.push_back({system, static_cast<std::uint16_t>(bits.take(13))});
    }
  }
  return all;
}

elementary_stream stream_of(const program_stream &stream) {
  elementary_stream made = stream.type == private_type
                               ? private_stream_of(stream)
                               : elementary_stream{stream.pid, kind_of_type(stream.type), stream.type};
  constexpr std::size_t language_size = 4;
  constexpr std::size_t teletext_size = 5;
  constexpr std::size_t subtitling_size = 8;
  made.language = made.kind == stream_kind::teletext ? languages_in(stream.descriptors, tag::teletext, teletext_size)
                  : made.kind == stream_kind::subtitles
                      ? languages_in(stream.descriptors, tag::subtitling, subtitling_size)
                      : languages_in(stream.descriptors, tag::language, language_size);
  return made;
}

std::optional<std::uint8_t> component_tag_in(const descriptor_loop &loop) {
  const descriptor_bytes *found = find(loop, tag::component_tag);
  return found != nullptr && !found->data.empty() ? std::optional(static_cast<std::uint8_t>(found->data[0]))
                                                  : std::nullopt;
}

bool is_isdb(const network_or_bouquet &network) {
  return std::ranges::any_of(network.streams, [](const described_stream &each) {
    return find(each.descriptors, tag::isdb_terrestrial) != nullptr &&
           find(each.descriptors, tag::private_data) == nullptr && !delivery_in(each.descriptors);
  });
}

}  // namespace chlist
