// A service that stays what it was has nothing to tell.
#include "chlist/compare/rescan_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "chlist/fields/described.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

service_doubt doubt_of(const doubtful_service &each, const line_up &before, const line_up &after) {
  service_doubt doubt = {known_as(before.services[each.before]), {}, each.count};
  std::ranges::transform(each.candidates, std::back_inserter(doubt.candidates),
                         [&after](std::size_t candidate) { return known_as(after.services[candidate]); });
  return doubt;
}

}  // namespace

rescan_report report_of(const rescan &again, const line_up &before, const line_up &after) {
  rescan_report report;
  for (const kept_service &each : again.found) {
    const known_service was = known_as(before.services[each.before]);
    const known_service is = known_as(after.services[each.after]);
    if (each.by != found_by::identity) {
      report.moved.push_back({was, is, each.by});
    }
    if (!is.name.empty() && is.name != was.name) {
      report.renamed.push_back({was, is});
    }
  }
  for (const doubtful_service &each : again.doubtful) {
    report.doubtful.push_back(doubt_of(each, before, after));
  }
  return report;
}

std::string text_of(const service_move &move) {
  return fmt::format("{} -> {}, found by {}", describe(move.before), describe(move.after), text_of(move.by));
}

std::string text_of(const service_rename &rename) {
  return fmt::format("{} -> {}", describe(rename.before), shown(rename.after.name));
}

std::string text_of(const service_doubt &doubt) {
  const std::size_t others = doubt.count - 1;
  return fmt::format("{} may have become {}{}", describe(doubt.before), describe(doubt.candidates.front()),
                     others == 0 ? "" : fmt::format(", or one of {}", counted(others, "other")));
}

json json_of(const service_move &move) {
  json object = json_of(move.after);
  object["before"] = json_of(move.before);
  object["found_by"] = text_of(move.by);
  return object;
}

json json_of(const service_rename &rename) {
  json object = json_of(rename.before);
  object["new_name"] = rename.after.name;
  return object;
}

json json_of(const service_doubt &doubt) {
  json object = json_of(doubt.before);
  object["candidates"] = array_of<known_service>(doubt.candidates, json_of);
  object["count"] = doubt.count;
  return object;
}

}  // namespace chlist
