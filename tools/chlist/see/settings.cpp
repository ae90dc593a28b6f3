// The table of settings, and the names of their codes.
#include "chlist/see/settings.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "chlist/service/selection.h"

namespace chlist {
namespace {

constexpr std::uint16_t unset_bouquet = 0xFFFF;
constexpr int unset = -1;

constexpr std::array<std::string_view, GROUP_FAV + 1> group_kinds = {"all",     "satellite",  "genre",     "provider",
                                                                     "country", "scrambling", "favourites"};

json number_unless_unset(int number) { return number != unset ? json(number) : json(); }

json group_kind(const channel_list_st &list) {
  const int kind = list.use_group_list;
  return kind >= 0 && kind < std::ssize(group_kinds) ? json(group_kinds[static_cast<std::size_t>(kind)])
                                                     : json(fmt::format("kind {}", kind));
}

json current_view(const channel_list_st &list) {
  const auto code = static_cast<std::int8_t>(list.vch_type);
  return code == list.vch_type ? json(text_of_view(code)) : json(fmt::format("view {}", list.vch_type));
}

constexpr setting settings[] = {
    {"use_tuner", "tuner", [](const channel_list_st &list) { return number_unless_unset(list.use_tuner); }},
    {"ch_type", "channel type", [](const channel_list_st &list) { return json(list.ch_type); }},
    {"bouquet_id", "bouquet id",
     [](const channel_list_st &list) { return list.bouquet_id != unset_bouquet ? json(list.bouquet_id) : json(); }},
    {"current_view", "current view", current_view},
    {"group_kind", "group kind in use", group_kind},
    {"group_id", "group id in use", [](const channel_list_st &list) { return number_unless_unset(list.sub_group_id); }},
    {"net_index", "network index in use",
     [](const channel_list_st &list) { return number_unless_unset(list.net_index); }},
    {"service_type", "service type in use", [](const channel_list_st &list) { return json(list.service_type); }},
};

}  // namespace

std::span<const setting> all_settings() { return settings; }

}  // namespace chlist
