// The tables of `chlist order`.
#include "chlist/edit/paired_lists.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

#include "chlist/compare/sources.h"
#include "chlist/fields/described.h"
#include "chlist/first_of_a_kind.h"
#include "chlist/line_up/selection.h"
#include "chlist/text/shown.h"
#include "chlist/text_table.h"

namespace chlist {
namespace {

constexpr std::string_view no_partner = "-";
constexpr std::string_view in_doubt = "several possible";
constexpr std::string_view in_reference = "only in REF";
constexpr std::string_view in_list = "only in FILE";

struct table_row {
  std::string kind;
  std::string of_list;
  std::string of_reference;
};

std::string cell_of(const line_up_service &service) {
  return fmt::format("{} {}", harmless(service.name), identity_text(service.id()));
}

std::vector<table_row> rows_of_pairs(const paired_lists &pairs) {
  std::vector<table_row> rows;
  for (const kept_service &each : pairs.again.found) {
    rows.push_back({std::string(text_of(each.by)), cell_of(pairs.list.services[each.after]),
                    cell_of(pairs.reference.services[each.before])});
  }
  std::ranges::stable_sort(rows, {}, [](const table_row &row) {
    std::size_t way = 0;
    while (text_of(static_cast<found_by>(way)) != row.kind) {
      ++way;
    }
    return way;
  });
  return rows;
}

void add_rows_in_doubt(std::vector<table_row> &rows, const paired_lists &pairs) {
  for (const doubtful_service &each : pairs.again.doubtful) {
    std::string candidates;
    for (const std::size_t place : each.candidates) {
      candidates += (candidates.empty() ? "" : ", ") + cell_of(pairs.list.services[place]);
    }
    rows.push_back({std::string(in_doubt), candidates, cell_of(pairs.reference.services[each.before])});
  }
}

std::vector<table_row> all_rows(const paired_lists &pairs) {
  std::vector<table_row> rows = rows_of_pairs(pairs);
  add_rows_in_doubt(rows, pairs);
  for (const std::size_t place : pairs.only_in_reference()) {
    rows.push_back({std::string(in_reference), std::string(no_partner), cell_of(pairs.reference.services[place])});
  }
  for (const std::size_t place : pairs.only_in_list()) {
    rows.push_back({std::string(in_list), cell_of(pairs.list.services[place]), std::string(no_partner)});
  }
  return rows;
}

std::string text_of_counts(const paired_lists &pairs, const std::string &reference) {
  std::string text = fmt::format("{}: {} of {} paired", reference, pairs.again.found.size(),
                                 counted(pairs.reference.services.size(), "service"));
  for (std::size_t way = 0; way < ways_to_find; ++way) {
    const auto by = static_cast<found_by>(way);
    if (const auto count = std::ranges::count(pairs.again.found, by, &kept_service::by); count > 0) {
      text += fmt::format(", {} by {}", count, text_of(by));
    }
  }
  return text + fmt::format("; {} could be several, {} only in REF, {} only in FILE\n", pairs.again.doubtful.size(),
                            pairs.only_in_reference().size(), pairs.only_in_list().size());
}

std::string text_of_pairs(const paired_lists &pairs, const std::string &reference, bool shows_all) {
  text_table table({{"paired by"}, {"service of FILE", false, true}, {"service of REF", false, true}});
  first_of_a_kind shown_rows(shows_all);
  for (const table_row &row : all_rows(pairs)) {
    if (shown_rows.takes(row.kind)) {
      table.add({row.kind, row.of_list, row.of_reference});
    }
  }
  std::string text = text_of_counts(pairs, reference) + table.text();
  for (const auto &[kind, count] : shown_rows.left_out()) {
    text += fmt::format("and {} more: {} (--all)\n", count, kind);
  }
  return text;
}

json json_of_pairs(const paired_lists &pairs) {
  json array = json::array();
  for (const kept_service &each : pairs.again.found) {
    json object = json_of(known_as(pairs.list.services[each.after]));
    object["found_by"] = text_of(each.by);
    object["reference"] = json_of(known_as(pairs.reference.services[each.before]));
    array.push_back(std::move(object));
  }
  return array;
}

json json_of_places(const line_up &list, const std::vector<std::size_t> &places) {
  json array = json::array();
  for (const std::size_t place : places) {
    array.push_back(json_of(known_as(list.services[place])));
  }
  return array;
}

json json_of_doubts(const paired_lists &pairs) {
  json array = json::array();
  for (const doubtful_service &each : pairs.again.doubtful) {
    json object = json_of(known_as(pairs.reference.services[each.before]));
    object["candidates"] = json_of_places(pairs.list, each.candidates);
    array.push_back(std::move(object));
  }
  return array;
}

// Those of some places that no doubtful service has.
template <class IsOf>
std::vector<std::size_t> without_doubtful(std::vector<std::size_t> places, const rescan &again, const IsOf &is_of) {
  std::erase_if(places, [&](std::size_t place) {
    return std::ranges::any_of(again.doubtful, [&](const doubtful_service &each) { return is_of(each, place); });
  });
  return places;
}

}  // namespace

void paired_lists::keep_to(const std::vector<bool> &is_meant) {
  std::erase_if(again.found, [&is_meant](const kept_service &each) { return !is_meant[each.after]; });
  std::erase_if(again.added, [&is_meant](std::size_t place) { return !is_meant[place]; });
  for (std::size_t &partner : partners) {
    partner = partner != nowhere && is_meant[partner] ? partner : nowhere;
  }
}

std::vector<std::size_t> paired_lists::only_in_list() const {
  return without_doubtful(again.added, again, [](const doubtful_service &each, std::size_t place) {
    return std::ranges::find(each.candidates, place) != each.candidates.end();
  });
}

std::vector<std::size_t> paired_lists::only_in_reference() const {
  return without_doubtful(again.gone, again,
                          [](const doubtful_service &each, std::size_t place) { return each.before == place; });
}

paired_lists pair_with_reference(line_up reference, line_up list, search_reach reach) {
  renumber_sources(reference, pair_sources(list, reference));
  paired_lists pairs = {std::move(reference), std::move(list), {}, {}};
  pairs.again = find_again(pairs.reference, pairs.list, reach);
  pairs.partners.assign(pairs.reference.services.size(), nowhere);
  for (const kept_service &each : pairs.again.found) {
    pairs.partners[each.before] = each.after;
  }
  return pairs;
}

edit_table table_of_pairs(const paired_lists &pairs, const std::string &reference, bool shows_all) {
  return {text_of_pairs(pairs, harmless(reference), shows_all),
          {{"like", reference},
           {"paired", json_of_pairs(pairs)},
           {"doubtful", json_of_doubts(pairs)},
           {"only_in_reference", json_of_places(pairs.reference, pairs.only_in_reference())},
           {"only_in_list", json_of_places(pairs.list, pairs.only_in_list())}}};
}

}  // namespace chlist
