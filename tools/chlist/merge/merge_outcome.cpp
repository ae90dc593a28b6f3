// The library merges; here the lists before and after are compared. A surviving service keeps its record where it is,
// so addresses tell what is new and what is gone.
#include "chlist/merge/merge_outcome.h"

#include <channel/views.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <set>
#include <unordered_map>
#include <utility>

// The exported merge reads a fixed path, where a receiver's channel search places its result, and does not tell a list
// that it cannot read from one that changes nothing. The operation behind it takes a list, so the tool is linked with
// the static library, where internal operations can be reached.
#include "channel/persist/detached_list.h"
#include "channel/persist/merge.h"
#include "channel/store/hierarchy.h"
#include "chlist/files/faithful_load.h"

namespace chlist {
namespace {

using channel::persist::current_format;
using channel::persist::detached_list;

// Never a pointer: the record may be gone.
using address = std::uintptr_t;
address address_of(const channel_st *service) { return reinterpret_cast<address>(service); }

auto services_in_memory() { return channel::all_services_of(get_channel_list()->network_list); }

struct snapshot {
  std::vector<address> order;
  std::unordered_map<address, changed_service> services;
  std::vector<list_view> views;  // of their entries only the sizes outlive the next change

  [[nodiscard]] bool has(address service) const { return services.contains(service); }
};

void add_entries(snapshot &taken, const list_view &view) {
  const auto entries = view.entries();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (const auto found = taken.services.find(address_of(entries[i].rch)); found != taken.services.end()) {
      found->second.entries.push_back({view.name, i, entries[i].major_ch_num, channel::identity_of(entries[i])});
    }
  }
}

snapshot take_snapshot() {
  snapshot taken;
  for (const channel_st *service : services_of(*get_channel_list())) {
    taken.order.push_back(address_of(service));
    taken.services[address_of(service)] = {known_as(*service), service->service_type, service->source_type, {}};
  }
  taken.views = views_of(*get_channel_list());
  for (const list_view &view : taken.views) {
    add_entries(taken, view);
  }
  return taken;
}

// The services of one list that another one lacks.
std::vector<changed_service> difference(const snapshot &of, const snapshot &other) {
  std::vector<changed_service> only_here;
  for (const address service : of.order) {
    if (!other.has(service)) {
      only_here.push_back(of.services.at(service));
    }
  }
  return only_here;
}

std::size_t entries_in(const changed_service &service, std::string_view view) {
  return static_cast<std::size_t>(
      std::ranges::count(service.entries, view, [](const placed_entry &entry) { return entry.view.kind; }));
}

// The library chooses the promotion view's services by their id, those of the others by their types.
std::pair<int, int> kind_for(std::string_view view, const changed_service &service) {
  return view == "promotion" ? std::pair{int{service.known.id.service_id}, 0}
                             : std::pair{service.service_type, service.source_type};
}

// The kinds of services that are seen in a view, before or after.
std::set<std::pair<int, int>> kinds_in(std::string_view view, const snapshot &before, const snapshot &after) {
  std::set<std::pair<int, int>> kinds;
  for (const snapshot *taken : {&before, &after}) {
    for (const auto &[where, service] : taken->services) {
      if (entries_in(service, view) > 0) {
        kinds.insert(kind_for(view, service));
      }
    }
  }
  return kinds;
}

// The views to which a merge appends.
bool is_appended_to(const view_name &view) { return !view.is_favourites() && view.kind != "USER"; }

// A view that was full when the last service was added, and of which an added service is missing whose kind it lists.
std::vector<full_view> find_full(const snapshot &before, const snapshot &after,
                                 const std::vector<changed_service> &added) {
  std::vector<full_view> full;
  for (const list_view &view : before.views) {
    std::size_t reached = view.size();
    for (const changed_service &service : added) {
      reached += entries_in(service, view.name.kind);
    }
    if (!is_appended_to(view.name) || reached < view.slots.size()) {
      continue;
    }
    const auto kinds = kinds_in(view.name.kind, before, after);
    const auto left_out = std::ranges::count_if(added, [&](const changed_service &service) {
      return entries_in(service, view.name.kind) == 0 && kinds.contains(kind_for(view.name.kind, service));
    });
    if (left_out > 0) {
      full.push_back({view.name, view.slots.size(), static_cast<std::size_t>(left_out)});
    }
  }
  return full;
}

detached_list<current_format> read_scan(const channel_file &scan) {
  detached_list<current_format> read = channel::persist::read_detached<current_format>(scan.bytes());
  if (read == nullptr) {
    scan.refuse_as_short();
  }
  return read;
}

// A merge marks the services that it finds in their countries, from 0 on, and selects views.
void merge_keeping_what_stays(channel_list_st &merged) {
  const kept_view_settings settings;
  std::unordered_map<address, std::int16_t> countries;
  for (const channel::filed_service &filed : services_in_memory()) {
    countries[address_of(&filed.service)] = std::exchange(filed.service.country_id, std::int16_t{0});
  }
  channel::persist::merge_list(merged);
  for (const channel::filed_service &filed : services_in_memory()) {
    const auto known = countries.find(address_of(&filed.service));
    filed.service.country_id = known != countries.end() ? known->second : std::int16_t{0};
  }
}

}  // namespace

merge_outcome merge_in_memory(const channel_file &list, const channel_file &scan) {
  list.must_be_current();
  scan.must_be_current();
  merge_outcome outcome;
  outcome.lost = load_faithfully(list);
  const detached_list<current_format> merged = read_scan(scan);
  const snapshot before = take_snapshot();
  outcome.dropped = unresolved_entries();
  merge_keeping_what_stays(*merged);
  const snapshot after = take_snapshot();
  outcome.added = difference(after, before);
  outcome.deleted = difference(before, after);
  outcome.kept = after.order.size() - outcome.added.size();
  outcome.duplicates = dropped_among(match_services(*merged));
  outcome.full = find_full(before, after, outcome.added);
  return outcome;
}

}  // namespace chlist
