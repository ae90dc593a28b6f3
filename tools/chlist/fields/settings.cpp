// The table of settings, and the names of their codes.
#include "chlist/fields/record_fields.h"

#include <fmt/format.h>

#include "chlist/fields/ranges.h"
#include "chlist/line_up/selection.h"

namespace chlist {
namespace {

using setting = record_field<line_up_settings>;
using role = field_role;

constexpr value_range with_unset(value_range values, std::int64_t unset) {
  values.unset = unset;
  return values;
}

constexpr word group_kinds_in_use[] = {
    {"all", GROUP_ALL},         {"satellite", GROUP_SATELLITE}, {"genre", GROUP_GENRE},   {"provider", GROUP_PROVIDER},
    {"country", GROUP_COUNTRY}, {"scrambling", GROUP_FTACAS},   {"favourites", GROUP_FAV}};

constexpr value_range tuner = with_unset(ranges::signed8, -1);
constexpr value_range bouquet = with_unset(ranges::id16, 0xFFFF);
constexpr value_range group_in_use = with_unset(ranges::signed16, -1);
constexpr value_range network_in_use = with_unset(ranges::signed8, -1);
constexpr value_range group_kind_in_use = {value_kind::named,  -128,   127, "a kind of groups, or -128 to 127", {},
                                           group_kinds_in_use, "kind "};

template <int line_up_settings::*Member, const value_range &Values>
json value_of(const line_up_settings &settings) {
  return shown_value(Values, settings.*Member);
}

json current_view(const line_up_settings &settings) {
  const auto code = static_cast<std::int8_t>(settings.current_view);
  const auto name = code == settings.current_view ? name_of_view(code) : std::nullopt;
  return name ? label_of(*name) : fmt::format("view {}", settings.current_view);
}

using kept = line_up_settings;

constexpr setting settings_of_lists[] = {
    {{"use_tuner", "tuner", "the receiver's own setting of its tuner", tuner},
     role::own,
     value_of<&kept::use_tuner, tuner>},
    {{"ch_type", "channel type", "0, or the favourite group chosen last", ranges::signed8},
     role::own,
     value_of<&kept::ch_type, ranges::signed8>},
    {{"bouquet_id", "bouquet id", "the bouquet in use", bouquet}, role::own, value_of<&kept::bouquet_id, bouquet>},
    {{"current_view", "current view", "the view that zapping goes through", ranges::signed16}, role::own, current_view},
    {{"group_kind", "group kind in use", "what the services on show are grouped by", group_kind_in_use},
     role::own,
     value_of<&kept::group_kind, group_kind_in_use>},
    {{"group_id", "group id in use", "the group on show", group_in_use},
     role::own,
     value_of<&kept::group_id, group_in_use>},
    {{"net_index", "network index in use", "the network on show; none: all of them", network_in_use},
     role::own,
     value_of<&kept::net_index, network_in_use>},
    {{"service_type", "service type in use", "1 television, 2 radio: the view that the list on show came from",
      ranges::signed8},
     role::own,
     value_of<&kept::service_type, ranges::signed8>},
};

}  // namespace

std::span<const setting> setting_fields() { return settings_of_lists; }

}  // namespace chlist
