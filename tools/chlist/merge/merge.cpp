// `chlist merge`: merges in memory, saves the list unless it is a dry run, shows what is added and deleted.
#include "chlist/commands.h"
#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "chlist/common_options.h"
#include "chlist/edit/edit_line.h"
#include "chlist/edit/edits.h"
#include "chlist/exit_codes.h"
#include "chlist/fields/described.h"
#include "chlist/files/backup.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/edit_lock.h"
#include "chlist/files/faithful_load.h"
#include "chlist/line_up/selection.h"
#include "chlist/merge/merge_outcome.h"
#include "chlist/merge/merge_report.h"
#include "chlist/merge/merged_companions.h"
#include "chlist/messages.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

// What the command and the line of an edit have in common.
struct scan_options {
  fs::path scan;
  std::string new_numbers = "next";
  bool keeps_missing = false;
  bool is_forced = false;
  bool shows_all = false;
};

struct merge_options : scan_options {
  fs::path list;
  fs::path output;
  bool leaves_no_backup = false;
  bool is_dry_run = false;
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

json json_of_outcome(const merge_outcome &outcome) {
  return {{"kept", outcome.kept},
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

json json_of_merge(const merge_options &options, const merge_outcome &outcome) {
  json document = {{"file", options.list.string()},
                   {"scan", options.scan.string()},
                   {"output", options.is_dry_run ? json() : json(options.output.string())},
                   {"dry_run", options.is_dry_run}};
  document.put(json_of_outcome(outcome));
  return document;
}

void report(const merge_options &options, const merge_outcome &outcome) {
  if (options.as_json) {
    print_report([&] { print_json(json_of_merge(options, outcome)); });
  } else {
    std::ranges::for_each(findings_of(outcome, {options.list, options.scan}, options.shows_all), print_message);
    print_report(
        [&] { print_changes(stdout, options.is_dry_run ? "dry run" : harmless(options.output.string()), outcome); });
  }
}

merge_choices choices_of(const scan_options &options) {
  try {
    return {.keeps_missing = options.keeps_missing,
            .is_forced = options.is_forced,
            .numbers = numbering_from(options.new_numbers)};
  } catch (const std::runtime_error &error) {
    throw usage_error(error.what());
  }
}

option option_of_scan(scan_options &options) {
  return {.names = "SCAN", .target = &options.scan, .about = "the new channel list", .is_required = true};
}

std::vector<option> options_of_choices(scan_options &options) {
  return {{.names = "--keep-missing",
           .target = &options.keeps_missing,
           .about = "keep services that SCAN lacks, as after a scan of one satellite"},
          {.names = "--new-numbers",
           .target = &options.new_numbers,
           .about = "of added services: next (behind the largest), from N (free ones from there on), or service-id (as "
                    "receivers number them: modulo 16384, which may give numbers twice)",
           .value = "HOW"},
          {.names = "--force",
           .target = &options.is_forced,
           .about = "merge a SCAN that has no service of LIST, and delete services that are in doubt"},
          all_findings_option(options.shows_all)};
}

std::vector<option> options_of(merge_options &options) {
  std::vector<option> all = {
      {.names = "LIST", .target = &options.list, .about = "the channel file to start from", .is_required = true},
      option_of_scan(options),
      {.names = "-o,--output", .target = &options.output, .about = "the channel file to write", .value = "OUT"}};
  std::ranges::move(options_of_choices(options), std::back_inserter(all));
  all.insert(
      all.end(),
      {{.names = "--no-backup",
        .target = &options.leaves_no_backup,
        .about = "do not keep the previous file as OUT.bak"},
       {.names = "--dry-run", .target = &options.is_dry_run, .about = "show what a merge would do; write nothing"},
       json_option(options.as_json)});
  return all;
}

const char *const title_of_list = "the list";

channel_file list_in_memory() {
  const std::string image = image_of(*get_channel_list());
  const auto bytes = std::as_bytes(std::span(image));
  return {title_of_list, {bytes.begin(), bytes.end()}};
}

void merge_into(const scan_options &options, const channel_file &scan, edited_list &list) {
  const merge_outcome outcome = merge_in_memory(list_in_memory(), scan, choices_of(options));
  for (const changed_identity &each : identities_in(outcome)) {
    list.was_identified(each.before, each.after);
  }
  list.services_changed();
  list.count_as_chosen(outcome.added.size() + outcome.deleted.size());
  json document = {{"scan", options.scan.string()}};
  document.put(json_of_outcome(outcome));
  list.tables.push_back(
      {text_of_report([&](std::FILE *to) { print_changes(to, options.scan.string(), outcome); }), std::move(document)});
  for (std::string &each : findings_of(outcome, {title_of_list, options.scan}, options.shows_all)) {
    list.notes.push_back(std::move(each));
  }
  if (!edited_companion(options.scan).kept().is_empty()) {
    list.notes.push_back(options.scan.string() + ": what stands beside it is not taken: `chlist merge` takes it");
  }
}

int run_merge(const merge_options &options) {
  if (options.output.empty() && !options.is_dry_run) {
    throw usage_error("--output (or --dry-run) is required");
  }
  const merge_choices choices = choices_of(options);
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
  beside.print_notes();
  report(options, outcome);
  return outcome.has_findings() || beside.has_notes() ? exit_findings : exit_done;
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
      .options = options_of(*options),
      .run = [options] { return run_merge(*options); }};
}

edit_row merge_edit() {
  auto options = std::make_shared<scan_options>();
  std::vector<option> all = {option_of_scan(*options)};
  std::ranges::move(options_of_choices(*options), std::back_inserter(all));
  return {.name = "merge",
          .summary = "Merge a new channel list into this one",
          .details = {"As `chlist merge` does: services that SCAN has and the list lacks are added, others deleted, "
                      "and services that moved keep what was made of them."},
          .examples = {},
          .options = std::move(all),
          .take = [options]() -> list_edit {
            const scan_options taken = std::exchange(*options, {});
            choices_of(taken);
            return [taken, scan = channel_file(taken.scan)](edited_list &list) { merge_into(taken, scan, list); };
          }};
}

}  // namespace chlist
