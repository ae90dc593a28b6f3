// Lookups that edits share.
#include "chlist/edit/edited_services.h"

#include <channel/store.h>
#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "channel/store/group_table.h"
#include "channel/store/hierarchy.h"
#include "chlist/fields/described.h"
#include "chlist/line_up/line_up.h"
#include "chlist/text/broadcast_text.h"
#include "chlist/text/shown.h"

namespace chlist {

std::vector<channel_st *> records_in_order() {
  std::vector<channel_st *> records;
  for (const channel::filed_service &filed : channel::all_services_of(get_channel_list()->network_list)) {
    records.push_back(&filed.service);
  }
  return records;
}

void must_have_frequency(const channel_st &service) {
  if (service.frequency == 0) {
    throw std::runtime_error(
        fmt::format("{} cannot be removed or filed anew: it has no frequency", describe(known_as(service))));
  }
}

std::vector<std::int8_t> views_in_use() {
  std::vector<std::int8_t> codes = saved_views();
  codes.resize(codes.size() - MAX_FAV + static_cast<std::size_t>(channel::favourite_table().size()));
  return codes;
}

std::vector<std::int8_t> saved_views() {
  std::vector<std::int8_t> codes = {VIEW_ALL, VIEW_TV, VIEW_RADIO, VIEW_USER, VIEW_PROMOTION};
  for (int code = VIEW_FAVOURITE; code <= VIEW_FAVOURITE_LAST; ++code) {
    codes.push_back(static_cast<std::int8_t>(code));
  }
  return codes;
}

std::string title_of(std::int8_t view) {
  const virtual_channel_st *entries = channel::find_view(view).entries;
  for (const list_view &each : views_of(*get_channel_list())) {
    if (each.slots.data() == entries) {
      return fmt::format("the {} view", label_of(each.name));
    }
  }
  return fmt::format("view {}", view);
}

int index_of(const channel::view &view, const channel_st &service) {
  const auto entries = view.used();
  const auto found = std::ranges::find(entries, &service, &virtual_channel_st::rch);
  return found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
}

std::string name_for_message(const channel_st &service) { return shown(name_in(service.name[0].text)); }

}  // namespace chlist
