// A service's line ends in its name, as a comment: identities say little to people.
#include "chlist/edit/service_lines.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "chlist/compare/rescan.h"
#include "chlist/edit/edit_line.h"
#include "chlist/fields/service_fields.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/line_up/selection.h"
#include "chlist/text/plain_text.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

std::string commented(const std::vector<std::string> &words, const line_up_service &service) {
  return line_of_words(words) + "  # " + harmless(service.name);
}

service_row row_of(const line_up &list, std::size_t place) { return {.list = &list, .service = &list.services[place]}; }

// How `set` is told the value of a field; nothing when it cannot be.
std::optional<std::string> assignment(const field &which, const service_row &wanted) {
  const std::string text = text_of_value(which.get(wanted));
  const std::string value = text.empty() ? "none" : text;
  return number_from(which.values, value) ? std::optional(fmt::format("{}={}", which.name, value)) : std::nullopt;
}

bool is_settable_now(const field &which, const service_row &is, const service_row &wanted) {
  return which.set_number != nullptr && which.get(is) != which.get(wanted);
}

void add_set_line(std::vector<std::string> &lines, const compared_lists &lists, std::size_t place,
                  const std::vector<std::string> &assignments) {
  if (!assignments.empty()) {
    std::vector<std::string> words = {"set", lists.name_of(place)};
    words.insert(words.end(), assignments.begin(), assignments.end());
    lines.push_back(commented(words, lists.is().services[place]));
  }
}

std::vector<std::string> identity_assignments(const service_row &is, const service_row &wanted) {
  std::vector<std::string> assignments;
  for (const field &each : service_fields()) {
    if (each.owner == field_owner::identity && is_settable_now(each, is, wanted)) {
      assignments.push_back(assignment(each, wanted).value_or(""));
    }
  }
  std::erase(assignments, "");
  return assignments;
}

// Services that only one of the lists has by identity, and that are found again.
std::vector<pairing::pair> moved_services(const compared_lists &lists) {
  std::vector<pairing::pair> moved;
  for (const kept_service &each : find_again(lists.is(), lists.wanted()).found) {
    if (std::ranges::binary_search(lists.services().removed, each.before) &&
        std::ranges::find(lists.services().added, each.after) != lists.services().added.end()) {
      moved.push_back({each.before, each.after});
    }
  }
  return moved;
}

// A flag that has an edit of its own.
struct flag_edit {
  std::string_view field;
  int bit;
  const char *set;
  const char *unset;
};

constexpr flag_edit flag_edits[] = {{"locked", CHANNEL_FLAG_LOCKED, "lock", "unlock"},
                                    {"skipped", CHANNEL_FLAG_SKIP, "skip", "unskip"}};
constexpr int flags_with_fields = CHANNEL_FLAG_LOCKED | CHANNEL_FLAG_SKIP | CHANNEL_FLAG_FTA | CHANNEL_FLAG_DSMCC;

class service_lines {
 public:
  service_lines(const compared_lists &lists, std::size_t place, std::size_t wanted)
      : lists_(lists), place_(place), is_(lists.is().services[place]), wanted_(lists.wanted().services[wanted]),
        is_row_(row_of(lists.is(), place)), wanted_row_(row_of(lists.wanted(), wanted)) {}

  void add_to(std::vector<std::string> &lines) const {
    add_name(lines, wanted_.name, is_.name != wanted_.name || is_.name_table != wanted_.name_table, {});
    add_name(lines, wanted_.short_name,
             is_.short_name != wanted_.short_name || is_.short_name_table != wanted_.short_name_table, {"--short"});
    if (!has_unnamed_flag()) {
      add_flags(lines);
    }
    std::vector<std::string> assignments = field_assignments();
    add_groups(assignments);
    add_set_line(lines, lists_, place_, assignments);
  }

