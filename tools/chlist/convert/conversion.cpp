// The library converts; here the converted list is compared with what the file held.
#include "chlist/convert/conversion.h"

#include <channel/store.h>
#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <utility>

// The library takes over the list that it converts. To tell what was not carried, the tool reads the file once more.
#include "channel/persist/repair.h"
#include "channel/store/links.h"

namespace chlist {
namespace {

using channel::persist::current_format;
using channel::persist::detached_list;
using channel::persist::read_detached;
using channel::persist::version_8_format;

constexpr int last_version_without_order_keys = 8;

std::size_t count_of(bool is_lost) { return is_lost ? 1 : 0; }

// Entries that lost something, in all views. Rule: what of an old entry is not in the new one.
template <class Rule>
std::size_t count_entries(const channel_list_st &old, const Rule &is_lost) {
  const std::vector<list_view> old_views = views_of(old);
  const std::vector<list_view> views = views_of(*get_channel_list());
  std::size_t lost = 0;
  for (std::size_t v = 0; v < views.size(); ++v) {
    const auto entries = views[v].entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
      lost += count_of(is_lost(old_views[v].slots[i], entries[i]));
    }
  }
  return lost;
}

template <class Rule>
std::size_t count_services(const std::vector<match> &matches, const Rule &is_lost) {
  return static_cast<std::size_t>(std::ranges::count_if(
      matches, [&](const match &each) { return !each.is_dropped && is_lost(*each.other, *each.filed); }));
}

// Bytes without a meaning of their own are not looked at.
std::vector<loss> find_losses(channel_list_st &old, int version, const std::vector<match> &matches) {
  const channel_list_st &list = *get_channel_list();
  const hierarchy_counts counts = count_hierarchy(old);
  const bool has_order_keys = version > last_version_without_order_keys;
  using entry = const virtual_channel_st &;
  using service = const channel_st &;
  return {
      {"networks_without_services", "networks without services", counts.networks_without_services},
      {"transponders_without_services", "transponders without services", counts.transponders_without_services},
      {"duplicate_services", "duplicate services", dropped_among(matches).size()},
      {"use_tuner", "tuner setting", count_of(old.use_tuner != list.use_tuner)},
      {"ch_type", "channel type setting", count_of(old.ch_type != list.ch_type)},
      {"bouquet_id", "bouquet id", count_of(old.bouquet_id != list.bouquet_id)},
      {"favourite_positions", "favourite positions",
       count_entries(old, [](entry was, entry is) { return was.favorite_id != is.favorite_id; })},
      {"entry_tags", "tags of entries",
       count_entries(old, [](entry was, entry is) { return was.vch_tag != is.vch_tag; })},
      {"provider_ids", "provider ids of services (now their genre ids)",
       count_services(matches, [](service was, service is) { return was.provider_id != is.provider_id; })},
      {"user_order_keys", "user order keys of services",
       has_order_keys
           ? count_services(matches, [](service was, service is) { return was.user_order_key != is.user_order_key; })
           : 0},
  };
}

std::vector<cut_array> find_cut(const channel_list_st &old) {
  const channel_list_st &list = *get_channel_list();
  std::vector<cut_array> cut;
  const auto note_cut = [&cut](std::string_view name, int group, int was, int is) {
    if (was != is) {
      cut.push_back({name, group, was, static_cast<std::size_t>(is)});
    }
  };
  const std::vector<list_view> views = views_of(list);
  const std::vector<list_view> old_views = views_of(old);
  for (std::size_t i = 0; i < views.size(); ++i) {
    note_cut(views[i].name.kind, views[i].name.group, old_views[i].count, views[i].count);
  }
  const std::vector<group_table> groups = groups_of(list);
  const std::vector<group_table> old_groups = groups_of(old);
  for (std::size_t i = 0; i < groups.size(); ++i) {
    note_cut(groups[i].name, -1, old_groups[i].count, groups[i].count);
  }
  return cut;
}

conversion compare(channel_list_st &old, int version) {
  const std::vector<match> matches = match_services(old);
  conversion result;
  result.version = version;
  result.carried = count_hierarchy(*get_channel_list());
  result.losses = find_losses(old, version, matches);
  result.duplicates = dropped_among(matches);
  result.unresolved = unresolved_entries();
  result.cut = find_cut(old);
  return result;
}

// A conversion takes the records of a list over, and leaves the views without pointers.
template <class Format>
conversion convert(const channel_file &input) {
  detached_list<Format> taken = read_detached<Format>(input.bytes());
  const detached_list<Format> old = read_detached<Format>(input.bytes());
  if (old == nullptr) {
    input.refuse_as_short();
  }
  channel::persist::convert_list(std::move(taken), input.version());
  channel::link_rch_info();
  return compare(channel::persist::base_of(*old), input.version());
}

}  // namespace

conversion convert_to_memory(const channel_file &input) {
  reset_channel_list();
  switch (input.version()) {
    case CHANNEL_LIST_VERSION:
      input.refuse(fmt::format("is of version {} already: there is nothing to convert", +CHANNEL_LIST_VERSION));
    case 9:
      return convert<current_format>(input);
    case 8:
    case 7:
      return convert<version_8_format>(input);
    default:
      input.refuse_version(": only 7, 8 and 9 can be converted");
  }
}

}  // namespace chlist
