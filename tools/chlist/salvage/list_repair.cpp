// The library's views and group tables, repaired in place.
#include "chlist/salvage/list_repair.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <unordered_set>

#include "channel/persist/image.h"
#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "channel/store/links.h"
#include "channel/store/service_index.h"
#include "channel/store/view.h"
#include "chlist/report.h"

namespace chlist {
namespace {

bool is_zero(const void *record, std::size_t size) {
  const auto *bytes = static_cast<const unsigned char *>(record);
  return std::all_of(bytes, bytes + size, [](unsigned char byte) { return byte == 0; });
}

bool is_unused(const virtual_channel_st &entry) { return is_zero(&entry, channel::persist::entry_bytes); }

using service_set = std::unordered_set<const channel_st *>;

class view_repair {
 public:
  view_repair(const channel::view &view, const view_name &name, channel::service_index &index, list_repair &repair)
      : view_(view), name_(name), index_(index), repair_(repair), counted_(*view.count) {}

  void run(service_set &listed) {
    cut_unused_end();
    take_entries_behind_count();
    drop_unresolved();
    for (const virtual_channel_st &entry : view_) {
      listed.insert(entry.rch);
    }
  }

 private:
  // Slots that hold nothing were counted by mistake, or had an entry of which nothing is left.
  void cut_unused_end() {
    while (*view_.count > 0 && is_unused(*(view_.end() - 1))) {
      --*view_.count;
    }
  }

  // Every operation clears the slots that it frees: an entry behind the count, of a service that the view lacks, is one
  // that was miscounted.
  void take_entries_behind_count() {
    service_set present;
    for (const virtual_channel_st &entry : view_) {
      present.insert(index_.resolve(entry));
    }
    while (!view_.is_full()) {
      const channel_st *service = is_unused(*view_.end()) ? nullptr : index_.resolve(*view_.end());
      if (service == nullptr || !present.insert(service).second) {
        break;
      }
      ++*view_.count;
    }
    if (*view_.count != counted_) {
      repair_.counts.push_back({fmt::format("the {} view", label_of(name_)), counted_, *view_.count});
    }
  }

  void drop_unresolved() {
    for (virtual_channel_st &entry : view_.used()) {
      entry.rch = index_.resolve(entry);
    }
    std::size_t position = 0;
    view_.remove_if([&](const virtual_channel_st &entry) {
      if (entry.rch == nullptr) {
        repair_.lost_entries.push_back({name_, position, entry.major_ch_num, channel::identity_of(entry)});
      }
      ++position;
      return entry.rch == nullptr;
    });
  }

  const channel::view view_;
  const view_name &name_;
  channel::service_index &index_;
  list_repair &repair_;
  std::int16_t counted_;
};

bool is_named(const group_st &group) {
  const std::size_t length = strnlen(group.name, sizeof group.name);
  return length > 0 && group.name_len == static_cast<std::int16_t>(length) && group.id >= 0;
}

void repair_groups(const channel::group_table &table, std::string_view name, list_repair &repair) {
  const std::int16_t before = *table.count;
  std::int16_t count = std::clamp<std::int16_t>(before, 0, table.capacity);
  while (count > 0 && is_zero(&table.groups[count - 1], sizeof(group_st))) {
    --count;
  }
  channel::id_set ids;
  std::for_each(table.groups, table.groups + count, [&ids](const group_st &group) { ids.add(group.id); });
  while (count < table.capacity && is_named(table.groups[count]) && ids.add(table.groups[count].id)) {
    ++count;
  }
  if (count != before) {
    *table.count = count;
    repair.counts.push_back({fmt::format("the table of {} records", name), before, count});
  }
}

// A receiver shows nothing that is in no view.
void list_every_service(channel::service_index &index) {
  const channel::view all = channel::find_view(VIEW_ALL);
  for (const channel_st *each : services_of(channel::channel_list)) {
    if (channel_st *service = index.resolve(channel::identity_of(*each)); service == each) {
      static_cast<void>(all.append(entry_of(*service, all.size() + 1)));
    }
  }
  create_vindex_type(VIEW_TV, -1);
  create_vindex_type(VIEW_RADIO, -1);
}

}  // namespace

list_repair repair_list_in_memory() {
  list_repair repair;
  repair_groups(channel::provider_table(), "provider", repair);
  repair_groups(channel::genre_table(), "genre", repair);
  repair_groups(channel::country_table(), "country", repair);
  repair_groups(channel::favourite_table(), "favourite group", repair);
  channel::service_index index;
  service_set listed;
  const std::vector<list_view> views = views_of(channel::channel_list);
  for (int code = VIEW_ALL; code <= VIEW_FAVOURITE_LAST; ++code) {
    const channel::view view = channel::find_view(code);
    if (view && code != VIEW_WORK) {
      const auto named =
          std::ranges::find(views, view.entries, [](const list_view &each) { return each.slots.data(); });
      view_repair(view, named->name, index, repair).run(listed);
    }
  }
  if (listed.empty()) {
    list_every_service(index);
    repair.is_numbered_anew = true;
    return repair;
  }
  for (const channel_st *service : services_of(channel::channel_list)) {
    repair.unlisted_services += listed.contains(service) ? 0 : 1;
  }
  return repair;
}

}  // namespace chlist
