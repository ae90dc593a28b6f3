// `chlist merge`: merges in memory, saves the list unless it is a dry run, shows what is added and deleted.
#include "chlist/commands.h"
#include "chlist/edit/edit_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "chlist/exit_codes.h"
#include "chlist/files/backup.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/edit_lock.h"
#include "chlist/line_up/selection.h"
#include "chlist/merge/merge_outcome.h"
#include "chlist/merge/merged_companions.h"
#include "chlist/messages.h"
#include "chlist/report.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct merge_options {
  fs::path list;
  fs::path scan;
  fs::path output;
  std::string new_numbers = "next";
  bool keeps_missing = false;
  bool is_forced = false;
  bool leaves_no_backup = false;
  bool is_dry_run = false;
  bool shows_all = false;
  bool as_json = false;
};

json json_of_entry(const placed_entry &entry) {
  json object = json_of(entry.view);
  object["number"] = entry.number;
  return object;
}

json json_of_change(const changed_service &service) {
  json object = json_of(service.known);
  object["service_type"] = service.service_type;
  object["entries"] = array_of(service.entries, json_of_entry);
  return object;
}

template <class Change>
json json_with_entries(const Change &change) {
  json object = json_of(change);
  object["entries"] = array_of(change.entries, json_of_entry);
  return object;
}

json json_of_transponder(const channel::identity &id) {
  return {{"net_index", id.net_index},
          {"network_id", id.network_id},
          {"ts_id", id.ts_id},
          {"frequency", id.frequency},
          {"polarisation", std::string(1, polarisation_letter(id))}};
}

json json_of_source(const paired_source &source) {
  return {{"name", source.name}, {"before", source.net_index}, {"after", source.other}};
}

json json_of_sources(const std::vector<paired_source> &sources) {
  json array = json::array();
  for (const paired_source &source : sources) {
    if (source.is_renumbered()) {
      array.push_back(json_of_source(source));
    }
  }
  return array;
}

json json_of_full(const full_view &full) {
  json object = json_of(full.view);
  object["capacity"] = full.capacity;
  object["services_left_out"] = full.left_out;
  return object;
}

json json_of_notes(const merge_outcome &outcome) {
  json notes = outcome.lost;
  for (const std::string &note : outcome.notes) {
    notes.push_back(note);
  }
  return notes;
}

json json_of_outcome(const merge_options &options, const merge_outcome &outcome) {
  return {{"file", options.list.string()},
          {"scan", options.scan.string()},
          {"output", options.is_dry_run ? json() : json(options.output.string())},
          {"dry_run", options.is_dry_run},
          {"kept", outcome.kept},
          {"added", array_of(outcome.added, json_of_change)},
          {"removed", array_of(outcome.deleted, json_of_change)},
          {"missing", array_of(outcome.missing, json_of_change)},
          {"moved", array_of(outcome.moved, json_with_entries)},
          {"renamed", array_of(outcome.renamed, json_with_entries)},
          {"doubtful", array_of(outcome.doubtful, json_with_entries)},
          {"removed_transponders", array_of(outcome.emptied, json_of_transponder)},
          {"renumbered_sources", json_of_sources(outcome.sources)},
          {"dropped_entries", array_of(outcome.dropped, json_of)},
          {"duplicate_services", array_of(outcome.duplicates, json_of)},
          {"full_views", array_of(outcome.full, json_of_full)},
          {"notes", json_of_notes(outcome)}};
}

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

