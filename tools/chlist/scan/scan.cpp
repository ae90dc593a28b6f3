// `chlist scan`: reads captures, makes a line-up of them, fills the list, reports, and saves it.
#include <fmt/format.h>

#include <channel/channel.h>

#include <chrono>
#include <filesystem>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "chlist/commands.h"
#include "chlist/common_options.h"
#include "chlist/exchange/beside.h"
#include "chlist/exchange/exchange_report.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/group_choice.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/new_list_file.h"
#include "chlist/exchange/vdr/vdr_fields.h"
#include "chlist/exit_codes.h"
#include "chlist/fields/described.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/distinct_files.h"
#include "chlist/files/file_line_up.h"
#include "chlist/files/standard_streams.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/messages.h"
#include "chlist/report.h"
#include "chlist/scan/broadcast_time.h"
#include "chlist/scan/descriptors.h"
#include "chlist/scan/scanned_line_up.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

constexpr int usual_seconds = 30;

group_options genres_of_bouquets() {
  group_options groups;
  groups.become = "genres";
  return groups;
}

struct scan_command_options {
  std::vector<std::string> captures;
  std::filesystem::path output;
  std::vector<std::string> tuned;
  std::string source;
  int seconds = usual_seconds;
  std::filesystem::path model;
  group_options groups = genres_of_bouquets();
  bool leaves_others = false;
  bool leaves_no_backup = false;
  bool shows_all = false;
  bool as_json = false;
};

// What a scan comes to.
struct scan_outcome {
  std::vector<capture> captures;
  scanned_line_up made;
  filled_list filled;
  loss_counts lost;
  companion beside;

  [[nodiscard]] bool has_findings() const {
    return std::ranges::any_of(made.captures, [](const auto &each) { return !each.findings.empty(); });
  }
};

constexpr std::string_view as_network_says = "-";

std::optional<tuned_place> tuned_place_in(const std::string &text) {
  if (text == as_network_says) {
    return std::nullopt;
  }
  const auto place = read_tuned_place(text);
  if (!place) {
    throw usage_error(fmt::format("--tuned: {} is not a frequency in MHz with its polarisation, as 11493H, 10773.25V "
                                  "or 346",
                                  shown(text)));
  }
  return place;
}

void must_have_each_its_frequency(const scan_command_options &options) {
  if (!options.tuned.empty() && options.tuned.size() != options.captures.size()) {
    throw usage_error(fmt::format("--tuned: there are {} of it and {}: it is said of each, in their order, as - of "
                                  "those whose network tells it",
                                  options.tuned.size(), counted(options.captures.size(), "capture")));
  }
}

std::string source_said(const std::string &text) {
  try {
    return text.empty() ? text : read_source(text);
  } catch (const bad_line &bad) {
    throw usage_error("--source: " + bad.reason);
  }
}

capture read_one(const scan_command_options &options, std::size_t at) {
  const std::string &name = options.captures[at];
  const auto tuned = options.tuned.empty() ? std::nullopt : tuned_place_in(options.tuned[at]);
  if (!is_network_address(name)) {
    must_differ(opened_as(name), options.output);
  }
  const auto input = open_capture(name, std::chrono::seconds(options.seconds));
  return {name_of_input(name), tuned, read_whole(*input)};
}

scan_outcome scanned(const scan_command_options &options) {
  scan_outcome outcome;
  const scan_options making = {source_said(options.source), options.leaves_others};
  for (std::size_t at = 0; at < options.captures.size(); ++at) {
    outcome.captures.push_back(read_one(options, at));
  }
  outcome.made = line_up_of(outcome.captures, making, outcome.lost);
  group_options groups = options.groups;
  fill_options filling;
  std::optional<line_up> model;
  if (!options.model.empty()) {
    filling.model = &model.emplace(line_up_in(channel_file(options.model)));
    follow_groups_of(*model, groups);
  }
  choose_groups(outcome.made.list, groups, outcome.lost);
  outcome.filled = fill_list(outcome.made.list, outcome.lost, filling);
  outcome.beside = companion_of_services(outcome.made.list.services, outcome.filled.filed, line_up_in_memory());
  return outcome;
}

void report_findings(const scan_command_options &options, const scan_outcome &outcome) {
  for (std::size_t at = 0; at < outcome.captures.size(); ++at) {
    const std::filesystem::path name = outcome.captures[at].name;
    const auto itself = [](const std::string &text) { return text; };
    print_messages<std::string>(name, "findings", outcome.made.captures[at].findings, options.shows_all, itself);
    print_messages<std::string>(name, "notes", outcome.made.captures[at].notes, options.shows_all, itself);
  }
  report_skipped(options.output, outcome.filled.skipped, options.shows_all);
  report_left_out(options.output, outcome.lost);
  report_full_tables(options.output, outcome.filled, options.shows_all);
}

