// `chlist convert`: converts the file, saves the list, says what was carried and what was not.
#include "chlist/convert/convert.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>

#include "chlist/convert/conversion.h"
#include "chlist/exit_codes.h"
#include "chlist/files/channel_input.h"
#include "chlist/files/list_file.h"
#include "chlist/list_contents.h"
#include "chlist/report.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr const char *description = "Make a channel file of version 10 from one of version 7, 8 or 9";

constexpr const char *details =
    "The version is read from the file. The library converts the settings, groups, views and services field by field;\n"
    "what version 10 has no place for is counted under 'Not carried'. OLD is only read. NEW is replaced as a whole or\n"
    "not at all, and cannot be OLD itself.\n"
    "\n"
    "Exit codes:\n"
    "  0  converted\n"
    "  1  converted, with findings: services that occur twice were dropped, entries resolve to no service (they are\n"
    "     kept), or a view or group table counted more than it holds\n"
    "  2  nothing was written: bad usage, an input that cannot be read, is short or is of another version, an output\n"
    "     that cannot be written; or only the report could not be written\n"
    "\n"
    "Examples:\n"
    "  chlist convert backup/old.dat channels.dat";

struct convert_options {
  fs::path input;
  fs::path output;
  bool as_json = false;
};

std::string name_of(const cut_array &cut) {
  return cut.group < 0 ? std::string(cut.array) : fmt::format("{} {}", cut.array, cut.group);
}

json json_of_cut(const cut_array &cut) {
  return {{"array", name_of(cut)}, {"counted", cut.counted}, {"carried", cut.carried}};
}

// The views and groups of the list in memory.
json json_of_views() {
  json views = json::array();
  for (const list_view &view : views_of(*get_channel_list())) {
    json object = json_of(view.name);
    object["entries"] = view.size();
    views.push_back(object);
  }
  return views;
}

json json_of_groups() {
  json groups = json::object();
  for (const group_table &table : groups_of(*get_channel_list())) {
    groups[std::string(table.name)] = table.count;
  }
  return groups;
}

json json_of_result(const convert_options &options, const conversion &result) {
  json not_carried = json::object();
  for (const loss &lost : result.losses) {
    not_carried[std::string(lost.key)] = lost.count;
  }
  return {{"input", options.input.string()},
          {"output", options.output.string()},
          {"version", result.version},
          {"carried",
           {{"networks", result.carried.networks},
            {"transponders", result.carried.transponders},
            {"services", result.carried.services},
            {"views", json_of_views()},
            {"groups", json_of_groups()}}},
          {"not_carried", not_carried},
          {"findings",
           {{"duplicate_services", array_of(result.duplicates, json_of)},
            {"unresolved_entries", array_of(result.unresolved, json_of)},
            {"counts_outside_arrays", array_of(result.cut, json_of_cut)}}}};
}

void report_findings(const convert_options &options, const conversion &result) {
  const std::string input = options.input.string();
  for (const known_service &service : result.duplicates) {
    fmt::print(stderr, "{}: dropped, occurs twice: {}\n", input, describe(service));
  }
  for (const placed_entry &entry : result.unresolved) {
    fmt::print(stderr, "{}: resolves to no service: {}\n", input, describe(entry));
  }
  for (const cut_array &cut : result.cut) {
    fmt::print(stderr, "{}: {}: counts {}, taken as {}\n", input, name_of(cut), cut.counted, cut.carried);
  }
}

void print_row(std::string_view what, std::size_t count) {
  if (count > 0) {
    fmt::print("  {:<48}{:>6}\n", what, count);
  }
}

void print_carried(const conversion &result) {
  fmt::print("Carried:\n");
  print_row("networks", result.carried.networks);
  print_row("transponders", result.carried.transponders);
  print_row("services", result.carried.services);
  for (const list_view &view : views_of(*get_channel_list())) {
    print_row("entries: " + label_of(view.name), view.size());
  }
  for (const group_table &table : groups_of(*get_channel_list())) {
    print_row(table.name, static_cast<std::size_t>(table.count));
  }
}

void print_losses(const conversion &result) {
  if (std::ranges::all_of(result.losses, [](const loss &lost) { return lost.count == 0; })) {
    return;
  }
  fmt::print("Not carried:\n");
  for (const loss &lost : result.losses) {
    print_row(lost.text, lost.count);
  }
}

void print_result(const convert_options &options, const conversion &result) {
  fmt::print("{}: converted from version {}, {}\n", options.output.string(), result.version,
             counted(result.carried.services, "service"));
  print_carried(result);
  print_losses(result);
}

void report(const convert_options &options, const conversion &result) {
  if (options.as_json) {
    print_report([&] { print_json(json_of_result(options, result)); });
  } else {
    report_findings(options, result);
    print_report([&] { print_result(options, result); });
  }
}

int run_convert(const convert_options &options) {
  const channel_input input(options.input);
  input.must_not_be(options.output);
  const conversion result = convert_to_memory(input);
  save_list_as(options.output);
  report(options, result);
  return result.has_findings() ? exit_findings : exit_done;
}

}  // namespace

void add_convert(CLI::App &app, int &exit_code) {
  CLI::App *command = app.add_subcommand("convert", description);
  command->footer(details);
  auto options = std::make_shared<convert_options>();
  command->add_option("OLD", options->input, "the channel file to read")->required();
  command->add_option("NEW", options->output, "the channel file to write")->required();
  command->add_flag("--json", options->as_json, "report as JSON, findings included");
  command->callback([options, &exit_code] { exit_code = run_convert(*options); });
}

}  // namespace chlist