void report_findings(const merge_options &options, const merge_outcome &outcome) {
  for (const std::string &lost : outcome.lost) {
    print_message(fmt::format("{}: {}", options.list.string(), lost));
  }
  for (const std::string &note : outcome.notes) {
    print_message(fmt::format("{}: {}", options.scan.string(), note));
  }
  print_messages<doubtful_move>(options.scan, "in doubt", outcome.doubtful, options.shows_all,
                                [](const auto &service) { return fmt::format("in doubt: {}", doubt_text(service)); });
  print_messages<placed_entry>(options.list, "dropped, resolves to no service", outcome.dropped, options.shows_all,
                               [](const auto &entry) { return "dropped, resolves to no service: " + describe(entry); });
  print_messages<known_service>(options.scan, "taken once, occurs twice", outcome.duplicates, options.shows_all,
                                [](const auto &service) { return "taken once, occurs twice: " + describe(service); });
  for (const full_view &full : outcome.full) {
    print_message(fmt::format("{}: the {} view is full: it holds {}, {} added without an entry there",
                              options.scan.string(), label_of(full.view), full.capacity,
                              counted(full.left_out, "service")));
  }
}

void print_table(const std::vector<changed_service> &services) {
  fmt::print("  {:>3} {:>7} {:>5} {:>10} {:>3} {:>7} {:>4}  entries: name\n", "net", "network", "ts", "frequency",
             "pol", "service", "type");
  for (const changed_service &service : services) {
    const channel::identity &id = service.known.id;
    fmt::print("  {:>3} {:>7} {:>5} {:>10} {:>3} {:>7} {:>4}  {}: {}\n", id.net_index, id.network_id, id.ts_id,
               id.frequency, polarisation_letter(id), id.service_id, service.service_type,
               entries_text(service.entries), shown(service.known.name));
  }
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
void print_with_entries(std::string_view title, const std::vector<Change> &changes) {
  if (!changes.empty()) {
    fmt::print("{}:\n", title);
  }
  for (const Change &change : changes) {
    fmt::print("  {}: {}\n", text_of(change), entries_text(change.entries));
  }
}

void print_sources(const std::vector<paired_source> &sources) {
  for (const paired_source &source : sources) {
    if (source.is_renumbered()) {
      fmt::print("Network index {}\n", text_of(source));
    }
  }
}

void print_transponders(const std::vector<channel::identity> &transponders) {
  if (transponders.empty()) {
    return;
  }
  fmt::print("Left without services, and removed: {}\n", counted(transponders.size(), "transponder"));
  fmt::print("  {:>3} {:>7} {:>5} {:>10} {:>3}\n", "net", "network", "ts", "frequency", "pol");
  for (const channel::identity &id : transponders) {
    fmt::print("  {:>3} {:>7} {:>5} {:>10} {:>3}\n", id.net_index, id.network_id, id.ts_id, id.frequency,
               polarisation_letter(id));
  }
}

void print_changes(const merge_options &options, const merge_outcome &outcome) {
  fmt::print("{}: {} added, {} deleted, {}\n", options.is_dry_run ? "dry run" : options.output.string(),
             counted(outcome.added.size(), "service"), outcome.deleted.size(), kept_text(outcome));
  print_sources(outcome.sources);
  print_with_entries("Moved, and found again by ids or name", outcome.moved);
  print_with_entries("Renamed in the new list, and called here as before", outcome.renamed);
  if (!outcome.added.empty()) {
    fmt::print("Added:\n");
    print_table(outcome.added);
  }
  if (!outcome.deleted.empty()) {
    fmt::print("Deleted, and with them {}:\n", counted(favourites_of(outcome.deleted), "favourite"));
    print_table(outcome.deleted);
  }
  print_transponders(outcome.emptied);
  if (!outcome.missing.empty()) {
    fmt::print("Missing in the new list, and kept:\n");
    print_table(outcome.missing);
  }
}

void report(const merge_options &options, const merge_outcome &outcome) {
  if (options.as_json) {
    print_report([&] { print_json(json_of_outcome(options, outcome)); });
  } else {
    report_findings(options, outcome);
    print_report([&] { print_changes(options, outcome); });
  }
}

numbering numbers_of(const merge_options &options) {
  try {
    return numbering_from(options.new_numbers);
  } catch (const std::runtime_error &error) {
    throw usage_error(error.what());
  }
}

int run_merge(const merge_options &options) {
  if (options.output.empty() && !options.is_dry_run) {
    throw usage_error("--output (or --dry-run) is required");
  }
  const merge_choices choices = {
      .keeps_missing = options.keeps_missing, .is_forced = options.is_forced, .numbers = numbers_of(options)};
  std::optional<edit_lock> lock;
  if (!options.is_dry_run) {
    lock.emplace(options.output);
  }
  const channel_file list(options.list);
  const channel_file scan(options.scan);
  scan.must_not_be(options.output);
  const merged_companions beside(options.list, options.scan);
  const merge_outcome outcome = merge_in_memory(list, scan, choices);
  if (!options.is_dry_run) {
    list.must_be_unchanged();
    save_edited_list(
        options.list, options.output, options.leaves_no_backup,
        {beside.of(outcome, options.output), {line_of_words({"merge", options.list.string(), options.scan.string()})}});
  }
  beside.tell_trouble();
  report(options, outcome);
  return outcome.has_findings() || beside.has_trouble() ? exit_findings : exit_done;
}

}  // namespace

