// `chlist import`: reads the input, fills the list, reports what was left out, saves the list, sums up.
#include "chlist/exchange/import.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/uncarried.h"
#include "chlist/exchange/vdr_channels_conf.h"
#include "chlist/exit_codes.h"
#include "chlist/files/distinct_files.h"
#include "chlist/files/list_file.h"
#include "chlist/report.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr const char *description = "Make a channel file from a VDR channels.conf";

constexpr const char *details =
    "Every source gets a network index of its own, in order of appearance from 1. Frequencies are stored in kHz.\n"
    "Provider names become the provider groups of their services.\n"
    "Services with video go to the TV view, those with only audio to the radio view, all of them to the ALL view.\n"
    "Channels are numbered from 1; a separator ':@N' raises the number. Lines that cannot be read and services that\n"
    "occur twice are reported, skipped, and take no number. OUTPUT is replaced as a whole or not at all.\n"
    "\n"
    "Exit codes:\n"
    "  0  everything was imported\n"
    "  1  imported, but lines were skipped, or the list had no room for something\n"
    "  2  nothing was written: bad usage, unreadable input, no service in it, or an output that cannot be written;\n"
    "     or only the report could not be written";

struct import_options {
  fs::path input;
  fs::path output;
};

// Reading throws where it fails, as in a directory.
std::string read_whole_file(const fs::path &path) {
  try {
    if (std::ifstream in(path, std::ios::binary); in) {
      return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
  } catch (const std::ios_base::failure &) {
  }
  throw std::runtime_error(path.string() + ": cannot be read");
}

// What an import comes to.
struct outcome {
  std::vector<skipped_line> skipped;
  std::vector<std::string> left_out;  // what the list had no room for
  uncarried_counts uncarried;
  std::size_t groups = 0;
  list_counts counts;
};

outcome fill_list(vdr_line_up line_up) {
  outcome result;
  result.skipped = std::move(line_up.skipped);
  result.groups = line_up.groups;
  list_builder builder;
  for (const vdr_service &service : line_up.services) {
    if (auto reason = builder.add(service)) {
      result.skipped.push_back({service.line, std::move(*reason)});
    } else {
      result.uncarried.add(service);
    }
  }
  std::ranges::stable_sort(result.skipped, {}, &skipped_line::line);
  result.left_out = builder.build_views();
  if (auto providers = builder.providers_left_out()) {
    result.left_out.push_back(std::move(*providers));
  }
  result.counts = builder.counts();
  return result;
}

void report_findings(const import_options &options, const outcome &result) {
  for (const skipped_line &skipped : result.skipped) {
    fmt::print(stderr, "{}:{}: skipped: {}\n", options.input.string(), skipped.line, skipped.reason);
  }
  for (const std::string &text : result.left_out) {
    fmt::print(stderr, "{}: {}\n", options.input.string(), text);
  }
}

void print_summary(const import_options &options, const outcome &result) {
  const list_counts &counts = result.counts;
  fmt::print("{}: {} ({} TV, {} radio, {} other) of {} on {} of {}, {} skipped\n", options.output.string(),
             counted(counts.services, "service"), counts.tv, counts.radio, counts.services - counts.tv - counts.radio,
             counted(counts.providers, "provider"), counted(counts.transponders, "transponder"),
             counted(counts.sources, "source"), counted(result.skipped.size(), "line"));
  const auto rows = result.uncarried.rows();
  if (!rows.empty() || result.groups > 0) {
    fmt::print("Not carried by the channel file:\n");
  }
  for (const auto &row : rows) {
    fmt::print("  {:<34}{:>5} of the services\n", row.what, row.services);
  }
  if (result.groups > 0) {
    fmt::print("  {:<34}{:>5}\n", "group names", result.groups);
  }
}

int run_import(const import_options &options) {
  must_differ(options.input, options.output);
  const outcome result = fill_list(parse_vdr_channels_conf(read_whole_file(options.input)));
  report_findings(options, result);
  if (result.counts.services == 0) {
    throw std::runtime_error(options.input.string() + ": no service to import");
  }
  save_list_as(options.output);
  print_report([&] { print_summary(options, result); });
  return result.skipped.empty() && result.left_out.empty() ? exit_done : exit_findings;
}

}  // namespace

void add_import(CLI::App &app, int &exit_code) {
  CLI::App *command = app.add_subcommand("import", description);
  command->footer(details);
  auto options = std::make_shared<import_options>();
  command->add_option("INPUT", options->input, "the channels.conf to read")->required();
  command->add_option("-o,--output", options->output, "the channel file to write")->required()->type_name("OUTPUT");
  command->callback([options, &exit_code] { exit_code = run_import(*options); });
}

}  // namespace chlist
