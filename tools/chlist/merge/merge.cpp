// `chlist merge`: merges in memory, saves the list unless it is a dry run, shows what is added and deleted.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>

#include "chlist/exit_codes.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/list_file.h"
#include "chlist/merge/merge_outcome.h"
#include "chlist/messages.h"
#include "chlist/report.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct merge_options {
  fs::path list;
  fs::path scan;
  fs::path output;
  bool is_dry_run = false;
  bool shows_all = false;
  bool as_json = false;
};

json json_of_change(const changed_service &service) {
  json object = json_of(service.known);
  object["service_type"] = service.service_type;
  object["entries"] = json::array();
  for (const placed_entry &entry : service.entries) {
    json shown_entry = json_of(entry.view);
    shown_entry["number"] = entry.number;
    object["entries"].push_back(shown_entry);
  }
  return object;
}

json json_of_full(const full_view &full) {
  json object = json_of(full.view);
  object["capacity"] = full.capacity;
  object["services_left_out"] = full.left_out;
  return object;
}

json json_of_outcome(const merge_options &options, const merge_outcome &outcome) {
  return {{"file", options.list.string()},
          {"scan", options.scan.string()},
          {"output", options.is_dry_run ? json() : json(options.output.string())},
          {"dry_run", options.is_dry_run},
          {"kept", outcome.kept},
          {"added", array_of(outcome.added, json_of_change)},
          {"removed", array_of(outcome.deleted, json_of_change)},
          {"dropped_entries", array_of(outcome.dropped, json_of)},
          {"duplicate_services", array_of(outcome.duplicates, json_of)},
          {"full_views", array_of(outcome.full, json_of_full)},
          {"notes", outcome.lost}};
}

void report_findings(const merge_options &options, const merge_outcome &outcome) {
  for (const std::string &lost : outcome.lost) {
    print_message(fmt::format("{}: {}", options.list.string(), lost));
  }
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

// "ALL 5, TV 5".
std::string entries_text(const changed_service &service) {
  std::string text;
  for (const placed_entry &entry : service.entries) {
    text += fmt::format("{}{} {}", text.empty() ? "" : ", ", label_of(entry.view), entry.number);
  }
  return text.empty() ? "no entry" : text;
}

void print_table(const std::vector<changed_service> &services) {
  fmt::print("  {:>3} {:>7} {:>5} {:>10} {:>3} {:>7} {:>4}  entries: name\n", "net", "network", "ts", "frequency",
             "pol", "service", "type");
  for (const changed_service &service : services) {
    const channel::identity &id = service.known.id;
    fmt::print("  {:>3} {:>7} {:>5} {:>10} {:>3} {:>7} {:>4}  {}: {}\n", id.net_index, id.network_id, id.ts_id,
               id.frequency, polarisation_letter(id), id.service_id, service.service_type, entries_text(service),
               shown(service.known.name));
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

void print_changes(const merge_options &options, const merge_outcome &outcome) {
  fmt::print("{}: {} added, {} deleted, {} kept\n", options.is_dry_run ? "dry run" : options.output.string(),
             counted(outcome.added.size(), "service"), outcome.deleted.size(), outcome.kept);
  if (!outcome.added.empty()) {
    fmt::print("Added:\n");
    print_table(outcome.added);
  }
  if (!outcome.deleted.empty()) {
    fmt::print("Deleted, and with them {}:\n", counted(favourites_of(outcome.deleted), "favourite"));
    print_table(outcome.deleted);
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

int run_merge(const merge_options &options) {
  if (options.output.empty() && !options.is_dry_run) {
    throw usage_error("--output (or --dry-run) is required");
  }
  const channel_file list(options.list);
  const channel_file scan(options.scan);
  scan.must_not_be(options.output);
  const merge_outcome outcome = merge_in_memory(list, scan);
  if (!options.is_dry_run) {
    save_list_as(options.output);
  }
  report(options, outcome);
  return outcome.has_findings() ? exit_findings : exit_done;
}

}  // namespace

command merge_command() {
  auto options = std::make_shared<merge_options>();
  return {
      .name = "merge",
      .summary = "Merge a new channel list into a channel file",
      .details = {"Services that LIST does not hold are added and numbered at the end of the views; services that SCAN "
                  "lacks are deleted with all their entries, favourites included; services in both stay as LIST has "
                  "them, and so do its settings. Both files are of version 10 and are only read. OUT is replaced as a "
                  "whole or not at all; it may be LIST, but not SCAN."},
      .exit_codes = {{"0", "merged (or, with --dry-run, could be)"},
                     {"1", "the same, with findings: entries of LIST that resolve to no service were dropped, services "
                           "that occur twice in SCAN were taken once, added services have no entry in a view because "
                           "it is full, or LIST holds what cannot be saved again"},
                     {"2", "nothing was written: bad usage, an input that cannot be read, is short or is of another "
                           "version, an output that cannot be written; or only the report could not be written"}},
      .examples = {"chlist merge channels.dat scan.dat --dry-run",
                   "chlist merge channels.dat scan.dat -o channels.dat"},
      .options =
          {{.names = "LIST", .target = &options->list, .about = "the channel file to start from", .is_required = true},
           {.names = "SCAN", .target = &options->scan, .about = "the new channel list", .is_required = true},
           {.names = "-o,--output", .target = &options->output, .about = "the channel file to write", .value = "OUT"},
           {.names = "--dry-run", .target = &options->is_dry_run, .about = "show what a merge would do; write nothing"},
           {.names = "--all",
            .target = &options->shows_all,
            .about = "tell every finding, not only the first ten of each kind"},
           {.names = "--json", .target = &options->as_json, .about = "report as JSON, every finding included"}},
      .run = [options] { return run_merge(*options); }};
}

}  // namespace chlist
