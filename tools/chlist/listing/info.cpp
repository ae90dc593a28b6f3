// `chlist info`: counts, settings and networks of a channel file.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "chlist/common_options.h"
#include "chlist/exit_codes.h"
#include "chlist/fields/described.h"
#include "chlist/fields/record_fields.h"
#include "chlist/fields/service_fields.h"
#include "chlist/fields/service_types.h"
#include "chlist/files/file_line_up.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/report.h"
#include "chlist/terminal.h"
#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"
#include "chlist/text/wrapping.h"
#include "chlist/text_table.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t most_names = 8;

struct info_options {
  fs::path file;
  bool as_json = false;
};

// What a file of any version holds, and what is counted of it.
struct file_contents {
  int version = 0;
  std::size_t bytes = 0;
  line_up list;
  std::map<std::uint8_t, std::size_t> services_by_type;

  [[nodiscard]] bool is_current() const { return version == CHANNEL_LIST_VERSION; }
};

constexpr std::string_view flag_fields[] = {"locked", "skipped", "scrambled", "data"};

std::size_t services_with(const line_up &list, const field &flag) {
  return static_cast<std::size_t>(std::ranges::count_if(list.services, [&](const line_up_service &service) {
    return flag.get({&list, &service}) == json(true);
  }));
}

// A group table as the list has it.
struct counted_groups {
  std::string_view name;       // "providers"
  std::string_view one_group;  // "provider"
  int count = 0;
  std::size_t capacity = 0;  // in a channel file
  std::vector<group_row> used;
};

std::vector<counted_groups> tables_of(const line_up &list) {
  std::vector<counted_groups> made;
  for (const group_facts &each : all_group_kinds()) {
    made.push_back({each.many, each.one, list.groups_of(each.kind).count, each.capacity, {}});
  }
  made.push_back({"favourite groups", "favourite group", list.favourites_count, MAX_FAV, {}});
  for (const group_row &group : rows_of_groups(list)) {
    std::ranges::find(made, group.table, &counted_groups::one_group)->used.push_back(group);
  }
  return made;
}

file_contents read_contents(const channel_file &input) {
  if (!is_known_version(input.version())) {
    input.refuse_version(fmt::format(": only {} to {} are known", first_known_version, +CHANNEL_LIST_VERSION));
  }
  const file_records records(input.bytes());
  must_be_whole(input, records);
  file_contents contents;
  contents.version = input.version();
  contents.bytes = input.bytes().size();
  contents.list = line_up_of(records.list());
  for (const line_up_service &service : contents.list.services) {
    ++contents.services_by_type[service.fields.service_type];
  }
  return contents;
}

// Favourite groups without an entry and without a name are left out.
bool is_worth_a_line(const named_view &view) {
  return !view.name.is_favourites() || view.count != 0 || !view.name.group_name.empty();
}

json json_of_view(const named_view &view) {
  json object = json_of(view.name);
  object["count"] = view.count;
  object["capacity"] = view.capacity;
  return object;
}

json json_of_group(const group_row &group) { return json_of_fields(group_fields(), group); }

json json_of_table(const counted_groups &table) {
  return {{"table", table.name},
          {"count", table.count},
          {"capacity", table.capacity},
          {"groups", array_of(table.used, json_of_group)}};
}

json json_of_networks(const line_up &list) {
  std::vector<json> transponders(list.networks.size(), json::array());
  for (const transponder_row &row : rows_of_transponders(list)) {
    transponders[row.transponder->network].push_back(json_of_fields(transponder_fields(), row));
  }
  json networks = json::array();
  for (const network_row &row : rows_of_networks(list)) {
    json network = json_of_fields(network_fields(), row);
    network["transponder_list"] = std::move(transponders[networks.size()]);
    networks.push_back(std::move(network));
  }
  return networks;
}

json json_of_types(const file_contents &contents) {
  json types = json::array();
  for (const auto &[type, count] : contents.services_by_type) {
    types.push_back({{"service_type", type}, {"type", service_type_name(type)}, {"services", count}});
  }
  return types;
}

json json_of_flags(const file_contents &contents) {
  json flags = json::array();
  for (const std::string_view flag : flag_fields) {
    flags.push_back({{"flag", flag}, {"services", services_with(contents.list, field_named(flag))}});
  }
  return flags;
}

json json_of_contents(const info_options &options, const file_contents &contents) {
  return {{"file", options.file.string()},
          {"version", contents.version},
          {"is_current", contents.is_current()},
          {"bytes", contents.bytes},
          {"settings", json_of_fields(setting_fields(), contents.list.settings)},
          {"views", array_of(views_of(contents.list), json_of_view)},
          {"group_tables", array_of(tables_of(contents.list), json_of_table)},
          {"networks", contents.list.networks.size()},
          {"transponders", contents.list.transponders.size()},
          {"services", contents.list.services.size()},
          {"services_by_type", json_of_types(contents)},
          {"services_by_flag", json_of_flags(contents)},
          {"network_list", json_of_networks(contents.list)}};
}

void print_heading(std::string_view heading) { fmt::print("{}\n", painted(heading, style::bold)); }

