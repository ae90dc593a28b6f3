// `chlist import`: reads the input, fills the list, reports what was left out, saves the list, sums up.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "chlist/common_options.h"
#include "chlist/exchange/beside.h"
#include "chlist/exchange/exchange_report.h"
#include "chlist/exchange/formats.h"
#include "chlist/exchange/group_choice.h"
#include "chlist/exchange/known_transponders.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/new_list_file.h"
#include "chlist/exchange/source_names.h"
#include "chlist/exit_codes.h"
#include "chlist/fields/described.h"
#include "chlist/fields/where.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/distinct_files.h"
#include "chlist/files/faithful_load.h"
#include "chlist/files/file_line_up.h"
#include "chlist/files/input_file.h"
#include "chlist/files/standard_streams.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/messages.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct import_options {
  fs::path input;
  fs::path output;
  std::string from;
  std::string charset;
  std::string url;
  std::vector<std::string> sources;
  group_options groups;
  service_options services;
  std::string preferred;
  fs::path model;
  bool leaves_no_backup = false;
  bool shows_all = false;
  bool as_json = false;
};

// What an import comes to.
struct import_outcome {
  const list_source &source;
  const format &from;
  filled_list filled;
  loss_counts lost;
  std::size_t not_asked_for = 0;  // services
  companion beside;
};

// Of what is kept of a source alone: services that nobody asked for lose nothing.
loss_counts losses_of_reading(const import_outcome &result) {
  std::vector<made_file> asked_for;
  for (const source_file &each : result.beside.source.files) {
    asked_for.push_back({each.name, text_of(each)});
  }
  list_source source = source_of(asked_for, result.from.is_folder);
  source.url = result.source.url;
  loss_counts lost;
  result.from.read(source, lost);
  return lost;
}

import_outcome read_into_list(const import_options &options, const list_source &source, const format &from) {
  group_options groups = options.groups;
  import_outcome result{.source = source, .from = from, .filled = {}, .lost = {}, .beside = {}};
  fill_options filling;
  if (!options.preferred.empty()) {
    filling.preferred = preferences_named(options.preferred);
  }
  std::optional<line_up> model;
  if (!options.model.empty()) {
    filling.model = &model.emplace(line_up_in(channel_file(options.model)));
    follow_groups_of(*model, groups);
  }
  read_files files;
  loss_counts of_reading;
  line_up list = reading(source, [&] { return from.read(recorded(source, files), of_reading); });
  const std::vector<line_up_service> services_read = list.services;
  for (const std::string &name : options.sources) {
    rename_source(list, name, "source");
  }
  loss_counts of_filling;
  take_transponders(list, filling.model, of_filling);
  result.not_asked_for = choose_services(list, options.services);
  choose_groups(list, groups, of_filling);
  result.filled = fill_list(list, of_filling, filling);
  result.beside =
      companion_of_import({source, from, services_read, files}, list.services, result.filled, line_up_in_memory());
  result.beside.source.groups = groups;
  const bool is_a_part = result.not_asked_for > 0 && result.beside.source.has_text();
  result.lost = is_a_part ? losses_of_reading(result) : of_reading;
  result.lost.add(of_filling);
  return result;
}

// In the text of the source: of formats whose text is not kept the facts are, and not what else a reader passed over.
bool are_losses_kept(const import_options &options, const import_outcome &result) {
  return has_companion(options.output, result.beside) && result.beside.source.has_text();
}

std::string summary_of(const import_options &options, const import_outcome &result) {
  const list_counts &counts = result.filled.counts;
  const std::string output = name_of_output(options.output);
  std::string text =
      fmt::format("{}: {}, {} skipped\n", output, text_of(counts), counted(result.filled.skipped.size(), "line"));
  if (counts.favourite_groups > 0) {
    text += fmt::format("{}: {}\n", output, counted(counts.favourite_groups, "favourite group"));
  }
  if (result.not_asked_for > 0) {
    text += fmt::format("{}: {} not asked for\n", output, counted(result.not_asked_for, "service"));
  }
  if (const std::string note = result.source.read_as->text(); !note.empty()) {
    text += fmt::format("{}: {}\n", result.source.path.string(), note);
  }
  return text + losses_text(result.lost, title_of_losses(options.output, are_losses_kept(options, result)));
}

json json_of_outcome(const import_options &options, const import_outcome &result) {
  json document = {{"file", options.input.string()},
                   {"format", result.from.name},
                   {"charset", result.source.read_as->charset},
                   {"output", options.output.string()},
                   {"companion", json_of_companion(options.output, result.beside)}};
  document.put(json_of(result.filled.counts));
  document["not_asked_for"] = result.not_asked_for;
  document.put(json_of_remains(result.filled, result.lost));
  return document;
}