std::string place_text(const capture_summary &summary) {
  if (summary.frequency_khz == 0) {
    return "at an unknown frequency";
  }
  const bool is_satellite = summary.source.starts_with('S');
  return fmt::format("{} kHz{}", summary.frequency_khz, !is_satellite ? "" : summary.is_vertical ? " V" : " H");
}

std::string capture_text(const capture &from, const capture_summary &summary) {
  const auto time = from.read.tables.time ? broadcast_time_text(*from.read.tables.time) : std::nullopt;
  return fmt::format("{}: {} of {}, transport stream {} of network {}{}{}\n", from.name, place_text(summary),
                     summary.source.empty() ? "an unknown source" : summary.source, summary.ts_id, summary.network_id,
                     summary.network_name.empty() ? "" : fmt::format(" ({})", shown(summary.network_name)),
                     time ? ", " + *time : "");
}

std::string summary_of(const scan_command_options &options, const scan_outcome &outcome) {
  std::string text;
  for (std::size_t at = 0; at < outcome.captures.size(); ++at) {
    if (outcome.captures[at].read.packets > 0) {
      text += capture_text(outcome.captures[at], outcome.made.captures[at]);
    }
  }
  return text + fmt::format("{}: {}\n", name_of_output(options.output), text_of(outcome.filled.counts)) +
         losses_text(outcome.lost, title_of_losses(options.output, has_companion(options.output, outcome.beside)));
}

json json_of_systems(const broadcast_tables &tables) {
  json systems = json::array();
  for (const conditional_access &each : conditional_access_in(tables.conditional_access)) {
    systems.push_back({{"system_id", each.system_id}, {"pid", each.pid}});
  }
  return systems;
}

json json_of_capture(const capture &from, const capture_summary &summary) {
  const read_capture &read = from.read;
  const auto time = read.tables.time ? broadcast_time_text(*read.tables.time) : std::nullopt;
  return {{"file", from.name},
          {"bytes", read.bytes},
          {"packets", read.packets},
          {"skipped_bytes", read.skipped_bytes},
          {"broken_packets", read.lost.broken_packets},
          {"gaps", read.lost.gaps},
          {"scrambled_packets", read.lost.scrambled},
          {"wrong_crc", read.lost.wrong_crc},
          {"malformed_sections", read.lost.malformed},
          {"changed_tables", read.tables.changes},
          {"network_name", summary.network_name},
          {"network_id", summary.network_id},
          {"ts_id", summary.ts_id},
          {"source", summary.source},
          {"frequency", summary.frequency_khz},
          {"polarisation", summary.is_vertical ? "V" : "H"},
          {"time", time ? json(*time) : json()},
          {"conditional_access", json_of_systems(read.tables)},
          {"findings", summary.findings},
          {"notes", summary.notes}};
}

json json_of_outcome(const scan_command_options &options, const scan_outcome &outcome) {
  json captures = json::array();
  for (std::size_t at = 0; at < outcome.captures.size(); ++at) {
    captures.push_back(json_of_capture(outcome.captures[at], outcome.made.captures[at]));
  }
  json document = {{"captures", std::move(captures)},
                   {"output", options.output.string()},
                   {"companion", json_of_companion(options.output, outcome.beside)}};
  document.put(json_of(outcome.filled.counts));
  document.put(json_of_remains(outcome.filled, outcome.lost));
  return document;
}

int run_scan(const scan_command_options &options) {
  must_leave_room_for_report(options.output, options.as_json);
  must_have_each_its_frequency(options);
  const scan_outcome outcome = scanned(options);
  if (!options.as_json) {
    report_findings(options, outcome);
  }
  if (outcome.filled.counts.services == 0) {
    throw std::runtime_error("no service was found");
  }
  const new_list_file target(options.output, !options.leaves_no_backup, "scan");
  target.write_list(outcome.beside);
  if (options.as_json) {
    json document = json_of_outcome(options, outcome);
    document["backup"] = target.backup();
    print_report([&] { print_json(document); });
  } else {
    print_summary(options.output, summary_of(options, outcome) + target.note());
  }
  const bool is_kept = outcome.lost.rows().empty() || has_companion(options.output, outcome.beside);
  const bool is_whole = outcome.filled.is_whole() && !outcome.lost.has_left_out() && !outcome.has_findings();
  return is_whole && is_kept ? exit_done : exit_findings;
}

}  // namespace

