// Differences as JSON and as text.
#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "chlist/fields/values.h"
#include "chlist/line_up/difference.h"
#include "chlist/report.h"
#include "chlist/terminal.h"

namespace chlist {
namespace {

struct kind_text {
  std::string_view word;  // as the enumeration has them
  std::string_view heading;
  style look;
};

constexpr std::array<kind_text, 3> kinds = {
    {{"added", "Added:", style::green}, {"removed", "Removed:", style::red}, {"changed", "Changed:", style::yellow}}};

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

// A changed service has a line for each field.
std::string service_text(const change &each) {
  if (each.kind != change_kind::changed) {
    return fmt::format("  {}{}\n", each.name, fields_text(each));
  }
  std::string text = fmt::format("  {}\n", each.name);
  for (const field_change &field : each.fields) {
    text += fmt::format("    {}\n", changed_text(field));
  }
  return text;
}

std::string other_text(const change &each) {
  const bool is_changed = each.kind == change_kind::changed;
  return fmt::format("  {}{}{}\n", each.name, is_changed ? "" : fmt::format(" {}", words_of(each.kind).word),
                     fields_text(each));
}

std::size_t count_services(const std::vector<change> &changes, change_kind kind) {
  return static_cast<std::size_t>(
      std::ranges::count_if(changes, [kind](const change &each) { return is_service(each) && each.kind == kind; }));
}

std::string services_text(const std::vector<change> &changes, change_kind kind) {
  if (count_services(changes, kind) == 0) {
    return {};
  }
  std::string text = painted(words_of(kind).heading, words_of(kind).look) + '\n';
  for (const change &each : changes) {
    if (is_service(each) && each.kind == kind) {
      text += service_text(each);
    }
  }
  return text;
}

std::string others_text(const std::vector<change> &changes) {
  std::string text = painted("Around the services:", style::bold) + '\n';
  for (const change &each : changes) {
    if (!is_service(each)) {
      text += other_text(each);
    }
  }
  return text;
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

std::string text_of_differences(const std::vector<change> &changes) {
  if (changes.empty()) {
    return "no differences\n";
  }
  const std::size_t added = count_services(changes, change_kind::added);
  const std::size_t removed = count_services(changes, change_kind::removed);
  const std::size_t changed = count_services(changes, change_kind::changed);
  const std::size_t others = changes.size() - added - removed - changed;
  return fmt::format("{} added, {} removed, {} changed; {} around the services\n", counted(added, "service"), removed,
                     changed, counted(others, "difference")) +
         services_text(changes, change_kind::added) + services_text(changes, change_kind::removed) +
         services_text(changes, change_kind::changed) + (others > 0 ? others_text(changes) : "");
}

}  // namespace chlist