// What would take in more of the groups that there was no room for.
void report_choices(const fs::path &input, const std::vector<group_left_out> &groups) {
  const auto is_any = [&](bool is_cut) {
    return std::ranges::find(groups, is_cut, &group_left_out::is_cut) != groups.end();
  };
  if (is_any(false)) {
    print_message(input.string() + ": --bouquets chooses among groups; --groups genres makes genres of them instead");
  }
  if (is_any(true)) {
    print_message(input.string() + ": --split makes several groups of one that is too long");
  }
}

void report_findings(const import_options &options, const import_outcome &result) {
  if (options.as_json) {
    return;
  }
  const fs::path &input = result.source.path;
  report_skipped(input, result.filled.skipped, options.shows_all);
  report_left_out(input, result.lost);
  report_full_tables(input, result.filled, options.shows_all);
  report_choices(input, result.filled.groups_left_out);
}

void report(const import_options &options, json document, const std::string &summary, const new_list_file &target) {
  if (options.as_json) {
    document["backup"] = target.backup();
    print_report([&] { print_json(document); });
  } else {
    print_summary(options.output, summary + target.note());
  }
}

new_list_file target_of(const import_options &options) {
  return {options.output, !options.leaves_no_backup, "import " + options.input.string()};
}

// Formats of the whole file make one, whose bytes nobody touches.
int import_whole_file(const import_options &options, const list_source &source, const format &from) {
  const new_list_file target = target_of(options);
  target.write_bytes(reading(source, [&] { return from.to_channel_file(source.text); }));
  report(options, {{"file", options.input.string()}, {"format", from.name}, {"output", options.output.string()}},
         fmt::format("{}: the whole channel file from {}\n", name_of_output(options.output), from.name), target);
  return exit_done;
}

// A folder is read file by file, whatever file of it is named. A channel file that stands among them is none of them.
void must_not_be_within(const import_options &options, const list_source &source) {
  const fs::path folder = source.is_folder ? source.path : fs::absolute(source.path).parent_path();
  const fs::path place = fs::absolute(options.output).parent_path();
  if (fs::exists(options.output) && fs::equivalent(folder, place) &&
      !is_channel_file(read_beginning(options.output, 2))) {
    throw std::runtime_error(options.output.string() + ": is a part of the input");
  }
}

int run_import(const import_options &options) {
  must_leave_room_for_report(options.output, options.as_json);
  list_source source = source_at(options.input, options.charset);
  source.url = options.url;
  const format &from = format_to_read(options.from, source);
  must_differ(opened_as(options.input), options.output);
  if (from.is_folder && !is_standard_stream(options.input)) {
    must_not_be_within(options, source);
  }
  if (from.to_channel_file != nullptr) {
    return import_whole_file(options, source, from);
  }
  const import_outcome result = read_into_list(options, source, from);
  report_findings(options, result);
  if (result.filled.counts.services == 0) {
    throw std::runtime_error(source.path.string() + ": no service to import");
  }
  const new_list_file target = target_of(options);
  target.write_list(result.beside);
  report(options, json_of_outcome(options, result), summary_of(options, result), target);
  const bool is_kept = result.lost.rows().empty() || are_losses_kept(options, result);
  return result.filled.is_whole() && !result.lost.has_left_out() && is_kept ? exit_done : exit_findings;
}

}  // namespace

