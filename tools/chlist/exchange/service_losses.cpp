// The table of shared losses, and counting.
#include "chlist/exchange/service_losses.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

namespace chlist {
namespace {

constexpr std::uint8_t broadcast_source = 1;
constexpr std::uint8_t service_type_data = 12;  // EN 300 468: data broadcast service
constexpr std::uint8_t named_flags = CHANNEL_FLAG_LOCKED | CHANNEL_FLAG_FTA | CHANNEL_FLAG_SKIP | CHANNEL_FLAG_DSMCC;

template <std::size_t Size>
bool holds_anything(const std::uint8_t (&bytes)[Size]) {
  return std::ranges::any_of(bytes, [](std::uint8_t byte) { return byte != 0; });
}

bool has_reserved_bytes(const channel_st &fields) {
  return holds_anything(fields.reserved_208) || holds_anything(fields.reserved_217) ||
         holds_anything(fields.reserved_236) || fields.reserved_245 != 0 || fields.reserved_251 != 0 ||
         fields.reserved_257 != 0 || holds_anything(fields.reserved_262) || holds_anything(fields.reserved_289) ||
         holds_anything(fields.reserved_300);
}

constexpr service_loss table[] = {
    {"short names", [](const line_up_service &s) { return !s.short_name.empty(); }},
    {"genres", [](const line_up_service &s) { return !s.genre.empty(); }},
    {"countries", [](const line_up_service &s) { return !s.country.empty(); }},
    {"skip flags", [](const line_up_service &s) { return s.has_flag(CHANNEL_FLAG_SKIP); }},
    {"DSM-CC flags", [](const line_up_service &s) { return s.has_flag(CHANNEL_FLAG_DSMCC); }},
    {"other flags", [](const line_up_service &s) { return (s.fields.flag & ~named_flags) != 0; }},
    {"PMT PIDs", [](const line_up_service &s) { return s.fields.pmt_pid != unset_pid; }},
    {"ECM PIDs", [](const line_up_service &s) { return s.fields.video_ecm_pid != unset_pid; }},
    {"component tags",
     [](const line_up_service &s) { return s.fields.video_tag != 0xFF || s.fields.audio_tag != 0xFF; }},
    {"source types", [](const line_up_service &s) { return s.fields.source_type != broadcast_source; }},
    {"user order keys", [](const line_up_service &s) { return s.fields.user_order_key != 0; }},
    {"reserved fields",
     [](const line_up_service &s) {
       return s.fields.reserved_pid != 0xFFFF || s.fields.reserved_id != 0xFFFF || has_reserved_bytes(s.fields);
     }},
};

}  // namespace

line_up_service broadcast_service(std::size_t line) {
  line_up_service service;
  service.line = line;
  service.fields.source_type = broadcast_source;
  return service;
}

std::span<const service_loss> usual_losses() { return table; }

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