 private:
  void add_name(std::vector<std::string> &lines, const std::string &name, bool differs,
                const std::vector<std::string> &options) const {
    if (!differs || name.empty() || in_one_line(name) != name) {
      return;
    }
    std::vector<std::string> words = {"rename"};
    words.insert(words.end(), options.begin(), options.end());
    if (name.starts_with('-')) {
      words.emplace_back("--");
    }
    words.insert(words.end(), {lists_.name_of(place_), name});
    lines.push_back(commented(words, is_));
  }

  [[nodiscard]] bool has_unnamed_flag() const {
    return ((is_.fields.flag ^ wanted_.fields.flag) & ~flags_with_fields) != 0;
  }

  void add_flags(std::vector<std::string> &lines) const {
    for (const flag_edit &each : flag_edits) {
      if (is_.has_flag(each.bit) != wanted_.has_flag(each.bit)) {
        lines.push_back(commented({wanted_.has_flag(each.bit) ? each.set : each.unset, lists_.name_of(place_)}, is_));
      }
    }
  }

  // The byte of all flags stands for those that have a field when another one changes as well.
  [[nodiscard]] bool is_said_otherwise(const field &which) const {
    const bool is_flag = which.values.kind == value_kind::yes_or_no;
    const bool has_edit = std::ranges::find(flag_edits, which.name, &flag_edit::field) != std::end(flag_edits);
    return is_flag ? has_unnamed_flag() || has_edit : which.name == "flags" && !has_unnamed_flag();
  }

  [[nodiscard]] std::vector<std::string> field_assignments() const {
    std::vector<std::string> assignments;
    bool is_type_named = false;
    for (const field &each : service_fields()) {
      if (!is_settable_now(each, is_row_, wanted_row_) || is_said_otherwise(each) ||
          (each.name == "service_type" && is_type_named)) {
        continue;
      }
      if (const std::optional<std::string> made = assignment(each, wanted_row_)) {
        assignments.push_back(*made);
        is_type_named = is_type_named || each.name == "type";
      }
    }
    return assignments;
  }

  void add_groups(std::vector<std::string> &assignments) const {
    for (const group_facts &each : all_group_kinds()) {
      if (is_.fields.*each.id != wanted_.fields.*each.id || is_.*each.name != wanted_.*each.name) {
        assignments.push_back(fmt::format("{}={}", each.one, group_text(each)));
      }
    }
  }

  // As `set` takes it: by its id when both lists know it by that, else by its name.
  [[nodiscard]] std::string group_text(const group_facts &which) const {
    const std::int16_t id = wanted_.fields.*which.id;
    const std::string &name = wanted_.*which.name;
    const std::vector<line_up_group> &groups = lists_.is().groups_of(which.kind).groups;
    const auto known = std::ranges::find(groups, id, &line_up_group::id);
    if (known != groups.end() && known->name == name) {
      return std::to_string(id);
    }
    return name.empty() ? "none" : in_one_line(name);
  }

  const compared_lists &lists_;
  std::size_t place_;
  const line_up_service &is_;
  const line_up_service &wanted_;
  service_row is_row_;
  service_row wanted_row_;
};

}  // namespace

std::vector<std::string> lines_of_identities(const compared_lists &lists) {
  std::vector<std::string> lines;
  const std::vector<pairing::pair> moved = moved_services(lists);
  for (const std::size_t place : lists.services().removed) {
    if (std::ranges::find(moved, place, &pairing::pair::before) == moved.end()) {
      lines.push_back(commented({"remove", lists.name_of(place)}, lists.is().services[place]));
    }
  }
  for (const auto &[place, wanted] : moved) {
    add_set_line(lines, lists, place, identity_assignments(row_of(lists.is(), place), row_of(lists.wanted(), wanted)));
  }
  return lines;
}

std::vector<std::string> lines_of_fields(const compared_lists &lists) {
  std::vector<std::string> lines;
  for (const auto &[place, wanted] : lists.services().both) {
    service_lines(lists, place, wanted).add_to(lines);
  }
  return lines;
}

}  // namespace chlist
