// The library's views and group tables, repaired in place.
#include "chlist/salvage/list_repair.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "channel/persist/image.h"
#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "channel/store/service_index.h"
#include "channel/store/view.h"
#include "chlist/fields/values.h"
#include "chlist/report.h"
#include "chlist/salvage/list_arrays.h"
#include "chlist/salvage/witnesses.h"

namespace chlist {
namespace {

bool is_zero(const void *record, std::size_t size) {
  const auto *bytes = static_cast<const unsigned char *>(record);
  return std::all_of(bytes, bytes + size, [](unsigned char byte) { return byte == 0; });
}

bool is_unused(const virtual_channel_st &entry) { return is_zero(&entry, channel::entry_bytes); }

using service_set = std::unordered_set<const channel_st *>;

class view_repair {
 public:
  view_repair(const channel::view &view, const view_name &name, channel::service_index &index, list_repair &repair)
      : view_(view), name_(name), index_(index), repair_(repair), counted_(*view.count) {}

  void run() {
    cut_unused_end();
    take_entries_behind_count();
    note_count();
    drop_unresolved();
  }

  // Nothing resolves: what says something stays, counted or not. True when it is more than chance.
  bool run_without_services() {
    cut_unused_end();
    while (counted_ == 0 && !view_.is_full() && is_telling(*view_.end())) {
      ++*view_.count;
    }
    note_count();
    view_.remove_if([](const virtual_channel_st &entry) { return !is_telling(entry); });
    repair_.entries_without_service += static_cast<std::size_t>(view_.size());
    return is_plausible();
  }

 private:
  static bool is_telling(const virtual_channel_st &entry) { return !says_nothing(channel::identity_of(entry)); }

  // Any bytes name a service. Those of a view name more than one of a network, or end where the view's count says.
  [[nodiscard]] bool is_plausible() const {
    const bool ends_by_count =
        *view_.count > 0 && *view_.count == counted_ && !view_.is_full() && is_unused(*view_.end());
    return ends_by_count || std::adjacent_find(view_.begin(), view_.end(), [](const auto &a, const auto &b) {
                              return a.net_index == b.net_index && a.network_id == b.network_id;
                            }) != view_.end();
  }

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
  }

  void note_count() {
    if (*view_.count != counted_) {
      repair_.counts.push_back({fmt::format("the {} view", label_of(name_)), counted_, *view_.count});
    }
  }

  void drop_unresolved() {
    for (virtual_channel_st &entry : view_.used()) {
      entry.rch = is_unused(entry) ? nullptr : index_.resolve(entry);
    }
    std::size_t index = 0;
    view_.remove_if([&](const virtual_channel_st &entry) {
      if (is_unused(entry)) {
        ++repair_.blank_entries;
      } else if (entry.rch == nullptr) {
        repair_.lost_entries.push_back({name_, index, entry.major_ch_num, channel::identity_of(entry)});
      }
      ++index;
      return entry.rch == nullptr;
    });
  }

