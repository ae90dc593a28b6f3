// What the descriptors of the tables say: ETSI EN 300 468, 6.2 and 6.4, ISO/IEC 13818-1, 2.6, and the channel numbers
// of national profiles. A descriptor that is shorter than what it should hold says as much as it has whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/reception.h"
#include "chlist/line_up/tuning.h"
#include "chlist/scan/tables.h"

namespace chlist {

inline constexpr std::uint8_t extension_descriptor = 0x7F;

// The first one with a tag; null when there is none.
const descriptor_bytes *find_descriptor(const descriptor_loop &loop, std::uint8_t tag);
bool is_extension(const descriptor_bytes &each, unsigned extension);

// Where a transport stream is received.
struct delivery_facts {
  reception from;
  std::uint32_t frequency_khz = 0;  // 0: not told
  bool is_vertical = false;         // or right circular
  tuning tuned;
};

std::optional<delivery_facts> delivery_in(const descriptor_loop &loop);

// "horizontal", "vertical", "left" or "right", by the two bits that stand for them: the value of a tuning parameter.
std::string_view polarisation_word(unsigned bits);

// Texts as they are broadcast, with the table of their characters in front.
std::string network_name_in(const descriptor_loop &loop);
std::string bouquet_name_in(const descriptor_loop &loop);

struct service_facts {
  std::optional<std::uint8_t> type;  // as EN 300 468 has it
  std::string provider;
  std::string name;
  std::string short_name;     // what of the name is marked for a short one
  std::string name_elsewise;  // in the first of further languages
};

service_facts service_in(const descriptor_loop &loop);

struct listed_service {
  std::uint16_t service_id = 0;
  std::uint8_t type = 0;
};

std::vector<listed_service> service_list_in(const descriptor_loop &loop);

struct logical_channel {
  std::uint16_t service_id = 0;
  int number = 0;
  bool is_visible = true;
  bool is_simulcast = false;  // the number that a receiver of high definition gives instead
};

std::vector<logical_channel> logical_channels_in(const descriptor_loop &loop);

struct conditional_access {
  std::uint16_t system_id = 0;
  std::uint16_t pid = 0;
};

std::vector<conditional_access> conditional_access_in(const descriptor_loop &loop);

// What a stream of a program is, and its component tag.
elementary_stream stream_of(const program_stream &stream);
std::optional<std::uint8_t> component_tag_in(const descriptor_loop &loop);

// Whether a network is described in the terms of ISDB (ARIB STD-B10), whose tags mean something else in DVB.
bool is_isdb(const network_or_bouquet &network);

}  // namespace chlist
