// Counting losses.
#include "chlist/exchange/service_losses.h"

#include <algorithm>
#include <unordered_map>

#include "chlist/exchange/list_builder.h"

namespace chlist {
namespace {

constexpr std::uint8_t service_type_data = 12;  // EN 300 468: data broadcast service

}  // namespace

line_up_service broadcast_service(std::size_t line) {
  line_up_service service;
  service.line = line;
  service.fields.source_type = broadcast_source;
  return service;
}

void count_losses(const line_up &list, std::span<const service_loss> losses, loss_counts &lost) {
  for (const service_loss &loss : losses) {
    lost.add(loss.what, static_cast<std::size_t>(std::ranges::count_if(list.services, loss.is_in)));
  }
}

void count_source_losses(const line_up &list, std::span<const std::string> sources_read, loss_counts &lost) {
  std::unordered_map<std::string_view, std::size_t> indexes;
  for (std::size_t i = 0; i < list.services.size(); ++i) {
    const line_up_service &service = list.services[i];
    lost.add("network names and positions", service.source != sources_read[i] ? 1 : 0);
    const std::size_t index = indexes.try_emplace(sources_read[i], indexes.size() + 1).first->second;
    lost.add("network indexes", service.fields.net_index != 0 && service.fields.net_index != index ? 1 : 0);
  }
}

std::uint8_t service_type_by_streams(const channel_st &fields) {
  if (fields.video_pid != unset_pid) {
    return SERVICE_TYPE_TV;
  }
  return fields.audio_pid != unset_pid ? std::uint8_t{SERVICE_TYPE_RADIO} : service_type_data;
}

}  // namespace chlist