command scan_command() {
  auto options = std::make_shared<scan_command_options>();
  return {
      .name = "scan",
      .summary = "Make a channel file of captures from the air",
      .details =
          {"A CAPTURE is an MPEG transport stream of one transponder, as receivers and tuner programs record it: "
           "packets "
           "of 188, 192 or 204 bytes, with the tables of DVB. It is a file, - for standard input, or an address of the "
           "network, udp://ADDRESS:PORT or rtp://ADDRESS:PORT, which is listened to for --seconds; a group of "
           "multicast is joined, with ?localaddr=ADDRESS behind it on that interface. Some seconds are enough, since "
           "tables are sent again and again: 10 for all that a transponder tells, 30 where it tells of others. "
           "Captures of one transponder are one; where they differ the later one counts.",
           "Services come with their names as they are broadcast, their providers, types, PIDs and whether they are "
           "scrambled; transponders with their frequency in kHz, from the network's table. --tuned says the frequency "
           "where the network does not, or says another one: once for each CAPTURE, in their order, - where the "
           "network's counts. Sources are named by the position of their satellite, S19.2E, or C and T; --source "
           "names them otherwise. Services of other transponders, of which there is no capture, come without PIDs, "
           "when the network tells where they are; --captured-only leaves them out.",
           "Numbers are the logical channel numbers of the network. A service of high definition that has a number "
           "for a receiver like it changes numbers with its twin. Of several services with one number television "
           "keeps it before radio, and then what CAPTURE has first; the others get the first free one from 800 to "
           "999, or behind the last. Services without a number follow behind. Those that the network hides are "
           "skipped when zapping. Bouquets become genres; --groups makes favourite groups of them, or nothing.",
           "The list is a new one: `chlist merge LIST OUTPUT` brings a list up to date with it. --like LIST takes "
           "the network indexes and the ids and order of groups from there. What a channel file cannot hold, such as "
           "symbol rates and languages, is kept beside it in OUTPUT.more.json. OUTPUT is replaced as a whole or not at "
           "all; a channel file that is there already is kept as OUTPUT.bak. With -o - the channel file goes to "
           "standard output and the report to standard error."},
      .exit_codes = {{"0", "everything that the captures tell of came through"},
                     {"1", "made, but a table or a frequency is missing, or something was left out"},
                     {"2", "nothing was written: bad usage, an unreadable capture, no service in any, or an output "
                           "that cannot be written; or only the report could not be written"}},
      .examples = {"chlist scan astra-11493h.ts -o new.dat",
                   "chlist scan 11493h.ts 11362h.ts --tuned 11493.75H --tuned 11362.25H --source S19.2E -o new.dat",
                   "chlist scan 'rtp://239.1.1.1:5000' --seconds 10 -o new.dat",
                   "chlist scan *.ts --like own.dat -o new.dat && chlist merge own.dat new.dat -o own.dat"},
      .options = {{.names = "CAPTURE",
                   .target = &options->captures,
                   .about = "a file, an address of the network, or - for standard input; several are read in turn",
                   .is_required = true},
                  new_list_option(options->output),
                  {.names = "--tuned",
                   .target = &options->tuned,
                   .about = "the frequency of a capture in MHz, of a satellite with H, V, L or R, as 11493H; once for "
                            "each, in their order",
                   .value = "FREQUENCY"},
                  {.names = "--source",
                   .target = &options->source,
                   .about = "what the captures are received from, as S19.2E, C or T",
                   .value = "SOURCE"},
                  {.names = "--seconds",
                   .target = &options->seconds,
                   .about = fmt::format("how long to listen to an address of the network ({})", usual_seconds),
                   .least_and_most = std::pair(1, 3600)},
                  {.names = "--captured-only",
                   .target = &options->leaves_others,
                   .about = "leave out services of transponders of which there is no capture"},
                  {.names = "--groups",
                   .target = &options->groups.become,
                   .about = "what bouquets become (genres)",
                   .value = "WHAT",
                   .choices = {"favourites", "genres", "none"}},
                  {.names = "--bouquets",
                   .target = &options->groups.chosen,
                   .about = "take these bouquets alone, with commas between; may be given several times",
                   .value = "NAMES"},
                  {.names = "--like",
                   .target = &options->model,
                   .about = "take network indexes and the ids and order of groups from this channel file",
                   .value = "LIST"},
                  no_backup_option(options->leaves_no_backup),
                  all_findings_option(options->shows_all),
                  json_option(options->as_json)},
      .run = [options] { return run_scan(*options); }};
}

}  // namespace chlist
