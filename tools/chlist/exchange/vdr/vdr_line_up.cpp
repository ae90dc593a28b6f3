// The way from VDR's lines to a line-up.
#include "chlist/exchange/vdr/vdr.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "chlist/exchange/broadcast_service.h"
#include "chlist/exchange/vdr/vdr_tuning.h"

namespace chlist {
namespace {

bool has_language_or_type(const std::vector<vdr_stream> &streams) {
  return std::ranges::any_of(streams,
                             [](const vdr_stream &stream) { return !stream.language.empty() || stream.type != 0; });
}

struct uncarried {
  std::string_view what;
  bool (*is_in)(const vdr_service &service);
};

// The one place that knows: when the list learns to carry something more, its row goes.
constexpr uncarried uncarried_table[] = {
    {circular_polarisations, [](const vdr_service &s) { return s.is_circular; }},
    {"symbol rates and modulation", [](const vdr_service &s) { return s.symbol_rate != 0 || !s.modulation.empty(); }},
    {"video stream types", [](const vdr_service &s) { return s.video_type != 0; }},
    {"further audio PIDs", [](const vdr_service &s) { return s.audio.size() > 1; }},
    {"Dolby PIDs", [](const vdr_service &s) { return s.dolby.size() > (s.audio.empty() ? 1U : 0U); }},
    {"audio languages and types",
     [](const vdr_service &s) { return has_language_or_type(s.audio) || has_language_or_type(s.dolby); }},
    {"teletext PIDs", [](const vdr_service &s) { return s.teletext_pid != 0; }},
    {"subtitle PIDs", [](const vdr_service &s) { return !s.subtitles.empty(); }},
    {"CA ids (but marked as scrambled)", [](const vdr_service &s) { return s.is_scrambled(); }},
    {"CA ids below 100, which choose a device", [](const vdr_service &s) { return s.has_devices(); }},
    {"RIDs", [](const vdr_service &s) { return s.radio_id != 0; }},
    {"fields behind the RID", [](const vdr_service &s) { return s.has_more_fields; }},
};

void count_uncarried(const vdr_line_up &parsed, loss_counts &lost) {
  for (const uncarried &row : uncarried_table) {
    lost.add(row.what, static_cast<std::size_t>(std::ranges::count_if(parsed.services, row.is_in)));
  }
}

// A service that has Dolby alone is heard through its first Dolby stream.
void set_pids(channel_st &record, const vdr_service &service) {
  if (service.has_video()) {
    record.video_pid = service.video_pid;
    record.pcr_pid = service.video_pid;
  }
  if (service.pcr_pid != 0) {
    record.pcr_pid = service.pcr_pid;
  }
  if (service.has_audio()) {
    record.audio_pid = service.audio.empty() ? service.dolby.front().pid : service.audio.front().pid;
  }
}

// Separators without a service behind them are no groups; those of the same name are one.
std::vector<favourite_group> groups_of(const vdr_line_up &parsed) {
  std::vector<favourite_group> groups;
  for (std::size_t at = 0; at < parsed.groups.size(); ++at) {
    const bool is_last = at + 1 == parsed.groups.size();
    const std::size_t end = is_last ? parsed.services.size() : parsed.groups[at + 1].first_service;
    const std::size_t first = parsed.groups[at].first_service;
    if (first == end) {
      continue;
    }
    auto same = std::ranges::find(groups, parsed.groups[at].name, &favourite_group::name);
    if (same == groups.end()) {
      const std::string &name = parsed.groups[at].name;
      same = groups.insert(same, {.name = name, .entries = {}, .origin = name});
    }
    for (std::size_t service = first; service < end; ++service) {
      same->entries.push_back({service, {}});
    }
  }
  return groups;
}

}  // namespace

line_up_service line_up_service_of(const vdr_service &service) {
  line_up_service made = broadcast_service(service.line);
  made.name = service.name;
  made.short_name = service.short_name;
  made.provider = service.provider;
  made.source = service.source;
  made.lowest_number = service.lowest_number;
  made.fields.network_id = service.network_id;
  made.fields.ts_id = service.transport_id;
  made.fields.frequency = service.frequency_khz;
  made.fields.service_id = service.service_id;
  made.fields.polarisation = service.is_vertical ? 1 : 0;
  made.set_flag(CHANNEL_FLAG_FTA, service.is_scrambled());
  set_pids(made.fields, service);
  made.fields.service_type = service_type_by_streams(made.fields);
  made.further = further_of(service);
  return made;
}

line_up line_up_of(vdr_line_up parsed, loss_counts &lost) {
  count_uncarried(parsed, lost);
  line_up made;
  made.favourites = groups_of(parsed);
  made.skipped = std::move(parsed.skipped);
  std::ranges::transform(parsed.services, std::back_inserter(made.services), line_up_service_of);
  return made;
}

line_up read_vdr(const list_source &from, loss_counts &lost) {
  return line_up_of(parse_vdr_channels_conf(from.text), lost);
}

// Something that is a service line, or a name that says so.
bool is_like_vdr(const std::filesystem::path &path, std::string_view beginning) {
  const std::size_t whole_lines = beginning.rfind('\n');
  const vdr_line_up parsed = parse_vdr_channels_conf(beginning.substr(0, whole_lines));
  return !parsed.services.empty() || path.extension() == ".conf";
}

}  // namespace chlist
