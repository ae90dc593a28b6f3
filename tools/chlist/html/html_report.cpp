// `chlist report`: loads the list, looks for what is wrong with it, writes the page.
#include "chlist/html/html_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "chlist/exit_codes.h"
#include "chlist/files/channel_input.h"
#include "chlist/files/text_file.h"
#include "chlist/html/health.h"
#include "chlist/html/page.h"
#include "chlist/html/page_data.h"
#include "chlist/report.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr const char *description = "Write a channel file as a page for the browser";

constexpr const char *details =
    "The page shows every view as a table with search, sorting and filters, a plan of the transponders, the totals, "
    "and\n"
    "what is wrong with the list. It is one file that loads nothing from anywhere: it can be sent, kept, and opened\n"
    "without a network. FILE is of version 10 and is only read. PAGE is replaced as a whole or not at all.\n"
    "\n"
    "Exit codes:\n"
    "  0  the page was written\n"
    "  1  the same, and the page tells of errors or warnings in the list\n"
    "  2  nothing was written: bad usage, an input that cannot be read, is short or is of another version, an output\n"
    "     that cannot be written; or only the summary could not be written\n"
    "\n"
    "Examples:\n"
    "  chlist report channels.dat -o report.html\n"
    "  chlist report channels.dat -o report.html --json";

struct report_options {
  fs::path input;
  fs::path output;
  bool as_json = false;
};

struct written_page {
  std::size_t size = 0;
  std::size_t services = 0;
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t notes = 0;
};

std::size_t count_of(const std::vector<health_finding> &findings, std::string_view severity) {
  return static_cast<std::size_t>(std::ranges::count(findings, severity, &health_finding::severity));
}

written_page write_page(const report_options &options) {
  const channel_input input(options.input);
  input.must_not_be(options.output);
  if (input.version() != CHANNEL_LIST_VERSION) {
    input.refuse(fmt::format("is of version {}, not {}", input.version(), static_cast<int>(CHANNEL_LIST_VERSION)));
  }
  input.load();
  const std::vector<health_finding> findings = health_of_list();
  const json data = page_data({options.input.filename(), input.version(), fs::file_size(options.input)}, findings);
  const std::string page = page_of(data);
  write_text_file(options.output, page);
  return {page.size(), data["services"].size(), count_of(findings, "error"), count_of(findings, "warning"),
          count_of(findings, "note")};
}

void print_summary(const report_options &options, const written_page &page) {
  if (options.as_json) {
    print_json({{"list", options.input.string()},
                {"output", options.output.string()},
                {"size", page.size},
                {"services", page.services},
                {"findings", {{"errors", page.errors}, {"warnings", page.warnings}, {"notes", page.notes}}}});
    return;
  }
  fmt::print("{}: {}, {}, {}\n", options.output.string(), counted(page.services, "service"),
             counted(page.errors, "error"), counted(page.warnings, "warning"));
}

int run_report(const report_options &options) {
  const written_page page = write_page(options);
  print_report([&] { print_summary(options, page); });
  return page.errors + page.warnings > 0 ? exit_findings : exit_done;
}

}  // namespace

void add_report(CLI::App &app, int &exit_code) {
  CLI::App *command = app.add_subcommand("report", description);
  command->footer(details);
  auto options = std::make_shared<report_options>();
  command->add_option("FILE", options->input, "the channel file to show")->required();
  command->add_option("-o,--output", options->output, "the page to write")->required()->type_name("PAGE");
  command->add_flag("--json", options->as_json, "sum up as JSON");
  command->callback([options, &exit_code] { exit_code = run_report(*options); });
}

}  // namespace chlist
