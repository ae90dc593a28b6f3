// What differs between two line-ups: services added, removed and changed, and everything around them. Two files are
// compared, or a list before an edit and after it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/compare/pairing.h"
#include "chlist/json/json.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

enum class change_kind { added, removed, changed };

// One value that differs.
struct field_change {
  std::string_view name;          // in JSON: "video_pid", "number"
  std::string_view title;         // in text: "video PID"; none of moves, which are told as sentences
  std::optional<view_name> view;  // of what an entry shows: where
  json before;
  json after;
};

struct change {
  change_kind kind = change_kind::changed;
  std::string_view what;  // "service", "transponder", "network", "view", "group" or "setting"
  std::string name;       // in text, harmless
  json subject;           // in JSON: an object that says which
  std::vector<field_change> fields;
};

// What differs between records that stand for each other, in list order, services first.
std::vector<change> differences(const line_up &before, const line_up &after, const paired_records &pairs);

// Records stand for each other when the library's finders find them in the second line-up.
std::vector<change> differences(const line_up &before, const line_up &after);

// {"services": {"added": [...], "removed": [...], "changed": [...]}, "others": [...]}
json json_of_differences(const std::vector<change> &changes);

// The same as text: "no differences", or what there is, line by line.
struct difference_line {
  std::size_t depth = 0;  // 0: a heading
  std::string text;
};
std::vector<difference_line> lines_of_differences(const std::vector<change> &changes);

// All changes as one text, with the colours of a terminal.
std::string text_of_differences(const std::vector<change> &changes);

}  // namespace chlist
