// `chlist export`: loads the list, takes it as a line-up, lets the format write it, sums up what that has no place for.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "chlist/common_options.h"
#include "chlist/exchange/beside.h"
#include "chlist/exchange/exchange_report.h"
#include "chlist/exchange/formats.h"
#include "chlist/exchange/other_tuning.h"
#include "chlist/exchange/round_trip.h"
#include "chlist/exchange/source_names.h"
#include "chlist/exit_codes.h"
#include "chlist/files/file_line_up.h"
#include "chlist/files/kept_in_step.h"
#include "chlist/files/replacement.h"
#include "chlist/files/standard_streams.h"
#include "chlist/files/text_folder.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct export_options {
  fs::path input;
  fs::path output;
  std::string to;
  std::vector<std::string> sources;
  fs::path tuning;
  write_options writing;
  bool as_json = false;
};

// What an export comes to.
struct export_outcome {
  const format &to;
  std::size_t services = 0;
  std::size_t favourite_groups = 0;
  loss_counts lost;
  std::vector<std::string> notes;
  companion beside;
};

void write_one(const fs::path &output, std::string_view text) {
  if (is_standard_stream(output)) {
    write_standard_output(text);
  } else {
    write_text_file(output, text);
  }
}

void write_files(const fs::path &output, const format &to, const std::vector<made_file> &files) {
  if (to.is_folder) {
    write_text_folder(output, files);
  } else {
    write_one(output, files.front().text);
  }
}

// "12 bytes behind the last record: not saved": what follows is said to whoever saves the list.
std::string_view what_is_lost(std::string_view change) { return change.substr(0, change.rfind(": ")); }

// One that cannot be read is told, and the list goes out without it.
void take_beside(const export_options &options, line_up &list, export_outcome &result) {
  try {
    result.beside = companion_beside(options.input).value_or(companion());
    if (result.beside.is_out_of_step) {
      result.notes.push_back(note_out_of_step(options.input));
    }
    const std::size_t unknown = put_back(list, result.beside);
    result.lost.leave_out("services that stand beside the list and not in it", unknown);
  } catch (const bad_companion &error) {
    result.lost.leave_out("what stands beside the list", 1, error.what());
  }
}

void export_line_up(const channel_file &input, const export_options &options, export_outcome &result) {
  input.must_be_current();
  const file_records records(input.bytes());
  must_be_whole(input, records);
  for (const std::string &change : not_saved_again(records)) {
    result.lost.add(what_is_lost(change));
  }
  line_up list = line_up_of(records.list());
  take_beside(options, list, result);
  if (!options.tuning.empty()) {
    take_tuning_of(options.tuning, list);
  }
  for (const std::string &source : options.sources) {
    rename_source(list, source, "network");
  }
  exported_list made = export_list({records.list(), list}, result.beside, result.to, options.writing);
  write_files(options.output, result.to, made.files);
  result.services = made.services;
  result.favourite_groups = made.favourite_groups;
  std::ranges::move(made.notes, std::back_inserter(result.notes));
  result.lost.add(made.lost);
}

void export_whole_file(const channel_file &input, const export_options &options, const format &to) {
  write_one(options.output, to.from_channel_file(input));
}

std::string summary_of(const export_options &options, const export_outcome &result) {
  const std::string output = name_of_output(options.output);
  if (result.to.from_channel_file != nullptr) {
    return fmt::format("{}: the whole channel file as {}\n", output, result.to.name);
  }
  std::string text = fmt::format("{}: {} and {} as {}\n", output, counted(result.services, "service"),
                                 counted(result.favourite_groups, "favourite group"), result.to.name);
  for (const std::string &note : result.notes) {
    text += fmt::format("{}: {}\n", output, note);
  }
  return text + losses_text(result.lost, fmt::format("Not carried by {}:", result.to.name));
}

json json_of_outcome(const export_options &options, const export_outcome &result) {
  return {{"file", options.input.string()},
          {"output", options.output.string()},
          {"format", result.to.name},
          {"services", result.services},
          {"favourite_groups", result.favourite_groups},
          {"notes", result.notes},
          {"left_out", json_of_left_out(result.lost)},
          {"not_carried", json_of_losses(result.lost)}};
}

void report(const export_options &options, const export_outcome &result) {
  if (options.as_json) {
    print_report([&] { print_json(json_of_outcome(options, result)); });
  } else {
    report_left_out(options.input, result.lost);
    print_summary(options.output, summary_of(options, result));
  }
}