  const channel::view view_;
  const view_name &name_;
  channel::service_index &index_;
  list_repair &repair_;
  std::int16_t counted_;
};

bool is_blank(const group_st &group) { return is_zero(&group, sizeof group); }

void repair_groups(const channel::group_table &table, std::string_view name, list_repair &repair) {
  const std::int16_t before = *table.count;
  std::int16_t count = std::clamp<std::int16_t>(before, 0, table.capacity);
  while (count > 0 && is_blank(table.groups[count - 1])) {
    --count;
  }
  channel::id_set ids;
  std::for_each(table.groups, table.groups + count, [&ids](const group_st &group) { ids.add(group.id); });
  while (count < table.capacity && is_named_group(table.groups[count]) && table.groups[count].id >= 0 &&
         ids.add(table.groups[count].id)) {
    ++count;
  }
  if (count != before) {
    *table.count = count;
    repair.counts.push_back({fmt::format("the table of {} records", name), before, count});
  }
}

void drop_blank_groups(const channel::group_table &table) {
  group_st *kept = std::remove_if(table.begin(), table.end(), is_blank);
  std::memset(static_cast<void *>(kept), 0, static_cast<std::size_t>(table.end() - kept) * sizeof *kept);
  *table.count = static_cast<std::int16_t>(kept - table.begin());
}

// As far as there are entries.
void name_blank_favourites(list_repair &repair) {
  const channel::group_table table = channel::favourite_table();
  for (const list_view &view : views_of(channel::channel_list)) {
    if (view.name.is_favourites() && view.size() > 0 && is_blank(table.groups[view.name.group])) {
      group_st &group = table.groups[view.name.group];
      const std::string name = fmt::format("Favourites {}", position_of(view.name.group));
      group.id = table.free_id();
      group.name_len = static_cast<std::int16_t>(name.copy(group.name, sizeof group.name));
      *table.count = std::max(*table.count, static_cast<std::int16_t>(view.name.group + 1));
      ++repair.named_groups;
    }
  }
}

// The numbers under which views list services, those of ALL being lost.
using number_table = std::unordered_map<const channel_st *, std::pair<std::int16_t, std::int16_t>>;

number_table numbers_in_views() {
  number_table numbers;
  for (const list_view &view : views_of(channel::channel_list)) {
    for (const virtual_channel_st &entry : view.entries()) {
      numbers.try_emplace(entry.rch, entry.major_ch_num, entry.minor_ch_num);
    }
  }
  return numbers;
}

// By number; behind them those that no view lists, in the file's order.
std::vector<channel_st *> services_by_number(channel::service_index &index, const number_table &numbers) {
  std::vector<channel_st *> services;
  for (const channel_st *each : services_of(channel::channel_list)) {
    if (channel_st *service = index.resolve(channel::identity_of(*each)); service == each) {
      services.push_back(service);
    }
  }
  const auto middle = std::stable_partition(services.begin(), services.end(),
                                            [&](const channel_st *each) { return numbers.contains(each); });
  std::stable_sort(services.begin(), middle,
                   [&](const channel_st *a, const channel_st *b) { return numbers.at(a) < numbers.at(b); });
  return services;
}

void create_if_empty(std::int8_t type) {
  if (channel::find_view(type).size() == 0) {
    create_vindex_type(type, -1);
  }
}

// With the services that it lacks.
void fill_all_view(channel::service_index &index, const number_table &numbers, list_repair &repair) {
  const channel::view all = channel::find_view(VIEW_ALL);
  service_set present;
  std::ranges::transform(all, std::inserter(present, present.end()), &virtual_channel_st::rch);
  int last = 0;
  for (channel_st *service : services_by_number(index, numbers)) {
    const auto known = numbers.find(service);
    last = known != numbers.end() ? known->second.first : last + 1;
    if (!present.contains(service)) {
      repair.all = numbers.empty() ? all_view::numbered_anew : all_view::filled;
      static_cast<void>(all.append(entry_of(*service, last, known != numbers.end() ? known->second.second : 0)));
    }
  }
}

// Without ALL a receiver shows nothing, and makes the TV and radio views of it.
void repair_all_view(channel::service_index &index, const torn_parts &torn, list_repair &repair) {
  const bool is_empty = channel::find_view(VIEW_ALL).size() == 0;
  if (is_empty || torn.all_view) {
    fill_all_view(index, numbers_in_views(), repair);
  }
  if (is_empty) {
    create_if_empty(VIEW_TV);
    create_if_empty(VIEW_RADIO);
  }
}

void repair_views(channel::service_index &index, list_repair &repair) {
  for (const list_view &each : views_of(channel::channel_list)) {
    view_repair(view_with(each), each.name, index, repair).run();
  }
}

void keep_views(channel::service_index &index, list_repair &repair) {
  for (const list_view &each : views_of(channel::channel_list)) {
    const bool is_plausible = view_repair(view_with(each), each.name, index, repair).run_without_services();
    repair.is_of_a_list = repair.is_of_a_list || is_plausible;
  }
}

bool has_named_group(const channel::group_table &table) {
  return std::any_of(table.begin(), table.end(), is_named_group);
}

void repair_all_groups(bool is_torn, list_repair &repair) {
  const std::pair<std::string_view, channel::group_table> tables[] = {{"provider", channel::provider_table()},
                                                                      {"genre", channel::genre_table()},
                                                                      {"country", channel::country_table()},
                                                                      {"favourite group", channel::favourite_table()}};
  repair.is_of_a_list = false;
  for (const auto &[name, table] : tables) {
    repair_groups(table, name, repair);
    if (is_torn && name != "favourite group") {
      drop_blank_groups(table);
    }
    repair.is_of_a_list = repair.is_of_a_list || has_named_group(table);
  }
}

}  // namespace

list_repair repair_list_in_memory(const torn_parts &torn) {
  list_repair repair;
  repair_all_groups(torn.list, repair);
  channel::service_index index;
  if (services_of(channel::channel_list).empty()) {
    keep_views(index, repair);
  } else {
    repair_views(index, repair);
    repair_all_view(index, torn, repair);
  }
  if (torn.list) {
    name_blank_favourites(repair);
  }
  return repair;
}

}  // namespace chlist
