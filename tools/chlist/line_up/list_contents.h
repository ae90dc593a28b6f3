// What a channel list holds: its views and groups by name, its services in list order, and how the services of another
// list are found in it. Serves the list in memory and lists read beside it.
#pragma once

#include <channel/records.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "channel/identity.h"
#include "channel/store/view.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

// A count that a file or a host may have written outside its array, brought to the nearest one inside.
constexpr std::size_t within(int count, std::size_t capacity) {
  return static_cast<std::size_t>(std::clamp(count, 0, static_cast<int>(capacity)));
}

struct list_view {
  view_name name;
  std::int8_t code = 0;
  std::span<const virtual_channel_st> slots;
  const std::int16_t *field = nullptr;  // where the list counts its entries
  int count = 0;                        // as the list has it, possibly outside the slots

  [[nodiscard]] std::size_t size() const { return within(count, slots.size()); }
  [[nodiscard]] std::span<const virtual_channel_st> entries() const { return slots.first(size()); }
};

// ALL, TV, radio, promotion, USER, and the favourite groups.
std::vector<list_view> views_of(const channel_list_st &list);

// The library's view of the same entries of the list in memory, for changes.
channel::view view_with(const list_view &named);

struct group_table {
  std::string_view name;       // "providers", "genres", "countries" or "favourite groups"
  std::string_view one_group;  // "provider"
  std::span<const group_st> slots;
  const std::int16_t *field = nullptr;  // where the list counts them
  int count = 0;                        // what a load reads in the field, possibly outside the slots

  [[nodiscard]] std::span<const group_st> used() const { return slots.first(within(count, slots.size())); }
};

// Providers, genres, countries and favourite groups.
std::vector<group_table> groups_of(const channel_list_st &list);

// What happens to counts that lie outside their arrays when the list is saved, one text for each.
std::vector<std::string> cut_counts(const channel_list_st &list);

struct hierarchy_counts {
  std::size_t networks = 0;
  std::size_t transponders = 0;
  std::size_t services = 0;
  std::size_t networks_without_services = 0;
  std::size_t transponders_without_services = 0;
};

hierarchy_counts count_hierarchy(channel_list_st &list);

// Every service, in list order.
std::vector<const channel_st *> services_of(channel_list_st &list);

known_service known_as(const channel_st &service);

// An entry that shows a service under a number.
virtual_channel_st entry_of(channel_st &service, int major, int minor = 0);

// An entry and where it stands.
struct placed_entry {
  view_name view;
  std::size_t index = 0;  // in the view
  int number = 0;
  channel::identity id = {};
};

// The entries of the list in memory whose pointers are null; its views are linked before.
std::vector<placed_entry> unresolved_entries();

// A service of another list and the one in memory that stands for it.
struct match {
  const channel_st *other = nullptr;
  const channel_st *filed = nullptr;
  bool is_dropped = false;  // an earlier service of the other list has the same identity
};

// Every service of another list as the library's finder finds it in memory.
std::vector<match> match_services(channel_list_st &other);

std::vector<known_service> dropped_among(const std::vector<match> &matches);

}  // namespace chlist
