// What a merge tells people: what is added and deleted, with the entries that services take along.
#include "chlist/merge/merge_report.h"

#include <fmt/format.h>

#include <algorithm>

#include "chlist/fields/described.h"
#include "chlist/line_up/selection.h"
#include "chlist/messages.h"
#include "chlist/text/shown.h"
#include "chlist/text_table.h"

namespace chlist {
namespace {

// "ALL 5, TV 5".
std::string entries_text(const std::vector<placed_entry> &entries) {
  std::string text;
  for (const placed_entry &entry : entries) {
    text += fmt::format("{}{} {}", text.empty() ? "" : ", ", label_of(entry.view), entry.number);
  }
  return text.empty() ? "no entry" : text;
}

std::string doubt_text(const doubtful_move &service) {
  return text_of(service) + (service.entries.empty() ? " and goes" : "; it stays: " + entries_text(service.entries));
}

using table_columns = std::vector<text_table::column>;
using table_cells = std::vector<std::string>;

table_columns identity_columns(identity_part what, table_columns more = {}) {
  table_columns made;
  for (const auto &each : identity_fields(what)) {
    made.push_back({std::string(each.title), each.values.kind == value_kind::number});
  }
  made.insert(made.end(), more.begin(), more.end());
  return made;
}

table_cells identity_cells(identity_part what, const channel::identity &id, table_cells more = {}) {
  table_cells made;
  for (const auto &each : identity_fields(what)) {
    made.push_back(text_of_value(each.get(id)));
  }
  made.insert(made.end(), more.begin(), more.end());
  return made;
}

void print_table(std::FILE *to, const std::vector<changed_service> &services) {
  text_table table(identity_columns(identity_part::service, {{"type", true}, {"name", false, true}, {"entries"}}));
  for (const changed_service &service : services) {
    table.add(identity_cells(
        identity_part::service, service.known.id,
        {std::to_string(service.service_type), harmless(service.known.name), entries_text(service.entries)}));
  }
  fmt::print(to, "{}", table.text());
}

std::size_t favourites_of(const std::vector<changed_service> &services) {
  std::size_t favourites = 0;
  for (const changed_service &service : services) {
    favourites += static_cast<std::size_t>(
        std::ranges::count_if(service.entries, [](const placed_entry &entry) { return entry.view.is_favourites(); }));
  }
  return favourites;
}

// "22 kept, 2 of them moved, 1 of them missing in the new list".
std::string kept_text(const merge_outcome &outcome) {
  std::string text = fmt::format("{} kept", outcome.kept);
  if (!outcome.moved.empty()) {
    text += fmt::format(", {} of them moved", outcome.moved.size());
  }
  if (!outcome.missing.empty()) {
    text += fmt::format(", {} of them missing in the new list", outcome.missing.size());
  }
  return text;
}

template <class Change>
void print_with_entries(std::FILE *to, std::string_view title, const std::vector<Change> &changes) {
  if (!changes.empty()) {
    fmt::print(to, "{}:\n", title);
  }
  for (const Change &change : changes) {
    fmt::print(to, "  {}: {}\n", text_of(change), entries_text(change.entries));
  }
}

void print_sources(std::FILE *to, const std::vector<paired_source> &sources) {
  for (const paired_source &source : sources) {
    if (source.is_renumbered()) {
      fmt::print(to, "Network index {}\n", text_of(source));
    }
  }
}

void print_transponders(std::FILE *to, const std::vector<channel::identity> &transponders) {
  if (transponders.empty()) {
    return;
  }
  fmt::print(to, "Left without services, and removed: {}\n", counted(transponders.size(), "transponder"));
  text_table table(identity_columns(identity_part::transponder));
  for (const channel::identity &id : transponders) {
    table.add(identity_cells(identity_part::transponder, id));
  }
  fmt::print(to, "{}", table.text());
}

void append(std::vector<std::string> &to, const std::vector<std::string> &more) {
  to.insert(to.end(), more.begin(), more.end());
}

std::vector<std::string> with_beginning(const std::string &beginning, std::vector<std::string> texts) {
  for (std::string &text : texts) {
    text.insert(0, beginning);
  }
  return texts;
}

std::string text_of(const full_view &full) {
  return fmt::format("the {} view is full: it holds {}, {} added without an entry there; `chlist remove` and `chlist "
                     "keep` make room first",
                     label_of(full.view), full.capacity, counted(full.left_out, "service"));
}

}  // namespace

std::vector<std::string> findings_of(const merge_outcome &outcome, const merge_inputs &inputs, bool shows_all) {
  const std::string list = inputs.list.string() + ": ";
  const std::string scan = inputs.scan.string() + ": ";
  std::vector<std::string> told;
  append(told, with_beginning(list, outcome.lost));
  append(told, with_beginning(scan, outcome.notes));
  append(told, messages_of<doubtful_move>(inputs.scan, "in doubt", outcome.doubtful, shows_all,
                                          [](const auto &each) { return "in doubt: " + doubt_text(each); }));
  append(told, messages_of<placed_entry>(
                   inputs.list, "dropped, resolves to no service", outcome.dropped, shows_all,
                   [](const auto &entry) { return "dropped, resolves to no service: " + describe(entry); }));
  append(told, messages_of<known_service>(
                   inputs.scan, "taken once, occurs twice", outcome.duplicates, shows_all,
                   [](const auto &service) { return "taken once, occurs twice: " + describe(service); }));
  for (const full_view &full : outcome.full) {
    told.push_back(scan + text_of(full));
  }
  return told;
}

void print_changes(std::FILE *to, const std::string &made, const merge_outcome &outcome) {
  fmt::print(to, "{}: {} added, {} deleted, {}\n", made, counted(outcome.added.size(), "service"),
             outcome.deleted.size(), kept_text(outcome));
  print_sources(to, outcome.sources);
  print_with_entries(to, "Moved, and found again by ids or name", outcome.moved);
  print_with_entries(to, "Renamed in the new list, and called here as before", outcome.renamed);
  if (!outcome.added.empty()) {
    fmt::print(to, "Added:\n");
    print_table(to, outcome.added);
  }
  if (!outcome.deleted.empty()) {
    fmt::print(to, "Deleted, and with them {}:\n", counted(favourites_of(outcome.deleted), "favourite"));
    print_table(to, outcome.deleted);
  }
  print_transponders(to, outcome.emptied);
  if (!outcome.missing.empty()) {
    fmt::print(to, "Missing in the new list, and kept:\n");
    print_table(to, outcome.missing);
  }
}

}  // namespace chlist
