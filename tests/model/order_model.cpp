// Sorting and moving in the model. A sort is told by what it allows, a move by the shifts that make it.
#include <strings.h>

#include <set>

#include "model.h"
#include "slots.h"

namespace model_tests {
namespace {

enum : int {
  sort_name = 2,
  sort_transponder = 3,
  sort_fta = 4,
  sort_lock = 5,
  sort_number = 6,
  sort_service_id = 8,
  sort_favourite = 10,
  sort_user_order = 11
};

bool is_view_sort(int type) {
  return type == sort_name || type == sort_transponder || type == sort_number || type == sort_service_id ||
         type == sort_favourite || type == sort_user_order;
}

int low(int value) { return value & 0xFF; }
int high(int value) { return value >> 8 & 0xFF; }

// An entry as its bytes lie in memory, without the pointer.
std::vector<int> bytes_of(const entry &read) {
  const auto frequency = static_cast<int>(read.id.frequency);
  return {low(read.tag),           read.favorite_id,
          low(read.major),         high(read.major),
          low(read.minor),         high(read.minor),
          read.id.net_index,       0,
          low(frequency),          high(frequency),
          low(frequency >> 16),    high(frequency >> 16),
          read.id.polarisation,    0,
          low(read.id.service_id), high(read.id.service_id),
          low(read.id.network_id), high(read.id.network_id),
          low(read.id.ts_id),      high(read.id.ts_id)};
}

const char *visible(const std::string &name) {
  return !name.empty() && name[0] < 0x20 ? name.c_str() + 1 : name.c_str();
}

// What a sort compares of an entry; names are compared apart, since case does not count.
std::vector<int> keys_of(const entry &read, const service *shown, int sort_type) {
  switch (sort_type) {
    case sort_transponder:
      return {static_cast<int>(read.id.frequency), read.id.service_id};
    case sort_number:
      return {read.major, read.minor};
    case sort_service_id:
      return {read.id.service_id};
    case sort_favourite:
      return {read.favorite_id, read.id.service_id};
    case sort_user_order:
      return {shown->user_order_key};
    default:
      return bytes_of(read);
  }
}

}  // namespace

// Entries without a channel equal every other to the sorts that look at the channel: no order is promised then.
std::string model::order_complaint(const view &sorted, int sort_type) {
  const bool needs_channels = sort_type == sort_name || sort_type == sort_user_order;
  for (int i = 0; i + 1 < sorted.count; ++i) {
    const entry &first = sorted.slots[static_cast<std::size_t>(i)];
    const entry &second = sorted.slots[static_cast<std::size_t>(i) + 1];
    const service *a = service_of(first.rch);
    const service *b = service_of(second.rch);
    if (needs_channels && (a == nullptr || b == nullptr)) {
      return {};
    }
    const bool ordered = sort_type == sort_name ? strcasecmp(visible(a->names[0]), visible(b->names[0])) <= 0
                                                : keys_of(first, a, sort_type) <= keys_of(second, b, sort_type);
    if (!ordered) {
      const bool unordered_by_gaps =
          needs_channels && std::ranges::any_of(sorted.slots, [](const entry &each) { return each.rch == 0; });
      return unordered_by_gaps ? "" : "the entries at " + std::to_string(i) + " are in the wrong order";
    }
  }
  return {};
}

std::string model::accept_order(const state &found) {
  std::string complaint;
  for (const sorted_view &each : sorted_) {
    view &mine = views.at(each.code);
    const view &theirs = found.views.at(each.code);
    if (mine.count == theirs.count &&
        std::is_permutation(mine.slots.begin(), mine.slots.begin() + mine.count, theirs.slots.begin())) {
      std::copy_n(theirs.slots.begin(), mine.count, mine.slots.begin());
      complaint += order_complaint(mine, each.sort_type);
    }
  }
  sorted_.clear();
  return complaint;
}

int model::sort_vch_type(int sort_type, int view_type) {
  if (find_view(view_type) != nullptr && view_type != 4 && view_type != 5 && is_view_sort(sort_type)) {
    sorted_.push_back({view_type, sort_type});
  }
  return 0;
}

int model::sort_vindex_ex(int sort_type) {
  if (!is_view_sort(sort_type)) {
    return -1;
  }
  for (const int code : {0, 3, 5, 1, 2}) {
    sorted_.push_back({code, sort_type});
  }
  return 0;
}

int model::sort_vindex_by_number(int view_type) {
  if (find_view(view_type) == nullptr) {
    return -1;
  }
  sorted_.push_back({view_type, sort_by_bytes});
  return 0;
}

int model::sort_vindex() {
  for (const int code : {0, 5, 1, 2}) {
    sorted_.push_back({code, sort_by_bytes});
  }
  return 0;
}

int model::sort_vindex_by_flag(int view_type, int sort_type) {
  const view *source = find_view(view_type);
  if (source == nullptr || (sort_type != sort_fta && sort_type != sort_lock)) {
    return -1;
  }
  const int mask = sort_type == sort_fta ? 0x04 : 0x02;
  const int count = source->count;
  view work = *source;
  view cleared;
  view set;
  for (int i = 0; i < count; ++i) {
    const entry &sorted = slot(work, i);
    if (const service *shown = service_of(sorted.rch); shown != nullptr) {
      push((shown->flag & mask) != 0 ? set : cleared, sorted);
    }
  }
  std::copy(set.slots.begin(), set.slots.end(),
            std::copy(cleared.slots.begin(), cleared.slots.end(), work.slots.begin()));
  view &user = views.at(3);
  kept.zeros_behind_counts = kept.zeros_behind_counts && user.count <= count;
  for (int i = 0; i < count; ++i) {
    slot(user, i) = slot(work, i);
  }
  user.count = count;
  change_vindex_type(3);
  return 0;
}

namespace {

bool are_positions(const view &searched, int destination, const std::vector<int> &sources) {
  const auto is_position = [&searched](int position) { return position >= 0 && position < searched.count; };
  return is_position(destination) && std::ranges::all_of(sources, [&](int source) {
           return is_position(source) && std::ranges::count(sources, source) == 1;
         });
}

// The gap opens in the shortened view: the slot behind the count, where there is one, gets a copy of the last entry.
void move_within(view &moved, int capacity, int destination, int source) {
  const entry taken = slot(moved, source);
  shift(moved, source, source + 1, moved.count - source - 1);
  shift(moved, destination + 1, destination, std::min(moved.count, capacity - 1) - destination);
  slot(moved, destination) = taken;
}

// Entries without a channel go, and the block follows the destination, as far as that has come down. The count stays.
void insert_behind(view &moved, int destination, const std::vector<entry> &block) {
  int left = moved.count;
  for (int i = 0; i < left;) {
    if (slot(moved, i).rch != 0) {
      ++i;
      continue;
    }
    shift(moved, i, i + 1, left - i - 1);
    destination -= i < destination ? 1 : 0;
    --left;
  }
  // A destination that went itself leaves its number behind, as far as the block has room.
  const int length = std::min(static_cast<int>(block.size()), moved.count - left);
  const int first = std::min(destination + 1, moved.count - length);
  shift(moved, first + length, first, left - first);
  for (int i = 0; i < length; ++i) {
    slot(moved, first + i) = block[static_cast<std::size_t>(i)];
  }
}

bool has_gap(const view &searched) {
  return std::any_of(searched.slots.begin(), searched.slots.begin() + searched.count,
                     [](const entry &each) { return each.rch == 0; });
}

}  // namespace

int model::mirrored(const entry &moved) {
  return vtype_get_vch_index_by_ts_info(moved.tag, moved.id.net_index, moved.id.network_id, moved.id.ts_id,
                                        static_cast<int>(moved.id.frequency), moved.id.service_id,
                                        moved.id.polarisation, selected.service_type);
}

int model::move(int destination, const std::vector<int> &sources) {
  view *services = find_view(selected.service_type);
  if (services == nullptr || !are_positions(current(), destination, sources)) {
    return -1;
  }
  const int mirrored_destination = mirrored(slot(current(), destination));
  const bool favourites_involved = selected.current >= 10 || selected.service_type >= 10;
  if (favourites_involved && (sources.size() != 1 || selected.service_type >= 10)) {
    kept.distinct_favourites = false;
  }
  if (sources.size() != 1) {
    move_several(destination, sources, mirrored_destination);
    return 1;
  }
  const entry moved = slot(current(), sources[0]);
  const int mirrored_source = mirrored(moved);
  move_within(current(), capacity_of(selected.current), destination, sources[0]);
  kept.zeros_behind_counts = false;
  if (selected.use_group_list != 0 && services != &current() && mirrored_destination >= 0 && mirrored_source >= 0) {
    const int room = std::max(capacity_of(selected.service_type) - destination - 1, 0);
    shift(*services, mirrored_source, mirrored_source + 1, services->count - mirrored_source - 1);
    shift(*services, destination + 1, destination, std::min(services->count - mirrored_destination, room));
    slot(*services, mirrored_destination) = moved;
  }
  return 1;
}

void model::move_several(int destination, const std::vector<int> &sources, int mirrored_destination) {
  view &services = *find_view(selected.service_type);
  const bool is_current = &services == &current();
  const bool rearranges = selected.use_group_list != 0 && !is_current && mirrored_destination >= 0;
  const bool clears = selected.use_group_list == 0 || is_current || rearranges;
  std::vector<entry> block;
  std::vector<entry> mirrored_block;
  std::set<int> taken;
  for (const int source : sources) {
    block.push_back(slot(current(), source));
    const int mirrored_source = mirrored(block.back());
    // An empty entry finds a slot that was emptied before: it is not taken again.
    if (mirrored_source >= 0 && taken.insert(mirrored_source).second) {
      mirrored_block.push_back(slot(services, mirrored_source));
    }
    slot(current(), source) = {};
    if (mirrored_source >= 0 && clears) {
      slot(services, mirrored_source) = {};
    }
  }
  insert_behind(current(), destination, block);
  if (rearranges) {
    insert_behind(services, mirrored_destination, mirrored_block);
  }
}

int model::move_favourites(int group, int destination, const std::vector<int> &sources) {
  if (group < 0 || group >= 20) {
    return -1;
  }
  view &moved = views.at(10 + group);
  if (!are_positions(moved, destination, sources)) {
    return -1;
  }
  if (sources.size() == 1) {
    move_within(moved, capacity_of(10), destination, sources[0]);
    kept.zeros_behind_counts = false;
    return 0;
  }
  kept.distinct_favourites = kept.distinct_favourites && !has_gap(moved);
  std::vector<entry> block;
  for (const int source : sources) {
    block.push_back(slot(moved, source));
    slot(moved, source) = {};
  }
  insert_behind(moved, destination, block);
  return 0;
}

}  // namespace model_tests
