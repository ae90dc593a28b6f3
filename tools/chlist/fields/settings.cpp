// The table of settings, and the names of their codes.
#include "chlist/fields/settings.h"

#include <fmt/format.h>

#include <array>
#include <iterator>

#include "chlist/line_up/selection.h"
#include "chlist/report.h"

namespace chlist {
namespace {

using kept = const line_up_settings &;

constexpr int unset_bouquet = 0xFFFF;
constexpr int unset = -1;

constexpr std::array<std::string_view, GROUP_FAV + 1> group_kind_names = {
    "all", "satellite", "genre", "provider", "country", "scrambling", "favourites"};

json unless(int number, int none) { return number != none ? json(number) : json(); }

json group_kind_in_use(kept settings) {
  const int kind = settings.group_kind;
  return kind >= 0 && kind < std::ssize(group_kind_names) ? json(group_kind_names[static_cast<std::size_t>(kind)])
                                                          : json(fmt::format("kind {}", kind));
}

json current_view(kept settings) {
  const auto code = static_cast<std::int8_t>(settings.current_view);
  const auto name = code == settings.current_view ? name_of_view(code) : std::nullopt;
  return name ? label_of(*name) : fmt::format("view {}", settings.current_view);
}

constexpr setting settings_of_lists[] = {
    {"use_tuner", "tuner", [](kept settings) { return unless(settings.use_tuner, unset); }},
    {"ch_type", "channel type", [](kept settings) { return json(settings.ch_type); }},
    {"bouquet_id", "bouquet id", [](kept settings) { return unless(settings.bouquet_id, unset_bouquet); }},
    {"current_view", "current view", current_view},
    {"group_kind", "group kind in use", group_kind_in_use},
    {"group_id", "group id in use", [](kept settings) { return unless(settings.group_id, unset); }},
    {"net_index", "network index in use", [](kept settings) { return unless(settings.net_index, unset); }},
    {"service_type", "service type in use", [](kept settings) { return json(settings.service_type); }},
};

}  // namespace

std::span<const setting> all_settings() { return settings_of_lists; }

}  // namespace chlist
