// Service types: their names, and which of them are television or radio to a viewer (ETSI EN 300 468, table 87).
#pragma once

#include <channel/records.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

#include "chlist/fields/values.h"

namespace chlist {

inline constexpr std::uint8_t service_type_data = 0x0C;

struct service_type {
  std::uint8_t code = 0;
  std::string_view name;
  std::uint8_t basic = code;  // SERVICE_TYPE_TV of television, SERVICE_TYPE_RADIO of radio, of others the code itself
};

inline constexpr service_type service_types[] = {
    {SERVICE_TYPE_TV, "TV"},
    {SERVICE_TYPE_RADIO, "radio"},
    {0x03, "teletext"},
    {0x04, "NVOD reference"},
    {0x05, "NVOD time-shifted"},
    {0x06, "mosaic"},
    {0x07, "FM radio", SERVICE_TYPE_RADIO},
    {0x0A, "advanced codec radio", SERVICE_TYPE_RADIO},
    {0x0B, "advanced codec mosaic"},
    {service_type_data, "data"},
    {0x10, "DVB MHP"},
    {0x11, "MPEG-2 HD TV", SERVICE_TYPE_TV},
    {0x16, "advanced codec SD TV", SERVICE_TYPE_TV},
    {0x17, "advanced codec SD NVOD time-shifted"},
    {0x18, "advanced codec SD NVOD reference"},
    {0x19, "HD TV", SERVICE_TYPE_TV},
    {0x1A, "HD NVOD time-shifted"},
    {0x1B, "HD NVOD reference"},
    {0x1C, "3D HD TV", SERVICE_TYPE_TV},
    {0x1D, "3D HD NVOD time-shifted"},
    {0x1E, "3D HD NVOD reference"},
    {0x1F, "HEVC TV", SERVICE_TYPE_TV},
    {0x20, "HEVC UHD TV", SERVICE_TYPE_TV},
    {0x21, "VVC TV", SERVICE_TYPE_TV},
    {0x22, "AVS3 TV", SERVICE_TYPE_TV},
};

// The same, as the values of fields have them.
inline constexpr auto words_of_service_types = [] {
  std::array<word, std::size(service_types)> words;
  std::ranges::transform(service_types, words.begin(), [](const service_type &each) {
    return word{each.name, each.code};
  });
  return words;
}();

// SERVICE_TYPE_TV of every kind of television, SERVICE_TYPE_RADIO of every kind of radio: a receiver's views show no
// others. Other types stay as they are.
constexpr std::uint8_t basic_service_type(std::uint8_t type) {
  for (const service_type &each : service_types) {
    if (each.code == type) {
      return each.basic;
    }
  }
  return type;
}

// "TV", "type 200".
std::string service_type_name(std::uint8_t type);

}  // namespace chlist
