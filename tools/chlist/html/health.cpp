// Findings that the list's contents show by themselves.
#include "chlist/html/health.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <map>
#include <unordered_set>
#include <utility>

#include "chlist/list_contents.h"
#include "chlist/report.h"

namespace chlist {
namespace {

using findings = std::vector<health_finding>;

void add_unresolved_entries(findings &found) {
  for (const placed_entry &entry : unresolved_entries()) {
    found.push_back({"error", "entries without a service", describe(entry)});
  }
}

void add_unlisted_services(channel_list_st &list, findings &found) {
  std::unordered_set<const channel_st *> listed;
  for (const list_view &view : views_of(list)) {
    for (const virtual_channel_st &entry : view.entries()) {
      listed.insert(entry.rch);
    }
  }
  for (const channel_st *service : services_of(list)) {
    if (!listed.contains(service)) {
      found.push_back({"warning", "services in no view", describe(known_as(*service))});
    }
  }
}

void add_duplicate_numbers(const channel_list_st &list, findings &found) {
  for (const list_view &view : views_of(list)) {
    std::map<std::pair<int, int>, std::size_t> uses;
    for (const virtual_channel_st &entry : view.entries()) {
      ++uses[{entry.major_ch_num, entry.minor_ch_num}];
    }
    for (const auto &[number, count] : uses) {
      if (count > 1) {
        found.push_back({"warning", "numbers that occur twice",
                         fmt::format("the {} view: number {}-{}, {} times", label_of(view.name), number.first,
                                     number.second, count)});
      }
    }
  }
}

}  // namespace

findings health_of_list() {
  channel_list_st &list = *get_channel_list();
  findings found;
  add_unresolved_entries(found);
  add_unlisted_services(list, found);
  add_duplicate_numbers(list, found);
  return found;
}

}  // namespace chlist
