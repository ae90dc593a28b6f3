// Counts of arrays, ids of groups and the current view: the settings that a load and the menus go by.
#include <channel/records.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "channel/store/group_table.h"
#include "chlist/check/rules.h"
#include "chlist/fields/values.h"
#include "chlist/line_up/line_up.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/position.h"
#include "chlist/text/broadcast_text.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

void check_count(finding_list &findings, std::size_t offset, const std::string &what, int count, std::size_t capacity) {
  if (count >= 0 && static_cast<std::size_t>(count) <= capacity) {
    return;
  }
  findings.push_back({offset, severity::error, "count-outside-array",
                      fmt::format("{} counts {}, its array holds {}", what, count, capacity),
                      fmt::format("a load says so on an ERROR line and takes {}", count < 0 ? 0 : capacity)});
}

void check_view_counts(const file_records &framed, finding_list &findings) {
  for (const list_view &named : views_of(framed.list())) {
    check_count(findings, framed.offset_of(named.field), fmt::format("the {} view", label_of(named.name)), named.count,
                named.slots.size());
  }
}

void check_table_count(const file_records &framed, const group_table &table, finding_list &findings) {
  const std::size_t offset = framed.offset_of(table.field);
  const std::string what = fmt::format("the table of {} records", table.one_group);
  if (table.count != *table.field) {
    findings.push_back({offset, severity::note, "wide-group-count",
                        fmt::format("{} counts {}, wider than a byte", what, *table.field),
                        fmt::format("a load takes its low byte, {}", table.count)});
  }
  check_count(findings, offset, what, table.count, table.slots.size());
}

void check_ids(const file_records &framed, const group_table &table, finding_list &findings) {
  const std::string_view users = table.one_group == "favourite group" ? "edits" : "services";
  std::unordered_set<int> seen;
  for (const group_st &group : table.used()) {
    const std::string who = fmt::format("{} {}", table.one_group, shown(name_in(group.name)));
    if (group.id < 0) {
      findings.push_back({framed.offset_of(&group.id), severity::warning, "negative-group-id",
                          fmt::format("{} has the id {}", who, group.id),
                          "no operation gives such an id; -1 stands for no group"});
    }
    if (!seen.insert(group.id).second) {
      findings.push_back({framed.offset_of(&group.id), severity::warning, "duplicate-group-id",
                          fmt::format("{} has the id {} of an earlier one", who, group.id),
                          fmt::format("a search by id stops at the first one: {} of this group go there", users)});
    }
  }
}

// Entries of groups that no menu shows.
void check_uncounted_groups(const file_records &framed, finding_list &findings) {
  const channel_list_st &list = framed.list();
  const int groups = std::max<int>(channel::counted_in_low_byte(list.favorite_group_num), 0);
  for (int group = groups; group < MAX_FAV; ++group) {
    if (const std::int16_t &entries = list.favorite_vnumber[group]; entries > 0) {
      findings.push_back({framed.offset_of(&entries), severity::warning, "entries-without-group",
                          fmt::format("favourites {} counts {} in use, the table of groups only {}", position_of(group),
                                      entries, groups),
                          "no menu shows these entries; they go when a group is created in their place"});
    }
  }
}

// A load takes the low byte of the code.
void check_current_view(const file_records &framed, finding_list &findings) {
  const channel_list_st &list = framed.list();
  const auto taken = static_cast<std::int8_t>(list.vch_type);
  const bool is_wide = taken != list.vch_type;
  const std::vector<list_view> views = views_of(list);
  const auto current = std::ranges::find(views, taken, &list_view::code);
  const std::size_t offset = framed.offset_of(&list.vch_type);
  if (current == views.end()) {
    findings.push_back({offset, severity::warning, "unknown-view",
                        fmt::format("the current view has the code {}, which is none in a file", list.vch_type),
                        fmt::format("a load keeps {} and shows the entries of ALL",
                                    is_wide ? fmt::format("its low byte, {},", taken) : "the code")});
  } else if (current->size() == 0 && taken == VIEW_ALL) {
    findings.push_back({offset, framed.services().empty() ? severity::note : severity::error, "empty-list",
                        "the ALL view is empty", "the receiver shows no service"});
  } else if (current->size() == 0) {
    findings.push_back({offset, severity::warning, "empty-current-view",
                        fmt::format("the current view, code {}, is empty", taken),
                        "a load makes the ALL view current"});
  } else if (is_wide) {
    findings.push_back({offset, severity::note, "wide-view-code",
                        fmt::format("the current view has the code {}, wider than a byte", list.vch_type),
                        fmt::format("a load takes its low byte and makes the view of code {} current", taken)});
  }
}

}  // namespace

void check_settings(const file_records &framed, finding_list &findings) {
  check_view_counts(framed, findings);
  for (const group_table &table : groups_of(framed.list())) {
    check_table_count(framed, table, findings);
    check_ids(framed, table, findings);
  }
  check_uncounted_groups(framed, findings);
  check_current_view(framed, findings);
}

}  // namespace chlist
