#include "chlist/salvage/group_repair.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <span>

#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "chlist/fields/values.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/position.h"
#include "chlist/salvage/list_arrays.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

struct repaired_table {
  std::string_view name;
  channel::group_table groups;
  group_field field = nullptr;  // where services name the group; null: nothing tells that a group is missing
};

bool is_blank(const group_st &group) {
  const auto *bytes = reinterpret_cast<const unsigned char *>(&group);
  return std::all_of(bytes, bytes + sizeof group, [](unsigned char byte) { return byte == 0; });
}

bool has_clean_text(const group_st &group) {
  const decoded_text decoded = decode_text(encoded_text(group.name));
  return decoded.is_whole && !decoded.has_controls;
}

bool is_readable(const group_st &group) { return has_right_length(group) && has_clean_text(group); }

// Nobody could make anything of such a group.
bool is_lost(const group_st &group) { return is_blank(group) || !has_clean_text(group); }

class table_repair {
 public:
  table_repair(const repaired_table &table, const list_copies &copies, group_repair &repair)
      : table_(table), groups_(table.groups), copies_(copies), repair_(repair) {}

  void run() {
    const std::int16_t counted = *groups_.count;
    *groups_.count = groups_.size();
    take_groups_behind_count();
    const int end = end_of_groups();
    note_records(end);
    find_unknown();
    find_others();
    cut_empty_end();
    if (end != counted) {
      repair_.counts.push_back({fmt::format("the table of {} records", table_.name), counted, end});
    }
    repair_.has_any = repair_.has_any || std::any_of(groups_.begin(), groups_.end(), is_named_group);
  }

 private:
  [[nodiscard]] std::unique_ptr<channel::id_set> ids_of_groups() const {
    auto ids = std::make_unique<channel::id_set>();
    for (const group_st &group : groups_) {
      if (!is_lost(group)) {
        ids->add(group.id);
      }
    }
    return ids;
  }

  void take_groups_behind_count() {
    if (end_of_groups() != *groups_.count) {
      return;
    }
    const auto ids = ids_of_groups();
    while (*groups_.count < groups_.capacity && is_named_group(*groups_.end()) && groups_.end()->id >= 0 &&
           ids->add(groups_.end()->id)) {
      ++*groups_.count;
    }
  }

  // Without the empty records at the end, which were counted by mistake, or are lost.
  [[nodiscard]] int end_of_groups() const {
    int end = groups_.size();
    while (end > 0 && is_blank(groups_.groups[end - 1])) {
      --end;
    }
    return end;
  }

  void cut_empty_end() { *groups_.count = static_cast<std::int16_t>(end_of_groups()); }

  void note_records(int end) {
    const auto ids = std::make_unique<channel::id_set>();
    for (int position = 0; position < end; ++position) {
      const group_st &group = groups_.groups[position];
      if (is_blank(group)) {
        repair_.lost.push_back({table_.name, group_loss::empty, position});
      } else if (!is_readable(group)) {
        repair_.lost.push_back({table_.name, group_loss::unreadable, position, group.id});
      } else if (!ids->add(group.id)) {
        repair_.lost.push_back({table_.name, group_loss::repeated, position, group.id});
      }
    }
  }

  // Services of no group have the id 0 or -1.
  [[nodiscard]] std::map<std::int16_t, std::vector<channel::identity>> services_of_unknown() const {
    const auto ids = ids_of_groups();
    std::map<std::int16_t, std::vector<channel::identity>> unknown;
    for (const channel_st *service : services_of(channel::channel_list)) {
      if (const std::int16_t id = service->*table_.field; id > 0 && !ids->holds(id)) {
        unknown[id].push_back(channel::identity_of(*service));
      }
    }
    return unknown;
  }

  void find_unknown() {
    if (table_.field == nullptr) {
      return;
    }
    for (const auto &[id, services] : services_of_unknown()) {
      repair_.lost.push_back({table_.name, group_loss::unknown, -1, id, services.size()});
      for (const list_copy &copy : copies_) {
        if (const group_st *group = copy.group_of(services, table_.field, groups_); group != nullptr) {
          restore(*group, id, copy);
          break;
        }
      }
    }
  }

  void restore(const group_st &group, std::int16_t id, const list_copy &copy) {
    group_st *slot = std::find_if(groups_.begin(), groups_.end(), is_lost);
    if (slot == groups_.end()) {
      if (groups_.size() == groups_.capacity) {
        return;
      }
      ++*groups_.count;
    }
    *slot = group;
    slot->id = id;
    repair_.found.push_back({std::string(table_.name), id, name_in(group.name), copy.name()});
  }

  // Of groups that no service names, those that a copy has in the same place.
  void find_others() {
    const auto ids = ids_of_groups();
    for (group_st &group : groups_) {
      const auto position = static_cast<std::size_t>(&group - groups_.begin());
      for (const list_copy &copy : copies_) {
        const auto theirs = copy.groups_like(groups_);
        if (is_lost(group) && position < theirs.size() && !is_lost(theirs[position]) && ids->add(theirs[position].id)) {
          group = theirs[position];
          repair_.found.push_back({std::string(table_.name), group.id, name_in(group.name), copy.name()});
        }
      }
    }
  }

  repaired_table table_;
  channel::group_table groups_;
  const list_copies &copies_;
  group_repair &repair_;
};

void drop_lost_groups(const channel::group_table &table) {
  group_st *kept = std::remove_if(table.begin(), table.end(), is_lost);
  std::memset(static_cast<void *>(kept), 0, static_cast<std::size_t>(table.end() - kept) * sizeof *kept);
  *table.count = static_cast<std::int16_t>(kept - table.begin());
}

void name_lost_favourites(group_repair &repair) {
  const channel::group_table table = channel::favourite_table();
  for (const list_view &view : views_of(channel::channel_list)) {
    const bool is_there = view.name.is_favourites() && (view.size() > 0 || view.name.group < table.size());
    if (is_there && is_lost(table.groups[view.name.group])) {
      group_st &group = table.groups[view.name.group];
      group = {};
      const std::string name = fmt::format("Favourites {}", position_of(view.name.group));
      group.id = table.free_id();
      group.name_len = static_cast<std::int16_t>(name.copy(group.name, sizeof group.name));
      *table.count = std::max(*table.count, static_cast<std::int16_t>(view.name.group + 1));
      ++repair.named_favourites;
    }
  }
}

}  // namespace

group_repair repair_groups_in_memory(const list_copies &copies) {
  const repaired_table tables[] = {{"provider", channel::provider_table(), &channel_st::provider_id},
                                   {"genre", channel::genre_table(), &channel_st::genre_id},
                                   {"country", channel::country_table()},
                                   {"favourite group", channel::favourite_table()}};
  group_repair repair;
  for (const repaired_table &table : tables) {
    table_repair(table, copies, repair).run();
    if (table.name != "favourite group") {
      drop_lost_groups(table.groups);
    }
  }
  name_lost_favourites(repair);
  return repair;
}

}  // namespace chlist
