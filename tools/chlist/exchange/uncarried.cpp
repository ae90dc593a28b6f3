// The table of what the channel file does not carry.
#include "chlist/exchange/uncarried.h"

#include <algorithm>
#include <iterator>

#include "chlist/exchange/list_builder.h"

namespace chlist {
namespace {

constexpr std::size_t longest_name = 96;

bool has_language_or_type(const std::vector<vdr_stream> &streams) {
  return std::ranges::any_of(streams,
                             [](const vdr_stream &stream) { return !stream.language.empty() || stream.type != 0; });
}

struct uncarried {
  std::string_view what;
  bool (*is_in)(const vdr_service &service);
};

constexpr uncarried table[] = {
    {"symbol rates and modulation", [](const vdr_service &s) { return s.symbol_rate != 0 || !s.modulation.empty(); }},
    {"video stream types", [](const vdr_service &s) { return s.video_type != 0; }},
    {"further audio PIDs", [](const vdr_service &s) { return s.audio.size() > 1; }},
    {"Dolby PIDs", [](const vdr_service &s) { return s.dolby.size() > (s.audio.empty() ? 1U : 0U); }},
    {"audio languages and types",
     [](const vdr_service &s) { return has_language_or_type(s.audio) || has_language_or_type(s.dolby); }},
    {"teletext PIDs", [](const vdr_service &s) { return s.teletext_pid != 0; }},
    {"subtitle PIDs", [](const vdr_service &s) { return !s.subtitles.empty(); }},
    {"CA ids (but marked as scrambled)", [](const vdr_service &s) { return s.is_scrambled(); }},
    {"RIDs", [](const vdr_service &s) { return s.radio_id != 0; }},
    {"names beyond 96 bytes",
     [](const vdr_service &s) { return s.name.size() > longest_name || s.short_name.size() > longest_name; }},
    {"provider names beyond 97 bytes", [](const vdr_service &s) { return s.provider.size() > longest_provider_name; }},
};

}  // namespace

uncarried_counts::uncarried_counts() {
  std::ranges::transform(table, std::back_inserter(rows_), [](const uncarried &item) { return row{item.what, 0}; });
}

void uncarried_counts::add(const vdr_service &service) {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    rows_[i].services += table[i].is_in(service) ? 1 : 0;
  }
}

std::vector<uncarried_counts::row> uncarried_counts::rows() const {
  std::vector<row> present;
  std::ranges::copy_if(rows_, std::back_inserter(present), [](const row &counted) { return counted.services > 0; });
  return present;
}

}  // namespace chlist
