// The table of what a service may have.
#include "chlist/exchange/service_traits.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "chlist/exchange/list_builder.h"
#include "chlist/fields/pids.h"

namespace chlist {
namespace {

constexpr int known_flags = CHANNEL_FLAG_LOCKED | CHANNEL_FLAG_FTA | CHANNEL_FLAG_SKIP | CHANNEL_FLAG_DSMCC;

// Bytes and values that the library does not interpret.
bool has_host_fields(const channel_st &fields) {
  return is_used(fields.reserved_208) || is_used(fields.reserved_217) || is_used(fields.reserved_236) ||
         fields.reserved_245 != 0 || fields.reserved_251 != 0 || fields.reserved_257 != 0 ||
         fields.reserved_pid != channel::unset_service.reserved_pid || is_used(fields.reserved_262) ||
         fields.reserved_id != channel::unset_service.reserved_id || is_used(fields.reserved_289) ||
         is_used(fields.reserved_300);
}

struct service_trait {
  trait which;
  std::string_view what;
  bool (*is_in)(const line_up_service &service);
};

bool is_any(const line_up_service & /*service*/) { return true; }

constexpr service_trait table[] = {
    {trait::network_id, "network ids", is_any},
    {trait::transport_id, "transport stream ids", is_any},
    {trait::frequency, "frequencies", is_any},
    {trait::service_id, "service ids", is_any},
    {trait::place_outside_views, "services outside the ALL view",
     [](const line_up_service &s) { return !s.is_listed; }},
    {trait::number, "channel numbers", [](const line_up_service &s) { return s.number.has_value(); }},
    {trait::minor_number, "minor numbers", [](const line_up_service &s) { return s.number && s.number->minor != 0; }},
    {trait::name, "names", [](const line_up_service &s) { return !s.name.empty(); }},
    {trait::short_name, "second names", [](const line_up_service &s) { return !s.short_name.empty(); }},
    {trait::provider, "providers", [](const line_up_service &s) { return !s.provider.empty(); }},
    {trait::genre, "genres", [](const line_up_service &s) { return !s.genre.empty(); }},
    {trait::country, "countries", [](const line_up_service &s) { return !s.country.empty(); }},
    {trait::source, "network names", [](const line_up_service &s) { return !s.source.empty(); }},
    {trait::lock, "locks", [](const line_up_service &s) { return s.has_flag(CHANNEL_FLAG_LOCKED); }},
    {trait::skip, "skip marks", [](const line_up_service &s) { return s.has_flag(CHANNEL_FLAG_SKIP); }},
    {trait::scrambling, "scrambling marks", [](const line_up_service &s) { return s.has_flag(CHANNEL_FLAG_FTA); }},
    {trait::data_mark, "data service marks", [](const line_up_service &s) { return s.has_flag(CHANNEL_FLAG_DSMCC); }},
    {trait::other_flags, "other flag bits",
     [](const line_up_service &s) { return (s.fields.flag & ~known_flags) != 0; }},
    {trait::service_type, "service types", [](const line_up_service &s) { return s.fields.service_type != 0; }},
    {trait::source_type, "source types",
     [](const line_up_service &s) { return s.fields.source_type != broadcast_source; }},
    {trait::polarisation, "polarisations", [](const line_up_service &s) { return s.fields.polarisation != 0; }},
    {trait::video_pid, "video PIDs", [](const line_up_service &s) { return s.fields.video_pid != unset_pid; }},
    {trait::audio_pid, "audio PIDs", [](const line_up_service &s) { return s.fields.audio_pid != unset_pid; }},
    {trait::pcr_pid, "PCR PIDs", [](const line_up_service &s) { return s.fields.pcr_pid != unset_pid; }},
    {trait::pmt_pid, "PMT PIDs", [](const line_up_service &s) { return s.fields.pmt_pid != unset_pid; }},
    {trait::ecm_pid, "ECM PIDs", [](const line_up_service &s) { return s.fields.video_ecm_pid != unset_pid; }},
    {trait::video_tag, "component tags of video",
     [](const line_up_service &s) { return s.fields.video_tag != unset_tag; }},
    {trait::audio_tag, "component tags of audio",
     [](const line_up_service &s) { return s.fields.audio_tag != unset_tag; }},
    {trait::order_key, "user order keys", [](const line_up_service &s) { return s.fields.user_order_key != 0; }},
    {trait::net_index, "network indexes", [](const line_up_service &s) { return s.fields.net_index != 0; }},
    {trait::host_fields, "values that only the receiver knows",
     [](const line_up_service &s) { return has_host_fields(s.fields); }},
};

struct carrying_field {
  std::string_view name;
  trait which;
};

constexpr carrying_field carrying[] = {
    {"network_id", trait::network_id},
    {"ts_id", trait::transport_id},
    {"frequency", trait::frequency},
    {"service_id", trait::service_id},
    {"number", trait::place_outside_views},
    {"number", trait::number},
    {"minor", trait::minor_number},
    {"name", trait::name},
    {"short_name", trait::short_name},
    {"provider", trait::provider},
    {"genre", trait::genre},
    {"country", trait::country},
    {"network_name", trait::source},
    {"locked", trait::lock},
    {"skipped", trait::skip},
    {"scrambled", trait::scrambling},
    {"data", trait::data_mark},
    {"flags", trait::lock},
    {"flags", trait::skip},
    {"flags", trait::scrambling},
    {"flags", trait::data_mark},
    {"flags", trait::other_flags},
    {"type", trait::service_type},
    {"service_type", trait::service_type},
    {"source_type", trait::source_type},
    {"polarisation", trait::polarisation},
    {"video_pid", trait::video_pid},
    {"audio_pid", trait::audio_pid},
    {"pcr_pid", trait::pcr_pid},
    {"pmt_pid", trait::pmt_pid},
    {"video_ecm_pid", trait::ecm_pid},
    {"video_tag", trait::video_tag},
    {"audio_tag", trait::audio_tag},
    {"order_key", trait::order_key},
    {"net_index", trait::net_index},
    {"favourites", trait::favourites},
};

bool shows_own_number(const line_up &list, const line_up_entry &entry) {
  return entry.number == channel_number{} || entry.number == list.services.at(entry.service).number;
}

}  // namespace

std::vector<trait> traits_of(const field &which) {
  std::vector<trait> traits;
  for (const carrying_field &each : carrying) {
    if (each.name == which.name) {
      traits.push_back(each.which);
    }
  }
  return traits;
}

void count_uncarried(const line_up &list, std::span<const trait> carried, loss_counts &lost) {
  const auto is_carried = [&](trait which) { return std::ranges::find(carried, which) != carried.end(); };
  for (const service_trait &row : table) {
    if (!is_carried(row.which)) {
      lost.add(row.what, static_cast<std::size_t>(std::ranges::count_if(list.services, row.is_in)));
    }
  }
  lost.add("favourite groups", is_carried(trait::favourites) ? 0 : list.favourites.size());
  if (is_carried(trait::favourites) && !is_carried(trait::favourite_numbers)) {
    for (const favourite_group &group : list.favourites) {
      lost.add("numbers of favourites that differ from the service's",
               static_cast<std::size_t>(std::ranges::count_if(
                   group.entries, [&](const line_up_entry &entry) { return !shows_own_number(list, entry); })));
    }
  }
}

}  // namespace chlist