// Scripts find a row on one line, however long; on a screen it is broken to fit.
void print_row(std::string_view what, const std::string &value) {
  constexpr std::size_t column_of_values = 26;
  if (const std::optional<std::size_t> columns = columns_of_screen()) {
    fmt::print("{}\n", beside(shortened(fmt::format("  {}", what), *columns), value, column_of_values, *columns));
  } else {
    fmt::print("  {:<23} {}\n", what, value);
  }
}

void print_sentence(const std::string &text) {
  const std::optional<std::size_t> columns = columns_of_screen();
  fmt::print("{}\n", columns ? wrapped(text, 0, *columns) : text);
}

void print_file(const info_options &options, const file_contents &contents) {
  print_sentence(fmt::format("{}: version {}, {}, {}", harmless(options.file.string()), contents.version,
                             counted(contents.bytes, "byte"), counted(contents.list.services.size(), "service")));
  if (!contents.is_current()) {
    print_sentence("An earlier version: chlist convert makes it current.");
  }
}

void print_settings(const file_contents &contents) {
  print_heading("Settings");
  for (const record_field<line_up_settings> &each : setting_fields()) {
    const std::string value = text_of_value(each.get(contents.list.settings));
    print_row(each.title, value.empty() ? "-" : value);
  }
}

void print_services(const file_contents &contents) {
  print_heading("Services by type");
  for (const auto &[type, count] : contents.services_by_type) {
    print_row(service_type_name(type), std::to_string(count));
  }
  print_heading("Services by flag");
  for (const std::string_view flag : flag_fields) {
    print_row(flag, std::to_string(services_with(contents.list, field_named(flag))));
  }
}

void print_views(const file_contents &contents) {
  print_heading("Views");
  for (const named_view &view : views_of(contents.list)) {
    if (is_worth_a_line(view)) {
      print_row(label_of(view.name), fmt::format("{} of {}", view.count, view.capacity));
    }
  }
}

std::string names_of(const std::vector<group_row> &groups) {
  std::string names;
  for (std::size_t i = 0; i < std::min(groups.size(), most_names); ++i) {
    names += (i == 0 ? ": " : ", ") + harmless(groups[i].name);
  }
  return groups.size() > most_names ? fmt::format("{} and {} more", names, groups.size() - most_names) : names;
}

void print_groups(const file_contents &contents) {
  print_heading("Groups");
  for (const counted_groups &table : tables_of(contents.list)) {
    print_row(table.name, fmt::format("{} of {}{}", table.count, table.capacity, names_of(table.used)));
  }
}

void print_networks(const file_contents &contents) {
  print_heading("Networks");
  std::vector<text_table::column> columns;
  for (const record_field<network_row> &each : network_fields()) {
    columns.push_back({std::string(each.title), each.values.kind == value_kind::number, each.name == "name"});
  }
  text_table table(columns);
  for (const network_row &network : rows_of_networks(contents.list)) {
    std::vector<std::string> cells;
    for (const record_field<network_row> &each : network_fields()) {
      cells.push_back(harmless(text_of_value(each.get(network))));
    }
    table.add(std::move(cells));
  }
  fmt::print("{}", table.text());
}

void print_contents(const info_options &options, const file_contents &contents) {
  print_file(options, contents);
  print_settings(contents);
  print_services(contents);
  print_views(contents);
  print_groups(contents);
  print_networks(contents);
}

// The fields of a table by their names in JSON, for the help.
template <class Row>
term_section section_of(std::string title, std::span<const record_field<Row>> fields) {
  term_section section = {std::move(title), {}};
  for (const record_field<Row> &each : fields) {
    section.terms.push_back({std::string(each.name), std::string(each.about)});
  }
  return section;
}

int run_info(const info_options &options) {
  const file_contents contents = read_contents(channel_file(options.file));
  print_report([&] {
    if (options.as_json) {
      print_json(json_of_contents(options, contents));
    } else {
      print_contents(options, contents);
    }
  });
  return exit_done;
}

}  // namespace

command info_command() {
  auto options = std::make_shared<info_options>();
  return {
      .name = "info",
      .summary = "Show what a channel file holds",
      .details =
          {"Version and size, settings, views and groups with their counts and limits, services by type and by flag, "
           "networks with their transponders and services. Files of versions 7 to 9 are read, too; chlist convert "
           "makes them current. With --json every group and every transponder is named. FILE is only read."},
      .sections = {section_of("Settings", setting_fields()), section_of("Of a network", network_fields()),
                   section_of("Of a transponder", transponder_fields()), section_of("Of a group", group_fields())},
      .exit_codes = {{"0", "shown"},
                     {"2", "bad usage, a file that cannot be read, is short or is of an unknown version; or the report "
                           "could not be written"}},
      .examples = {"chlist info channels.dat", "chlist info --json channels.dat | jq .services"},
      .options = {{.names = "FILE",
                   .target = &options->file,
                   .about = "the channel file, of version 7 to 10",
                   .is_required = true},
                  json_option(options->as_json)},
      .run = [options] { return run_info(*options); }};
}

}  // namespace chlist
