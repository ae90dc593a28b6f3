// The table of views; the work view and the history of watched channels, which live outside the channel list and are
// never saved.
#include "channel/store/view.h"

#include <array>

#include "channel/log.h"
#include "channel/store/channel_list.h"

namespace channel {

return_channel_st history[MAX_RETURN_CHANNEL];

namespace {

virtual_channel_st work_vch[MAX_CHANNEL];
std::int16_t work_vnumber;

constexpr std::size_t plain_views = VIEW_PROMOTION + 1;

using view_table = std::array<view, plain_views + MAX_FAV>;

constexpr view_table make_views() {
  view_table made{};
  made[VIEW_ALL] = {channel_list.vch, &channel_list.vnumber, MAX_CHANNEL};
  made[VIEW_TV] = {channel_list.tv_vch, &channel_list.tv_vnumber, MAX_TV_CHANNEL};
  made[VIEW_RADIO] = {channel_list.radio_vch, &channel_list.radio_vnumber, MAX_RADIO_CHANNEL};
  made[VIEW_USER] = {channel_list.user_vch, &channel_list.user_vnumber, MAX_CHANNEL};
  made[VIEW_WORK] = {work_vch, &work_vnumber, MAX_CHANNEL};
  made[VIEW_PROMOTION] = {channel_list.promo_vch, &channel_list.promo_vnumber, MAX_PROMO_CHANNEL};
  for (std::size_t group = 0; group < MAX_FAV; ++group) {
    made[plain_views + group] = {channel_list.favorite_vch[group], &channel_list.favorite_vnumber[group], MAX_FAV_NUM};
  }
  return made;
}

constexpr view_table views = make_views();

}  // namespace

bool view::append(const virtual_channel_st &entry) const {
  if (is_full()) {
    return false;
  }
  const std::int16_t position = size();
  entries[position] = entry;
  *count = static_cast<std::int16_t>(position + 1);
  return true;
}

std::span<const view> all_views() { return views; }

view find_view(int type) {
  if (type >= 0 && type <= VIEW_PROMOTION) {
    return views[static_cast<std::size_t>(type)];
  }
  if (type >= VIEW_FAVOURITE && type <= VIEW_FAVOURITE_LAST) {
    return views[plain_views + static_cast<std::size_t>(type - VIEW_FAVOURITE)];
  }
  return {};
}

view find_view_as(const char *operation, std::int8_t type) {
  const view found = find_view(type);
  if (!found) {
    LOG_WARNING_AS(operation, "unknown vch_type=%d\n", type);
  }
  return found;
}

view fetch_view(std::int8_t type) {
  static_cast<void>(find_view_as("get_virtual_channel_st", type));
  return find_view_as("get_virtual_channel_vnumber", type);
}

view current_view() {
  const view current = {channel_list.cur_vch, channel_list.cur_vnumber, 0};
  if (!current) {
    return {};
  }
  const auto *known = std::find_if(views.begin(), views.end(),
                                   [&](const view &candidate) { return candidate.entries == current.entries; });
  const std::int16_t capacity = known != views.end() ? known->capacity : std::max<std::int16_t>(*current.count, 0);
  return {current.entries, current.count, capacity};
}

}  // namespace channel
