// Names, numbers, streams and systems.
#include "chlist/scan/descriptors.h"

#include <algorithm>
#include <iterator>

#include "chlist/scan/bit_reader.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

namespace tag {
constexpr std::uint8_t registration = 0x05;
constexpr std::uint8_t conditional_access = 0x09;
constexpr std::uint8_t language = 0x0A;
constexpr std::uint8_t network_name = 0x40;
constexpr std::uint8_t service_list = 0x41;
constexpr std::uint8_t bouquet_name = 0x47;
constexpr std::uint8_t service = 0x48;
constexpr std::uint8_t component_tag = 0x52;
constexpr std::uint8_t teletext = 0x56;
constexpr std::uint8_t subtitling = 0x59;
constexpr std::uint8_t service_names = 0x5D;
constexpr std::uint8_t private_data = 0x5F;
constexpr std::uint8_t ac3 = 0x6A;
constexpr std::uint8_t enhanced_ac3 = 0x7A;
constexpr std::uint8_t dts = 0x7B;
constexpr std::uint8_t aac = 0x7C;
constexpr std::uint8_t logical_channels = 0x83;
constexpr std::uint8_t logical_channels_2 = 0x87;
constexpr std::uint8_t simulcast_channels = 0x88;
constexpr std::uint8_t isdb_terrestrial = 0xFA;
}  // namespace tag

namespace extension_tag {
constexpr unsigned dts_hd = 0x0E;
constexpr unsigned ac4 = 0x15;
}  // namespace extension_tag

std::string text_in(const descriptor_loop &loop, std::uint8_t tag) {
  const descriptor_bytes *found = find_descriptor(loop, tag);
  return found != nullptr ? found->data : std::string();
}

// What of a text stands between the marks of emphasis is its short form (ETSI TR 101 211, 4.6.1). In UTF-8 the marks
// take two bytes; the tables of two bytes a character have others, and are left.
std::string marked_in(std::string_view text) {
  const bool is_utf8 = text.starts_with('\x15');
  const std::size_t selector = size_of_selector(text);
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
  const descriptor_bytes *found = find_descriptor(loop, tag::service_names);
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

// The records of such a descriptor begin with a language.
std::string languages_in(const descriptor_loop &loop, std::uint8_t tag, std::size_t record_size) {
  std::string languages;
  const descriptor_bytes *found = find_descriptor(loop, tag);
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
    if (find_descriptor(stream.descriptors, each.tag) != nullptr) {
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

const descriptor_bytes *find_descriptor(const descriptor_loop &loop, std::uint8_t tag) {
  const auto found = std::ranges::find(loop, tag, &descriptor_bytes::tag);
  return found != loop.end() ? &*found : nullptr;
}

bool is_extension(const descriptor_bytes &each, unsigned extension) {
  return each.tag == extension_descriptor && !each.data.empty() &&
         static_cast<unsigned char>(each.data.front()) == extension;
}

std::string network_name_in(const descriptor_loop &loop) { return text_in(loop, tag::network_name); }
std::string bouquet_name_in(const descriptor_loop &loop) { return text_in(loop, tag::bouquet_name); }

service_facts service_in(const descriptor_loop &loop) {
  service_facts made;
  if (const descriptor_bytes *found = find_descriptor(loop, tag::service); found != nullptr && !found->data.empty()) {
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
  const descriptor_bytes *found = find_descriptor(loop, tag::component_tag);
  return found != nullptr && !found->data.empty() ? std::optional(static_cast<std::uint8_t>(found->data[0]))
                                                  : std::nullopt;
}

bool is_isdb(const network_or_bouquet &network) {
  return std::ranges::any_of(network.streams, [](const described_stream &each) {
    return find_descriptor(each.descriptors, tag::isdb_terrestrial) != nullptr &&
           find_descriptor(each.descriptors, tag::private_data) == nullptr && !delivery_in(each.descriptors);
  });
}

}  // namespace chlist
