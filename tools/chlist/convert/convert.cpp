// `chlist convert`: converts the file, saves the list, says what was carried and what was not.
#include "chlist/commands.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <string>

#include "chlist/common_options.h"
#include "chlist/convert/conversion.h"
#include "chlist/convert/conversion_report.h"
#include "chlist/fields/described.h"
#include "chlist/files/channel_file.h"
#include "chlist/line_up/line_up.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/messages.h"
#include "chlist/new_list.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

json json_of_groups() {
  json tables = json::array();
  for (const group_table &table : groups_of(*get_channel_list())) {
    tables.push_back({{"table", table.name}, {"count", table.count}});
  }
  return tables;
}

json json_of_result(const new_list_options &options, const conversion &result) {
  json report = {{"file", options.input.string()},
                 {"output", options.output.string()},
                 {"version", result.version},
                 {"networks", result.carried.networks},
                 {"transponders", result.carried.transponders},
                 {"services", result.carried.services},
                 {"views", json_of_views()},
                 {"group_tables", json_of_groups()},
                 {"not_carried", json_of_losses(result)}};
  report.put(json_of_findings(result));
  return report;
}

void report_findings(const new_list_options &options, const conversion &result) {
  const fs::path &input = options.input;
  const bool shows_all = options.shows_all;
  print_messages<known_service>(input, "dropped, occurs twice", result.duplicates, shows_all, text_of_duplicate);
  print_messages<placed_entry>(input, "resolves to no service", result.unresolved, shows_all,
                               [](const auto &entry) { return "resolves to no service: " + describe(entry); });
  print_messages<cut_array>(input, "counts outside its array", result.cut, shows_all, text_of_cut);
}

void print_carried(const conversion &result) {
  fmt::print("Carried:\n");
  print_row(stdout, "networks", result.carried.networks);
  print_row(stdout, "transponders", result.carried.transponders);
  print_row(stdout, "services", result.carried.services);
  for (const list_view &view : views_of(*get_channel_list())) {
    print_row(stdout, "entries: " + label_of(view.name), view.size());
  }
  for (const group_table &table : groups_of(*get_channel_list())) {
    print_row(stdout, table.name, static_cast<std::size_t>(table.count));
  }
}

void print_result(const new_list_options &options, const conversion &result) {
  report_findings(options, result);
  fmt::print("{}: converted from version {}, {}\n", harmless(options.output.string()), result.version,
             counted(result.carried.services, "service"));
  print_carried(result);
  print_losses(stdout, result);
}

conversion convert(const new_list_options &options) { return convert_to_memory(channel_file(options.input)); }

constexpr new_list_road<new_list_options, conversion> road = {convert, json_of_result, print_result};

}  // namespace

command convert_command() {
  auto options = std::make_shared<new_list_options>();
  return {
      .name = "convert",
      .summary = "Make a channel file of version 10 from one of version 7, 8 or 9",
      .details = {"The version is read from the file. The library converts the settings, groups, views and services "
                  "field by field; what version 10 has no place for is counted under 'Not carried'. OLD is only read. "
                  "NEW is replaced as a whole or not at all, and cannot be OLD itself."},
      .exit_codes = {{"0", "converted"},
                     {"1", "converted, with findings: services that occur twice were dropped, entries resolve to no "
                           "service (they are kept), or a view or group table counted more than it holds"},
                     {"2", "nothing was written: bad usage, an input that cannot be read, is short or is of another "
                           "version, an output that cannot be written; or only the report could not be written"}},
      .examples = {"chlist convert backup/old.dat channels.dat"},
      .options =
          {{.names = "OLD", .target = &options->input, .about = "the channel file to read", .is_required = true},
           {.names = "NEW", .target = &options->output, .about = "the channel file to write", .is_required = true},
           all_findings_option(options->shows_all),
           json_option(options->as_json)},
      .run = [options] { return make_new_list(*options, road); }};
}

}  // namespace chlist
