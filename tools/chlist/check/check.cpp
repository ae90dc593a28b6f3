// `chlist check`: reads the bytes, whatever they are, and prints the findings.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <string>

#include "chlist/check/findings.h"
#include "chlist/check/rules.h"
#include "chlist/common_options.h"
#include "chlist/exchange/formats.h"
#include "chlist/exit_codes.h"
#include "chlist/files/channel_file.h"
#include "chlist/first_of_a_kind.h"
#include "chlist/report.h"
#include "chlist/terminal.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct check_options {
  fs::path file;
  bool shows_all = false;
  bool as_json = false;
};

json json_of_finding(const finding &found) {
  return {{"offset", found.offset},
          {"severity", name_of(found.level)},
          {"kind", found.kind},
          {"message", found.what},
          {"consequence", found.consequence}};
}

json json_of_findings(const check_options &options, const file_findings &result) {
  return {{"file", options.file.string()},
          {"bytes", result.size},
          {"version", result.version},
          {"networks", result.networks},
          {"transponders", result.transponders},
          {"services", result.services},
          {"error_count", result.count(severity::error)},
          {"warning_count", result.count(severity::warning)},
          {"note_count", result.count(severity::note)},
          {"findings", array_of(result.findings, json_of_finding)}};
}

constexpr style style_of(severity level) {
  constexpr style styles[] = {style::red, style::yellow, style::dim};
  return styles[static_cast<std::size_t>(level)];
}

// A consequence stands once below all that have it in a row.
void print_findings(const file_findings &result, severity level, bool shows_all) {
  first_of_a_kind printed(shows_all);
  const std::string *consequence = nullptr;
  const auto end_row = [&consequence] {
    if (consequence != nullptr) {
      fmt::print("{:>13}{}\n", "", painted("-> " + *consequence, style::dim));
    }
  };
  for (const finding &found : result.findings) {
    if (found.level != level || !printed.takes(std::string(found.kind))) {
      continue;
    }
    if (consequence != nullptr && *consequence != found.consequence) {
      end_row();
    }
    consequence = &found.consequence;
    fmt::print("  {:>9}  {}\n", found.offset, found.what);
  }
  end_row();
  for (const auto &[kind, count] : printed.left_out()) {
    fmt::print("  {:>9}  and {} more: {} (--all)\n", "...", count, kind);
  }
}

void print_report_of(const check_options &options, const file_findings &result) {
  fmt::print("{}: {}, version {}: {}, {}, {}\n", harmless(options.file.string()), counted(result.size, "byte"),
             result.version, counted(result.networks, "network"), counted(result.transponders, "transponder"),
             counted(result.services, "service"));
  for (const severity level : {severity::error, severity::warning, severity::note}) {
    if (const std::size_t count = result.count(level); count > 0) {
      fmt::print("{}\n", painted(counted(count, name_of(level)) + ':', style_of(level)));
      print_findings(result, level, options.shows_all);
    }
  }
  if (result.is_sound()) {
    fmt::print("{}\n", painted("Nothing is wrong.", style::green));
  }
}

int run_check(const check_options &options) {
  const std::vector<std::byte> bytes = bytes_of_file(options.file);
  file_findings result = findings_in(bytes);
  if (!is_known_version(result.version)) {
    must_be_no_other_list(options.file);
  }
  if (result.version == CHANNEL_LIST_VERSION) {
    check_companion(options.file, bytes, result.findings);
  }
  print_report([&] {
    if (options.as_json) {
      print_json(json_of_findings(options, result));
    } else {
      print_report_of(options, result);
    }
  });
  return result.is_sound() ? exit_done : exit_findings;
}

}  // namespace

command check_command() {
  auto options = std::make_shared<check_options>();
  return {
      .name = "check",
      .summary = "Say what is wrong with a channel file, and what a receiver does with it",
      .details =
          {"Damaged files are looked at as far as their counts lead, also those that a receiver refuses. "
           "Each finding has its place in the file and its consequence. What stands beside FILE is looked at as well.",
           "Of each kind the first ten are shown; --all and --json show every one. FILE is only read."},
      .sections = {{"Severities",
                    {{"error", "the load fails, or something is lost on the receiver"},
                     {"warning", "something is not reached, or not shown as it was meant"},
                     {"note", "unusual; a receiver works with it"}}}},
      .exit_codes = {{"0", "nothing was found; notes do not count"},
                     {"1", "errors or warnings"},
                     {"2", "FILE cannot be read or is no regular file; or the report could not be written"}},
      .examples = {"chlist check channels.dat",
                   "chlist check --json channels.dat | jq '.findings[] | select(.severity == \"error\")'"},
      .options =
          {{.names = "FILE", .target = &options->file, .about = "the channel file to look at", .is_required = true},
           all_findings_option(options->shows_all),
           json_option(options->as_json)},
      .run = [options] { return run_check(*options); }};
}

}  // namespace chlist
