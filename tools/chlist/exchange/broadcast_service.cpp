// Services as formats begin with them.
#include "chlist/exchange/broadcast_service.h"

#include "chlist/fields/pids.h"
#include "chlist/fields/service_types.h"

namespace chlist {

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

}  // namespace chlist
