// `chlist info`: counts, settings and networks of a channel file.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "chlist/common_options.h"
#include "chlist/exit_codes.h"
#include "chlist/fields/service_fields.h"
#include "chlist/fields/settings.h"
#include "chlist/files/file_line_up.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/report.h"
#include "chlist/terminal.h"
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
  std::vector<std::size_t> services_on;      // each transponder
  std::vector<std::size_t> transponders_in;  // each network
  std::vector<std::size_t> services_in;      // each network

  [[nodiscard]] bool is_current() const { return version == CHANNEL_LIST_VERSION; }
};

constexpr std::string_view flag_fields[] = {"locked", "skipped", "scrambled", "data"};

std::size_t services_with(const line_up &list, const field &flag) {
  return static_cast<std::size_t>(std::ranges::count_if(list.services, [&](const line_up_service &service) {
    return flag.get({&list, &service}) == json(true);
  }));
}

// A group table as the list has it: its names in plural and its capacity in a channel file.
struct counted_groups {
  std::string_view table;
  int count = 0;
  std::size_t capacity = 0;
  std::vector<line_up_group> used;
};

std::vector<counted_groups> tables_of(const line_up &list) {
  constexpr std::pair<std::string_view, std::size_t> tables[] = {
      {"providers", MAX_PROVIDER}, {"genres", MAX_GENRE}, {"countries", MAX_COUNTRY}};
  std::vector<counted_groups> made;
  for (std::size_t kind = 0; kind < group_kinds; ++kind) {
    made.push_back({tables[kind].first, list.groups[kind].count, tables[kind].second, list.groups[kind].groups});
  }
  counted_groups favourites = {"favourite groups", list.favourites_count, MAX_FAV, {}};
  for (const favourite_group &group : list.favourites) {
    if (group.is_counted) {
      favourites.used.push_back({group.id, group.name});
    }
  }
  made.push_back(std::move(favourites));
  return made;
}

void count_records(file_contents &contents) {
  contents.services_on.resize(contents.list.transponders.size());
  contents.transponders_in.resize(contents.list.networks.size());
  contents.services_in.resize(contents.list.networks.size());
  for (const line_up_transponder &transponder : contents.list.transponders) {
    ++contents.transponders_in[transponder.network];
  }
  for (const line_up_service &service : contents.list.services) {
    ++contents.services_by_type[service.fields.service_type];
    ++contents.services_on[service.transponder];
    ++contents.services_in[contents.list.transponders[service.transponder].network];
  }
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
  count_records(contents);
  return contents;
}

// Favourite groups without an entry and without a name are left out.
bool is_worth_a_line(const named_view &view) {
  return !view.name.is_favourites() || view.count != 0 || !view.name.group_name.empty();
}

json json_of_settings(const file_contents &contents) {
  json settings = json::object();
  for (const setting &each : all_settings()) {
    settings[std::string(each.name)] = each.value(contents.list.settings);
  }
  return settings;
}

json json_of_view(const named_view &view) {
  json object = json_of(view.name);
  object["count"] = view.count;
  object["capacity"] = view.capacity;
  return object;
}

json json_of_group(const line_up_group &group) { return {{"id", group.id}, {"name", group.name}}; }

json json_of_table(const counted_groups &table) {
  return {{"table", table.table},
          {"count", table.count},
          {"capacity", table.capacity},
          {"groups", array_of(table.used, json_of_group)}};
}

json json_of_network(const file_contents &contents, std::size_t place) {
  json transponders = json::array();
  for (std::size_t i = 0; i < contents.list.transponders.size(); ++i) {
    if (const line_up_transponder &transponder = contents.list.transponders[i]; transponder.network == place) {
      transponders.push_back({{"ts_id", transponder.ts_id},
                              {"frequency", transponder.frequency},
                              {"polarisation", polarisation_text(transponder.polarisation)},
                              {"services", contents.services_on[i]}});
    }
  }
  const line_up_network &network = contents.list.networks[place];
  return {{"net_index", network.net_index},
          {"network_id", network.network_id},
          {"name", network.name},
          {"services", contents.services_in[place]},
          {"transponder_list", std::move(transponders)}};
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
  json networks = json::array();
  for (std::size_t place = 0; place < contents.list.networks.size(); ++place) {
    networks.push_back(json_of_network(contents, place));
  }
  return {{"file", options.file.string()},
          {"version", contents.version},
          {"is_current", contents.is_current()},
          {"bytes", contents.bytes},
          {"settings", json_of_settings(contents)},
          {"views", array_of(views_of(contents.list), json_of_view)},
          {"group_tables", array_of(tables_of(contents.list), json_of_table)},
          {"networks", contents.list.networks.size()},
          {"transponders", contents.list.transponders.size()},
          {"services", contents.list.services.size()},
          {"services_by_type", json_of_types(contents)},
          {"services_by_flag", json_of_flags(contents)},
          {"network_list", std::move(networks)}};
}

void print_heading(std::string_view heading) { fmt::print("{}\n", painted(heading, style::bold)); }

void print_row(std::string_view what, const std::string &value) { fmt::print("  {:<23} {}\n", what, value); }

void print_file(const info_options &options, const file_contents &contents) {
  fmt::print("{}: version {}, {}, {}\n", harmless(options.file.string()), contents.version,
             counted(contents.bytes, "byte"), counted(contents.list.services.size(), "service"));
  if (!contents.is_current()) {
    fmt::print("An earlier version: chlist convert makes it current.\n");
  }
}

void print_settings(const file_contents &contents) {
  print_heading("Settings");
  for (const setting &each : all_settings()) {
    const std::string value = text_of_value(each.value(contents.list.settings));
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

std::string names_of(const std::vector<line_up_group> &groups) {
  std::string names;
  for (std::size_t i = 0; i < std::min(groups.size(), most_names); ++i) {
    names += (i == 0 ? ": " : ", ") + harmless(groups[i].name);
  }
  return groups.size() > most_names ? fmt::format("{} and {} more", names, groups.size() - most_names) : names;
}

void print_groups(const file_contents &contents) {
  print_heading("Groups");
  for (const counted_groups &table : tables_of(contents.list)) {
    print_row(table.table, fmt::format("{} of {}{}", table.count, table.capacity, names_of(table.used)));
  }
}

void print_networks(const file_contents &contents) {
  print_heading("Networks");
  text_table table(
      {{"net", true}, {"network", true}, {"transponders", true}, {"services", true}, {"name", false, true}});
  for (std::size_t place = 0; place < contents.list.networks.size(); ++place) {
    const line_up_network &network = contents.list.networks[place];
    table.add({std::to_string(network.net_index), std::to_string(network.network_id),
               std::to_string(contents.transponders_in[place]), std::to_string(contents.services_in[place]),
               harmless(network.name)});
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
