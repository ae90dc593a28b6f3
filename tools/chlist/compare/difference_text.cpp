// Differences as JSON and as text.
#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "chlist/compare/difference.h"
#include "chlist/fields/described.h"
#include "chlist/fields/values.h"
#include "chlist/line_up/line_up.h"
#include "chlist/report.h"
#include "chlist/terminal.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

struct kind_text {
  std::string_view word;  // as the enumeration has them
  std::string_view heading;
  style look;
};

constexpr std::array<kind_text, 3> kinds = {
    {{"added", "Added:", style::green}, {"removed", "Removed:", style::red}, {"changed", "Changed:", style::yellow}}};

constexpr std::string_view heading_of_others = "Around the services:";

constexpr std::size_t most_named = 5;

const kind_text &words_of(change_kind kind) { return kinds[static_cast<std::size_t>(kind)]; }

bool is_service(const change &each) { return each.what == "service"; }

json json_of(const field_change &field) {
  json object = {{"field", field.name}};
  if (field.view.has_value()) {
    object.put(json_of(*field.view));
  }
  object["before"] = field.before;
  object["after"] = field.after;
  return object;
}

json json_of(const change &each) {
  json object = each.subject;
  if (!is_service(each)) {
    object["what"] = each.what;
    object["change"] = words_of(each.kind).word;
  }
  object["fields"] = array_of(each.fields, json_of);
  return object;
}

json first_of(const json &values) {
  json first = json::array();
  for (std::size_t i = 0; i < most_named; ++i) {
    first.push_back(values[i]);
  }
  return first;
}

std::string shown_value(const json &value) {
  if (value.empty()) {
    return "-";
  }
  if (value.is_array() && value.size() > most_named) {
    return fmt::format("{} and {} more", text_of_value(first_of(value)), value.size() - most_named);
  }
  return value.is_string() ? shown(value.as_string()) : text_of_value(value);
}

// "2 services moved: \"News\", \"Films\"".
std::string moved_text(std::string text, const json &names) {
  for (std::size_t i = 0; i < std::min(names.size(), most_named); ++i) {
    text += (i == 0 ? ": " : ", ") + shown_value(names[i]);
  }
  return names.size() > most_named ? fmt::format("{} and {} more", text, names.size() - most_named) : text;
}

// "number in TV: 5 -> 7".
std::string changed_text(const field_change &field) {
  if (field.name == "moved") {
    return moved_text(counted(field.after.size(), "service") + " moved", field.after);
  }
  if (field.name == "unresolved_moved") {
    return moved_text(field.after.size() == 1 ? "an entry without a service moved"
                                              : fmt::format("{} entries without a service moved", field.after.size()),
                      field.after);
  }
  const std::string title =
      std::string(field.title) + (field.view.has_value() ? " in " + label_of(*field.view) : std::string());
  return fmt::format("{}{}{} -> {}", title, title.empty() ? "" : ": ", shown_value(field.before),
                     shown_value(field.after));
}

// "TV 5", of something that is only there before, or only after.
std::string single_text(const field_change &field) {
  const std::string value = shown_value(field.before.is_null() ? field.after : field.before);
  return field.view.has_value() ? fmt::format("{} {}", label_of(*field.view), value) : value;
}

std::string fields_text(const change &each) {
  std::string text;
  for (const field_change &field : each.fields) {
    text += text.empty() ? ": " : ", ";
    text += each.kind == change_kind::changed ? changed_text(field) : single_text(field);
  }
  return text;
}

std::size_t count_services(const std::vector<change> &changes, change_kind kind) {
  return static_cast<std::size_t>(
      std::ranges::count_if(changes, [kind](const change &each) { return is_service(each) && each.kind == kind; }));
}

using difference_lines = std::vector<difference_line>;

// A changed service has a line for each field.
void add_service(const change &each, difference_lines &lines) {
  if (each.kind != change_kind::changed) {
    lines.push_back({1, each.name + fields_text(each)});
    return;
  }
  lines.push_back({1, each.name});
  for (const field_change &field : each.fields) {
    lines.push_back({2, changed_text(field)});
  }
}

void add_other(const change &each, difference_lines &lines) {
  const bool is_changed = each.kind == change_kind::changed;
  lines.push_back({1, fmt::format("{}{}{}", each.name, is_changed ? "" : fmt::format(" {}", words_of(each.kind).word),
                                  fields_text(each))});
}

void add_services(const std::vector<change> &changes, change_kind kind, difference_lines &lines) {
  if (count_services(changes, kind) == 0) {
    return;
  }
  lines.push_back({0, std::string(words_of(kind).heading)});
  for (const change &each : changes) {
    if (is_service(each) && each.kind == kind) {
      add_service(each, lines);
    }
  }
}

void add_others(const std::vector<change> &changes, difference_lines &lines) {
  lines.push_back({0, std::string(heading_of_others)});
  for (const change &each : changes) {
    if (!is_service(each)) {
      add_other(each, lines);
    }
  }
}

// Headings have the colours of what they head.
std::string look_of(const difference_line &line) {
  const auto *const kind = std::ranges::find(kinds, line.text, &kind_text::heading);
  if (line.depth > 0 || (kind == kinds.end() && line.text != heading_of_others)) {
    return std::string(2 * line.depth, ' ') + line.text;
  }
  return painted(line.text, kind == kinds.end() ? style::bold : kind->look);
}

}  // namespace

json json_of_differences(const std::vector<change> &changes) {
  json grouped = json::object();
  for (const kind_text &kind : kinds) {
    grouped[std::string(kind.word)] = json::array();
  }
  grouped["others"] = json::array();
  for (const change &each : changes) {
    grouped[is_service(each) ? words_of(each.kind).word : "others"].push_back(json_of(each));
  }
  return grouped;
}

std::vector<difference_line> lines_of_differences(const std::vector<change> &changes) {
  if (changes.empty()) {
    return {{0, "no differences"}};
  }
  const std::size_t added = count_services(changes, change_kind::added);
  const std::size_t removed = count_services(changes, change_kind::removed);
  const std::size_t changed = count_services(changes, change_kind::changed);
  const std::size_t others = changes.size() - added - removed - changed;
  difference_lines lines = {
      {0, fmt::format("{} added, {} removed, {} changed; {} around the services", counted(added, "service"), removed,
                      changed, counted(others, "difference"))}};
  add_services(changes, change_kind::added, lines);
  add_services(changes, change_kind::removed, lines);
  add_services(changes, change_kind::changed, lines);
  if (others > 0) {
    add_others(changes, lines);
  }
  return lines;
}

std::string text_of_differences(const std::vector<change> &changes) {
  std::string text;
  for (const difference_line &line : lines_of_differences(changes)) {
    text += look_of(line) + '\n';
  }
  return text;
}

}  // namespace chlist
