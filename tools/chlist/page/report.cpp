// `chlist report`: reads the list, looks for what is wrong with the file, writes the page.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "chlist/check/findings.h"
#include "chlist/common_options.h"
#include "chlist/exit_codes.h"
#include "chlist/files/file_line_up.h"
#include "chlist/files/replacement.h"
#include "chlist/page/page.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct report_options {
  fs::path input;
  fs::path output;
  bool as_json = false;
};

struct written_page {
  std::size_t size = 0;
  file_findings found;
};

written_page write_page(const report_options &options) {
  const channel_file input(options.input);
  input.must_not_be(options.output);
  const line_up list = line_up_in(input);
  file_findings found = findings_in(input.bytes());
  const std::string page = page_of(page_data(options.input.filename(), list, found));
  write_text_file(options.output, page);
  return {page.size(), std::move(found)};
}

void print_summary(const report_options &options, const written_page &page) {
  const std::size_t errors = page.found.count(severity::error);
  const std::size_t warnings = page.found.count(severity::warning);
  if (options.as_json) {
    print_json({{"file", options.input.string()},
                {"output", options.output.string()},
                {"bytes", page.size},
                {"services", page.found.services},
                {"error_count", errors},
                {"warning_count", warnings},
                {"note_count", page.found.count(severity::note)}});
    return;
  }
  fmt::print("{}: {}, {}, {}\n", harmless(options.output.string()), counted(page.found.services, "service"),
             counted(errors, "error"), counted(warnings, "warning"));
}

int run_report(const report_options &options) {
  const written_page page = write_page(options);
  print_report([&] { print_summary(options, page); });
  return page.found.is_sound() ? exit_done : exit_findings;
}

}  // namespace

command report_command() {
  auto options = std::make_shared<report_options>();
  return {
      .name = "report",
      .summary = "Write a channel file as a page for the browser",
      .details = {"The page shows every view as a table with search, sorting and filters, the totals, what is wrong "
                  "with the list, and a plan of the transponders. Its address names what is shown; that can be copied, "
                  "saved as CSV and printed. It is one file that loads nothing from anywhere: it "
                  "can be sent, kept, and opened without a network. FILE is of version 10 and is only read. PAGE is "
                  "replaced as a whole or not at all."},
      .exit_codes = {{"0", "the page was written"},
                     {"1", "the same, and the page tells of errors or warnings in the list"},
                     {"2", "nothing was written: bad usage, an input that cannot be read, is short or is of another "
                           "version, an output that cannot be written; or only the summary could not be written"}},
      .examples = {"chlist report channels.dat -o report.html", "chlist report channels.dat -o report.html --json"},
      .options =
          {{.names = "FILE", .target = &options->input, .about = "the channel file to show", .is_required = true},
           {.names = "-o,--output",
            .target = &options->output,
            .about = "the page to write",
            .value = "PAGE",
            .is_required = true},
           json_option(options->as_json)},
      .run = [options] { return run_report(*options); }};
}

}  // namespace chlist
