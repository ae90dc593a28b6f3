// `chlist import`: reads the input, fills the list, reports what was left out, saves the list, sums up.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "chlist/exchange/exchange_report.h"
#include "chlist/exchange/formats.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exit_codes.h"
#include "chlist/files/distinct_files.h"
#include "chlist/files/list_file.h"
#include "chlist/files/text_file.h"
#include "chlist/messages.h"
#include "chlist/report.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct import_options {
  fs::path input;
  fs::path output;
  std::string from;
  bool shows_all = false;
  bool as_json = false;
};

// What an import comes to.
struct import_outcome {
  std::string_view format_name;
  filled_list filled;
  loss_counts lost;
};

// Readers know nothing of paths.
template <class Read>
auto reading(const list_source &source, const Read &read) {
  try {
    return read();
  } catch (const std::runtime_error &error) {
    throw std::runtime_error(source.path.string() + ": " + error.what());
  }
}

import_outcome read_into_list(const list_source &source, const format &from) {
  import_outcome result;
  result.format_name = from.name;
  result.filled = fill_list(reading(source, [&] { return from.read(source, result.lost); }), result.lost);
  return result;
}

void print_summary(const import_options &options, const import_outcome &result) {
  const list_counts &counts = result.filled.counts;
  fmt::print("{}: {} ({} TV, {} radio, {} other) of {} on {} of {}, {} skipped\n", options.output.string(),
             counted(counts.services, "service"), counts.tv, counts.radio, counts.services - counts.tv - counts.radio,
             counted(counts.providers, "provider"), counted(counts.transponders, "transponder"),
             counted(counts.sources, "source"), counted(result.filled.skipped.size(), "line"));
  if (counts.favourite_groups > 0) {
    fmt::print("{}: {}\n", options.output.string(), counted(counts.favourite_groups, "favourite group"));
  }
  print_losses(result.lost, "Not carried by the channel file:");
}

json json_of_outcome(const import_options &options, const import_outcome &result) {
  const list_counts &counts = result.filled.counts;
  return {{"file", options.input.string()},
          {"format", result.format_name},
          {"output", options.output.string()},
          {"services", counts.services},
          {"tv", counts.tv},
          {"radio", counts.radio},
          {"providers", counts.providers},
          {"transponders", counts.transponders},
          {"sources", counts.sources},
          {"favourite_groups", counts.favourite_groups},
          {"skipped_lines", json_of_skipped(result.filled.skipped)},
          {"notes", result.filled.left_out},
          {"left_out", json_of_left_out(result.lost)},
          {"not_carried", json_of_losses(result.lost)}};
}

void report_findings(const import_options &options, const import_outcome &result) {
  if (options.as_json) {
    return;
  }
  report_skipped(options.input, result.filled.skipped, options.shows_all);
  report_left_out(options.input, result.lost);
  for (const std::string &text : result.filled.left_out) {
    print_message(fmt::format("{}: {}", options.input.string(), text));
  }
}

void report(const import_options &options, const import_outcome &result) {
  print_report([&] {
    if (options.as_json) {
      print_json(json_of_outcome(options, result));
    } else {
      print_summary(options, result);
    }
  });
}

// Formats of the whole file make one, whose bytes nobody touches.
int import_whole_file(const import_options &options, const list_source &source, const format &from) {
  write_text_file(options.output, reading(source, [&] { return from.to_channel_file(source.text); }));
  print_report([&] {
    if (options.as_json) {
      print_json({{"file", options.input.string()}, {"format", from.name}, {"output", options.output.string()}});
    } else {
      fmt::print("{}: the whole channel file from {}\n", options.output.string(), from.name);
    }
  });
  return exit_done;
}

// A folder is read file by file, whatever file of it is named.
void must_not_be_within(const import_options &options) {
  const fs::path folder = fs::is_directory(options.input) ? options.input : fs::absolute(options.input).parent_path();
  const fs::path place = fs::absolute(options.output).parent_path();
  if (fs::exists(options.output) && fs::equivalent(folder, place)) {
    throw std::runtime_error(options.output.string() + ": is a part of the input");
  }
}

int run_import(const import_options &options) {
  const list_source source = source_at(options.input);
  const format &from = format_to_read(options.from, source);
  must_differ(options.input, options.output);
  if (from.is_folder) {
    must_not_be_within(options);
  }
  if (from.to_channel_file != nullptr) {
    return import_whole_file(options, source, from);
  }
  const import_outcome result = read_into_list(source, from);
  report_findings(options, result);
  if (result.filled.counts.services == 0) {
    throw std::runtime_error(options.input.string() + ": no service to import");
  }
  save_list_as(options.output);
  report(options, result);
  return result.filled.is_whole() && !result.lost.has_left_out() ? exit_done : exit_findings;
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
           "kHz. Names of providers, genres and countries become groups, and favourites favourite groups. Services "
           "with video go to the TV view, those with only audio to the radio view, all of them to the ALL view. "
           "Channels without a number get the next one; in a channels.conf a separator ':@N' raises it. Lines that "
           "cannot be read and services that occur twice are reported, skipped, and take no number. What INPUT says "
           "and a channel file has no place for is counted. OUTPUT is replaced as a whole or not at all."},
      .sections = {{"Formats", formats_to_read()}},
      .exit_codes = {{"0", "everything was imported"},
                     {"1", "imported, but lines were skipped, or the list had no room for something"},
                     {"2", "nothing was written: bad usage, unreadable input, no service in it, or an output that "
                           "cannot be written; or only the report could not be written"}},
      .examples = {"chlist import channels.conf -o all_channel.dat", "chlist import services.csv -o all_channel.dat",
                   "chlist import --from vdr sat.txt -o all_channel.dat --json"},
      .options = {{.names = "INPUT",
                   .target = &options->input,
                   .about = "the file to read, or the folder of formats that have several files",
                   .is_required = true},
                  {.names = "-o,--output",
                   .target = &options->output,
                   .about = "the channel file to write",
                   .value = "OUTPUT",
                   .is_required = true},
                  {.names = "--from", .target = &options->from, .about = "the format of INPUT", .value = "FORMAT"},
                  {.names = "--all",
                   .target = &options->shows_all,
                   .about = "tell every line that is skipped, not only the first ten of each kind"},
                  {.names = "--json", .target = &options->as_json, .about = "print the report as JSON"}},
      .run = [options] { return run_import(*options); }};
}

}  // namespace chlist
