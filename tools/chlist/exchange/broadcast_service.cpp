// Services as formats begin with them.
#include "chlist/exchange/broadcast_service.h"

#include <algorithm>

#include "chlist/fields/pids.h"

namespace chlist {
namespace {

// EN 300 468, table of service types.
constexpr std::uint8_t service_type_data = 12;
constexpr std::uint8_t television_types[] = {0x11, 0x16, 0x19, 0x1C, 0x1F, 0x20, 0x21, 0x22};
constexpr std::uint8_t radio_types[] = {0x07, 0x0A};

}  // namespace

line_up_service broadcast_service(std::size_t line) {
  line_up_service service;
  service.line = line;
  service.fields.source_type = broadcast_source;
  return service;
}

std::uint8_t service_type_by_streams(const channel_st &fields) {
  if (fields.video_pid != unset_pid) {
    return SERVICE_TYPE_TV;
  }
  return fields.audio_pid != unset_pid ? std::uint8_t{SERVICE_TYPE_RADIO} : service_type_data;
}

std::uint8_t basic_service_type(std::uint8_t type) {
  if (std::ranges::count(television_types, type) > 0) {
    return SERVICE_TYPE_TV;
  }
  return std::ranges::count(radio_types, type) > 0 ? std::uint8_t{SERVICE_TYPE_RADIO} : type;
}

}  // namespace chlist
