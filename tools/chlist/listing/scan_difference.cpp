// Services that stay as they are are not texts.
#include "chlist/listing/scan_difference.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "chlist/report.h"

namespace chlist {
namespace {

bool is_renamed(const scan_difference &found, const kept_service &each) {
  const std::string &is = found.after.services[each.after].name;
  return !is.empty() && is != found.before.services[each.before].name;
}

bool is_moved(const kept_service &each) { return each.by != found_by::identity; }

json services_at(const line_up &list, const std::vector<std::size_t> &places) {
  json array = json::array();
  for (const std::size_t place : places) {
    array.push_back(json_of(known_as(list.services[place])));
  }
  return array;
}

json json_of_move(const scan_difference &found, const kept_service &each) {
  json object = json_of(known_as(found.after.services[each.after]));
  object["before"] = json_of(known_as(found.before.services[each.before]));
  object["found_by"] = text_of(each.by);
  return object;
}

json json_of_rename(const scan_difference &found, const kept_service &each) {
  json object = json_of(known_as(found.before.services[each.before]));
  object["new_name"] = found.after.services[each.after].name;
  return object;
}

json json_of_doubt(const scan_difference &found, const doubtful_service &each) {
  json object = json_of(known_as(found.before.services[each.before]));
  object["candidates"] = services_at(found.after, each.candidates);
  object["count"] = each.count;
  return object;
}

void print_all(std::string_view title, const std::vector<std::string> &lines) {
  if (!lines.empty()) {
    fmt::print("{}\n", title);
  }
  for (const std::string &line : lines) {
    fmt::print("  {}\n", line);
  }
}

std::vector<std::string> texts_of(const line_up &list, const std::vector<std::size_t> &places) {
  std::vector<std::string> texts;
  std::ranges::transform(places, std::back_inserter(texts),
                         [&](std::size_t place) { return describe(known_as(list.services[place])); });
  return texts;
}

struct change_texts {
  std::vector<std::string> moved;
  std::vector<std::string> renamed;
  std::vector<std::string> doubtful;
};

change_texts texts_of_changes(const scan_difference &found) {
  change_texts texts;
  for (const kept_service &each : found.again.found) {
    const line_up_service &was = found.before.services[each.before];
    const line_up_service &is = found.after.services[each.after];
    if (is_moved(each)) {
      texts.moved.push_back(
          fmt::format("{} -> {}, found by {}", describe(known_as(was)), describe(known_as(is)), text_of(each.by)));
    }
    if (is_renamed(found, each)) {
      texts.renamed.push_back(fmt::format("{} -> {}", describe(known_as(was)), shown(is.name)));
    }
  }
  for (const doubtful_service &each : found.again.doubtful) {
    const known_service candidate = known_as(found.after.services[each.candidates.front()]);
    const std::string others = each.count > 1 ? fmt::format(", or one of {}", counted(each.count - 1, "other")) : "";
    texts.doubtful.push_back(fmt::format("{} may have become {}{}",
                                         describe(known_as(found.before.services[each.before])), describe(candidate),
                                         others));
  }
  return texts;
}

}  // namespace

bool scan_difference::is_empty() const {
  return again.gone.empty() && again.added.empty() &&
         std::ranges::none_of(again.found,
                              [this](const kept_service &each) { return is_moved(each) || is_renamed(*this, each); });
}

scan_difference difference_of_scans(const line_up &before, const line_up &after) {
  return {before, after, find_again(before, after)};
}

void put_scan_difference(json &document, const scan_difference &found) {
  document["added"] = services_at(found.after, found.again.added);
  document["removed"] = services_at(found.before, found.again.gone);
  json moved = json::array();
  json renamed = json::array();
  for (const kept_service &each : found.again.found) {
    if (is_moved(each)) {
      moved.push_back(json_of_move(found, each));
    }
    if (is_renamed(found, each)) {
      renamed.push_back(json_of_rename(found, each));
    }
  }
  document["moved"] = std::move(moved);
  document["renamed"] = std::move(renamed);
  json doubtful = json::array();
  for (const doubtful_service &each : found.again.doubtful) {
    doubtful.push_back(json_of_doubt(found, each));
  }
  document["doubtful"] = std::move(doubtful);
}

void print_scan_difference(const scan_difference &found) {
  const change_texts texts = texts_of_changes(found);
  fmt::print("{} added, {} gone, {} moved, {} renamed, {} in doubt\n", counted(found.again.added.size(), "service"),
             found.again.gone.size(), texts.moved.size(), texts.renamed.size(), texts.doubtful.size());
  print_all("Added:", texts_of(found.after, found.again.added));
  print_all("Gone:", texts_of(found.before, found.again.gone));
  print_all("Moved:", texts.moved);
  print_all("Renamed:", texts.renamed);
  print_all("In doubt, and counted as gone and added:", texts.doubtful);
}

}  // namespace chlist
