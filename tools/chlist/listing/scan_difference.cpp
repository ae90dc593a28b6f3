// Services that are in doubt are counted as gone and added, too.
#include "chlist/listing/scan_difference.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "chlist/fields/described.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

std::vector<known_service> services_at(const line_up &list, const std::vector<std::size_t> &places) {
  std::vector<known_service> services;
  std::ranges::transform(places, std::back_inserter(services),
                         [&list](std::size_t place) { return known_as(list.services[place]); });
  return services;
}

template <class Change>
void print_changes(std::string_view title, const std::vector<Change> &changes, std::string (*text)(const Change &)) {
  if (!changes.empty()) {
    fmt::print("{}:\n", title);
  }
  for (const Change &change : changes) {
    fmt::print("  {}\n", text(change));
  }
}

}  // namespace

bool scan_difference::is_empty() const {
  return gone.empty() && added.empty() && changes.moved.empty() && changes.renamed.empty();
}

scan_difference difference_of_scans(const line_up &before, const line_up &after) {
  const rescan again = find_again(before, after);
  return {services_at(after, again.added), services_at(before, again.gone), report_of(again, before, after)};
}

void put_scan_difference(json &document, const scan_difference &found) {
  document["added"] = array_of<known_service>(found.added, json_of);
  document["removed"] = array_of<known_service>(found.gone, json_of);
  document["moved"] = array_of<service_move>(found.changes.moved, json_of);
  document["renamed"] = array_of<service_rename>(found.changes.renamed, json_of);
  document["doubtful"] = array_of<service_doubt>(found.changes.doubtful, json_of);
}

void print_scan_difference(const scan_difference &found) {
  const auto &[moved, renamed, doubtful] = found.changes;
  fmt::print("{} added, {} gone, {} moved, {} renamed, {} in doubt\n", counted(found.added.size(), "service"),
             found.gone.size(), moved.size(), renamed.size(), doubtful.size());
  print_changes<known_service>("Added", found.added, describe);
  print_changes<known_service>("Gone", found.gone, describe);
  print_changes<service_move>("Moved", moved, text_of);
  print_changes<service_rename>("Renamed", renamed, text_of);
  print_changes<service_doubt>("In doubt, and counted as gone and added", doubtful, text_of);
}

}  // namespace chlist
