// The table of service types.
#include "chlist/service/service_types.h"

#include <channel/records.h>
#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace chlist {
namespace {

struct named_type {
  std::uint8_t service_type;
  std::string_view name;
};

constexpr named_type named_types[] = {
    {SERVICE_TYPE_TV, "TV"},
    {SERVICE_TYPE_RADIO, "radio"},
    {0x03, "teletext"},
    {0x04, "NVOD reference"},
    {0x05, "NVOD time-shifted"},
    {0x06, "mosaic"},
    {0x07, "FM radio"},
    {0x0A, "advanced codec radio"},
    {0x0B, "advanced codec mosaic"},
    {0x0C, "data"},
    {0x10, "DVB MHP"},
    {0x11, "MPEG-2 HD TV"},
    {0x16, "advanced codec SD TV"},
    {0x17, "advanced codec SD NVOD time-shifted"},
    {0x18, "advanced codec SD NVOD reference"},
    {0x19, "HD TV"},
    {0x1A, "HD NVOD time-shifted"},
    {0x1B, "HD NVOD reference"},
    {0x1F, "HEVC TV"},
    {0x20, "HEVC UHD TV"},
};

}  // namespace

std::string service_type_name(std::uint8_t service_type) {
  const auto *const named = std::ranges::find(named_types, service_type, &named_type::service_type);
  return named != std::end(named_types) ? std::string(named->name) : fmt::format("type {}", service_type);
}

}  // namespace chlist