void must_be_one_file(const export_options &options, const format &to) {
  if (to.is_folder && is_standard_stream(options.output)) {
    throw std::runtime_error(fmt::format("standard output: {} is a folder of several files; -o names it", to.name));
  }
}

int run_export(const export_options &options) {
  must_leave_room_for_report(options.output, options.as_json);
  const channel_file input(options.input);
  input.must_not_be(options.output);
  export_outcome result{.to = format_to_write(options.to, options.output), .lost = {}, .notes = {}, .beside = {}};
  must_be_one_file(options, result.to);
  if (options.writing.names_picons && !result.to.is_folder) {
    throw usage_error(fmt::format("--picons: {} has no pictures; a folder of Enigma2 has", result.to.name));
  }
  if (result.to.from_channel_file != nullptr) {
    export_whole_file(input, options, result.to);
  } else {
    export_line_up(input, options, result);
  }
  report(options, result);
  return result.lost.rows().empty() && !result.beside.is_out_of_step ? exit_done : exit_findings;
}

}  // namespace

command export_command() {
  auto options = std::make_shared<export_options>();
  return {
      .name = "export",
      .summary = "Make a list of another format from a channel file",
      .details =
          {"The format is told by the name of OUT; --to decides against that. Services come in the order of the "
           "ALL view, those that it does not show behind it. What is written is read again, and whatever does not "
           "come back as it was is counted. OUT is replaced as a whole or not at all; a folder must be new or empty. "
           "JSON carries "
           "every byte: importing it gives the same file again.",
           "What stands beside FILE in FILE.more.json is put back: an export to the format that FILE was imported from "
           "is the text that was imported, in its encoding, and only what was edited since differs. --tuning takes "
           "symbol rates, "
           "modulation, streams and CA ids from OTHER, for the services that both have and for others on the same "
           "transponders.",
           "With -o - the list goes to standard output, in the format that --to names, and the report to standard "
           "error."},
      .sections = {{"Formats", formats_to_write()}},
      .exit_codes = {{"0", "everything was exported"},
                     {"1",
                      "exported, but something is not carried by the format or was left out: the report says what"},
                     {"2", "nothing was written: bad usage, unreadable input, or an output that cannot be written; or "
                           "only the report could not be written"}},
      .examples = {"chlist export all_channel.dat -o services.csv --columns number,name,provider",
                   "chlist export all_channel.dat -o channels.conf --source 'Meridian 1=S13.5E'",
                   "chlist export all_channel.dat -o tv.m3u --url 'http://box:8001/{network_id}:{ts_id}:{service_id}'",
                   "chlist export all_channel.dat -o all_channel.json",
                   "chlist export all_channel.dat -o - --to csv | less"},
      .options =
          {{.names = "FILE", .target = &options->input, .about = "the channel file to read", .is_required = true},
           {.names = "-o,--output",
            .target = &options->output,
            .about = "the file to write, or the folder of formats of several files; - is standard output",
            .value = "OUT",
            .is_required = true},
           {.names = "--to", .target = &options->to, .about = "the format of OUT", .value = "FORMAT"},
           {.names = "--source",
            .target = &options->sources,
            .about = "what to call a network's source, when its name is not like S19.2E; may be given several times",
            .value = "NAME=SOURCE"},
           {.names = "--tuning",
            .target = &options->tuning,
            .about = "take symbol rates, modulation, streams and CA ids from this list, of any format that can be read",
            .value = "OTHER"},
           {.names = "--columns",
            .target = &options->writing.columns,
            .about = "CSV: the columns, by name, separated by commas",
            .value = "NAMES"},
           {.names = "--url",
            .target = &options->writing.url,
            .about = "M3U: the address of a service, where {network_id}, {ts_id:x}, {service_id}, {number} and others "
                     "stand for its fields, with :x in hexadecimal digits",
            .value = "URL"},
           {.names = "--favourites",
            .target = &options->writing.is_by_favourites,
            .about = "M3U: group by favourite groups, not by providers"},
           {.names = "--picons",
            .target = &options->writing.names_picons,
            .about = "Enigma2: write picons.csv as well, with the name of each service's picture"},
           json_option(options->as_json)},
      .run = [options] { return run_export(*options); }};
}

}  // namespace chlist