command import_command() {
  auto options = std::make_shared<import_options>();
  return {
      .name = "import",
      .summary = "Make a channel file from a list of another format",
      .details =
          {"The format is told by the contents and the name of INPUT; --from decides against that. Every source gets a "
           "network index of its own, in order of appearance from 1, unless INPUT says one. Frequencies are stored in "
           "kHz. Names of providers, genres and countries become groups. Services "
           "with video go to the TV view, those with only audio to the radio view, all of them to the ALL view. "
           "Channels without a number get the next one; in a channels.conf a separator ':@N' raises it, and one with a "
           "name begins a group, ':Name' or ':@N Name'. Lines that "
           "cannot be read and services that occur twice are reported, skipped, and take no number. What INPUT says "
           "and a channel file has no place for is counted, and kept beside it in OUTPUT.more.json, from where an "
           "export puts it back. OUTPUT is replaced as a whole or not at all; a channel "
           "file "
           "that is there already is kept as OUTPUT.bak and in its history, from where `chlist undo` takes it back "
           "(`chlist merge` brings a list up to date instead).",
           "Bouquets, and the groups of a channels.conf, become favourite groups: they are what somebody made, and a "
           "viewer finds them there. A list holds 20 of 40 services each; what is left out is named. --bouquets "
           "chooses, "
           "--split makes \"Name 1\", \"Name 2\" of one that is too long, and --groups makes genres of them, which "
           "hold "
           "any number of services, or nothing.",
           "--where takes what meets a condition; --only and --without take and leave out sources, providers and types "
           "by their names: of those that "
           "--only names, one of each kind is to match. A list holds 5,000 services, of which its views show 4,000 of "
           "television and 1,000 of radio. When there are more, those in groups come first, then those with a number "
           "in INPUT, then those that are free to air, and the rest as INPUT has them; --prefer orders otherwise.",
           "A list numbers its networks and its providers, genres and countries for itself. --like LIST takes the "
           "numbers "
           "from another channel file: a source has the network index that it has there, known by its name or its "
           "position, and groups have their ids and their order. Then `chlist merge` and `chlist diff` know the "
           "services of both lists for the same.",
           "A source without a position (\"S\" and \"S#1\" of older lists and of dvbv5) is named with --source, so "
           "that "
           "it is the same network as in other lists.",
           "A playlist (M3U) holds services whose addresses say network, transport stream and service ids: as exports "
           "write them, as references of Enigma2 (1:0:1:SID:TSID:ONID:...), as channel ids of VDR "
           "(S19.2E-1-1079-28006), "
           "or as --url says. Addresses tell no frequencies: --like takes those from a list that has them.",
           "Texts are UTF-8, or UTF-16 with its byte order mark; a line that is not UTF-8 is read as Latin-1 (ISO "
           "8859-1), unless --charset names what INPUT is of. CSV may have commas, semicolons or tabs between its "
           "cells, as the header line has them. Of the ways in which spreadsheets write a number, 1.0, 1.00 and 1,0 "
           "are "
           "read as 1; numbers with an exponent or with thousands set apart (1,234 or 1.234) are refused, since they "
           "could be others.",
           "INPUT is read once, so that it may be a pipe; - is standard input. What is larger than 16 MiB is refused, "
           "and so is a named pipe that nobody writes within five seconds. With -o - the channel file goes to "
           "standard output and the report to standard error."},
      .sections = {{"Formats", formats_to_read()}, {"Conditions", terms_of_conditions()}},
      .exit_codes =
          {{"0", "everything was imported; what a channel file has no place for stands beside it"},
           {"1", "imported, but lines were skipped, there was no room for something, or something is kept nowhere"},
           {"2", "nothing was written: bad usage, unreadable input, no service in it, or an output that "
                 "cannot be written; or only the report could not be written"}},
      .examples = {"chlist import channels.conf -o all_channel.dat", "chlist import services.csv -o all_channel.dat",
                   "chlist import --from vdr sat.txt -o all_channel.dat --json",
                   "chlist import channels.conf -o all_channel.dat --only S19.2E --without radio --where scrambled=no",
                   "chlist import enigma2 -o all_channel.dat --bouquets 'Favourites (TV),News' --split",
                   "chlist import rescan.conf -o scan.dat --like all_channel.dat",
                   "dvbv5-scan astra | chlist import - -o all_channel.dat --source S=S19.2E"},
      .options = {{.names = "INPUT",
                   .target = &options->input,
                   .about = "the file to read, or the folder of formats that have several files; - is standard input",
                   .is_required = true},
                  new_list_option(options->output),
                  {.names = "--from", .target = &options->from, .about = "the format of INPUT", .value = "FORMAT"},
                  {.names = "--charset",
                   .target = &options->charset,
                   .about = "the characters of INPUT, as ISO-8859-2, when it is neither UTF-8 nor UTF-16 with its mark",
                   .value = "NAME"},
                  {.names = "--url",
                   .target = &options->url,
                   .about = "M3U: how addresses hold ids, as `chlist export --url` writes them; {} stands for any text",
                   .value = "TEMPLATE"},
                  {.names = "--source",
                   .target = &options->sources,
                   .about = "what to call a source, as S=S13.0E or S#1=S19.2E; may be given several times",
                   .value = "NAME=SOURCE"},
                  {.names = "--groups",
                   .target = &options->groups.become,
                   .about = "what groups become (favourites)",
                   .value = "WHAT",
                   .choices = {"favourites", "genres", "none"}},
                  {.names = "--bouquets",
                   .target = &options->groups.chosen,
                   .about = "take these groups alone, in this order, with commas between; may be given several times",
                   .value = "NAMES"},
                  {.names = "--split",
                   .target = &options->groups.are_split,
                   .about = "make several favourite groups of one that is too long"},
                  {.names = "--like",
                   .target = &options->model,
                   .about = "take network indexes, the ids and order of groups, and frequencies that INPUT does not "
                            "tell, from this "
                            "channel file",
                   .value = "LIST"},
                  {.names = "--where",
                   .target = &options->services.where,
                   .about = "take only services that meet a condition; may be given several times",
                   .value = "CONDITION"},
                  {.names = "--only",
                   .target = &options->services.only,
                   .about = "take only these sources, providers or types (S19.2E, TV), with commas between; may be "
                            "given several times",
                   .value = "NAMES"},
                  {.names = "--without",
                   .target = &options->services.without,
                   .about = "leave these sources, providers or types out",
                   .value = "NAMES"},
                  {.names = "--prefer",
                   .target = &options->preferred,
                   .about = "what comes first when there is no room for all (favourites,numbered,free)",
                   .value = "ORDER"},
                  no_backup_option(options->leaves_no_backup),
                  all_findings_option(options->shows_all),
                  json_option(options->as_json)},
      .run = [options] { return run_import(*options); }};
}

}  // namespace chlist
