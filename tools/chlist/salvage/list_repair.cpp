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
#include "chlist/line_up/line_up.h"
#include "chlist/line_up/list_contents.h"
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
      ++repair_.blank_entries;
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

// They come by number, and behind them those that no view lists, in the file's order.
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
void repair_all_view(channel::service_index &index, bool is_torn, list_repair &repair) {
  const bool is_empty = channel::find_view(VIEW_ALL).size() == 0;
  if (is_empty || is_torn) {
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

// Views show a service under one number, as a rule: where all but a few do, the few are in doubt.
void note_other_numbers(const list_view &view, const number_table &in_all, list_repair &repair) {
  constexpr std::size_t few = 10;
  std::vector<placed_entry> others;
  std::size_t same = 0;
  for (const virtual_channel_st &entry : view.entries()) {
    const auto found = in_all.find(entry.rch);
    if (found == in_all.end() || found->second == std::pair(entry.major_ch_num, entry.minor_ch_num)) {
      same += found == in_all.end() ? 0 : 1;
      continue;
    }
    const auto position = static_cast<std::size_t>(&entry - view.slots.data());
    others.push_back({view.name, position, entry.major_ch_num, channel::identity_of(entry)});
  }
  if (others.size() * few <= same) {
    repair.other_numbers.insert(repair.other_numbers.end(), others.begin(), others.end());
  }
}

void note_other_numbers(list_repair &repair) {
  number_table in_all;
  for (const virtual_channel_st &entry : channel::find_view(VIEW_ALL)) {
    in_all.try_emplace(entry.rch, entry.major_ch_num, entry.minor_ch_num);
  }
  for (const list_view &view : views_of(channel::channel_list)) {
    note_other_numbers(view, in_all, repair);
  }
}

// Nothing tells whether a group without an entry had some, unless others around it are as they were.
void note_empty_favourites(list_repair &repair) {
  bool has_empty = false;
  bool has_entries = false;
  for (const list_view &view : views_of(channel::channel_list)) {
    if (view.name.is_favourites() && view.name.group < channel::favourite_table().size()) {
      has_empty = has_empty || view.size() == 0;
      has_entries = has_entries || view.size() > 0;
    }
  }
  const bool is_damaged = std::ranges::any_of(
      repair.counts, [](const corrected_count &count) { return count.what.starts_with("the favourites"); });
  repair.has_empty_favourites = has_empty && (!has_entries || is_damaged);
}

}  // namespace

list_repair repair_list_in_memory(bool is_all_view_torn, const list_copies &copies) {
  list_repair repair;
  channel::service_index index;
  const bool has_services = !services_of(channel::channel_list).empty();
  repair.is_of_a_list = false;
  if (has_services) {
    repair_views(index, repair);
    repair_all_view(index, is_all_view_torn, repair);
    note_other_numbers(repair);
  } else {
    keep_views(index, repair);
  }
  repair.groups = repair_groups_in_memory(copies);
  repair.is_of_a_list = repair.is_of_a_list || repair.groups.has_any;
  note_empty_favourites(repair);
  return repair;
}

}  // namespace chlist