command merge_command() {
  auto options = std::make_shared<merge_options>();
  return {
      .name = "merge",
      .summary = "Merge a new channel list into a channel file",
      .details =
          {"Services that LIST does not hold are added behind the others; services that SCAN lacks are deleted with "
           "all their entries, favourites included; services in both stay as LIST has them, and so do its "
           "settings. A service that moved, to another transponder or under other ids, is found again by its "
           "name and type or by its network and service id, and keeps its numbers, marks, name and favourites; "
           "where several could be it, that is said, and it stays as it is. Sources are paired by their names, "
           "orbital positions or network ids when the files number them differently, and added services are in "
           "the groups that have the names of those in SCAN. A transponder goes with its last service, if SCAN has "
           "any of its source. Both files are of version 10 and are only read. OUT "
           "is replaced as a whole or not at all, and kept as OUT.bak; it may be LIST, but not SCAN."},
      .exit_codes = {{"0", "merged (or, with --dry-run, could be)"},
                     {"1",
                      "the same, with findings: services whose move is in doubt, sources of which SCAN has nothing or "
                      "that have other names, groups, numbers or moves that do not fit, entries of LIST that resolve "
                      "to no service were dropped, services that occur twice in SCAN were taken once, added services "
                      "have no entry in a view because it is full, or LIST holds what cannot be saved again"},
                     {"2",
                      "nothing was written: bad usage, a SCAN that has no service of LIST, an input that cannot be "
                      "read, is short or is of another version, an output that cannot be written; or only the "
                      "report could not be written"}},
      .examples = {"chlist merge channels.dat scan.dat --dry-run",
                   "chlist merge channels.dat scan.dat -o channels.dat --keep-missing --new-numbers 900"},
      .options =
          {{.names = "LIST", .target = &options->list, .about = "the channel file to start from", .is_required = true},
           {.names = "SCAN", .target = &options->scan, .about = "the new channel list", .is_required = true},
           {.names = "-o,--output", .target = &options->output, .about = "the channel file to write", .value = "OUT"},
           {.names = "--keep-missing",
            .target = &options->keeps_missing,
            .about = "keep services that SCAN lacks, as after a scan of one satellite"},
           {.names = "--new-numbers",
            .target = &options->new_numbers,
            .about =
                "of added services: next (behind the largest), from N (free ones from there on), or service-id (as "
                "receivers number them: modulo 16384, which may give numbers twice)",
            .value = "HOW"},
           {.names = "--force",
            .target = &options->is_forced,
            .about = "merge a SCAN that has no service of LIST, and delete services that are in doubt"},
           {.names = "--no-backup",
            .target = &options->leaves_no_backup,
            .about = "do not keep the previous file as OUT.bak"},
           {.names = "--dry-run", .target = &options->is_dry_run, .about = "show what a merge would do; write nothing"},
           {.names = "--all",
            .target = &options->shows_all,
            .about = "tell every finding, not only the first ten of each kind"},
           {.names = "--json", .target = &options->as_json, .about = "report as JSON, every finding included"}},
      .run = [options] { return run_merge(*options); }};
}

}  // namespace chlist
