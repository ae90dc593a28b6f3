// `chlist info`: counts, settings and networks of a channel file.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "chlist/exit_codes.h"
#include "chlist/see/contents.h"
#include "chlist/see/settings.h"
#include "chlist/service/columns.h"
#include "chlist/service/service_types.h"
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

bool is_current(const file_contents &contents) { return contents.version == CHANNEL_LIST_VERSION; }

// Favourite groups without an entry and without a name are not told of.
bool is_told(const file_contents::view &view) {
  return !view.name.is_favourites() || view.count != 0 || !view.name.group_name.empty();
}

json json_of_settings(const file_contents &contents) {
  json settings = json::object();
  for (std::size_t i = 0; i < contents.settings.size(); ++i) {
    settings[std::string(all_settings()[i].name)] = contents.settings[i];
  }
  return settings;
}

json json_of_view(const file_contents::view &view) {
  json object = json_of(view.name);
  object["count"] = view.count;
  object["capacity"] = view.capacity;
  return object;
}

json json_of_group(const file_contents::group &group) { return {{"id", group.id}, {"name", group.name}}; }

json json_of_table(const file_contents::groups &table) {
  return {{"table", table.table},
          {"count", table.count},
          {"capacity", table.capacity},
          {"groups", array_of(table.used, json_of_group)}};
}

json json_of_transponder(const file_contents::transponder &transponder) {
  return {{"ts_id", transponder.ts_id},
          {"frequency", transponder.frequency},
          {"polarisation", transponder.polarisation == 0 ? "H" : "V"},
          {"services", transponder.services}};
}

json json_of_network(const file_contents::network &network) {
  return {{"net_index", network.net_index},
          {"network_id", network.network_id},
          {"name", network.name},
          {"services", network.services()},
          {"transponders", array_of(network.transponders, json_of_transponder)}};
}

json json_of_services(const file_contents &contents) {
  json services = {{"total", contents.services()}};
  services["by_type"] = json::array();
  for (const auto &[type, count] : contents.services_by_type) {
    services["by_type"].push_back({{"service_type", type}, {"type", service_type_name(type)}, {"services", count}});
  }
  for (const file_contents::flag_count &flag : contents.flags) {
    services[std::string(flag.name)] = flag.services;
  }
  return services;
}

json json_of_contents(const info_options &options, const file_contents &contents) {
  return {{"file", options.file.string()},
          {"version", contents.version},
          {"is_current", is_current(contents)},
          {"bytes", contents.bytes},
          {"settings", json_of_settings(contents)},
          {"views", array_of(contents.views, json_of_view)},
          {"groups", array_of(contents.tables, json_of_table)},
          {"services", json_of_services(contents)},
          {"networks", array_of(contents.networks, json_of_network)}};
}

void print_heading(std::string_view heading) { fmt::print("{}\n", painted(heading, style::bold)); }

void print_row(std::string_view what, const std::string &value) { fmt::print("  {:<24}{}\n", what, value); }

void print_file(const info_options &options, const file_contents &contents) {
  fmt::print("{}: version {}, {}, {}\n", options.file.string(), contents.version, counted(contents.bytes, "byte"),
             counted(contents.services(), "service"));
  if (!is_current(contents)) {
    fmt::print("An earlier version: chlist convert makes it current.\n");
  }
}

void print_settings(const file_contents &contents) {
  print_heading("Settings");
  for (std::size_t i = 0; i < contents.settings.size(); ++i) {
    const std::string value = text_of_value(contents.settings[i]);
    print_row(all_settings()[i].title, value.empty() ? "-" : value);
  }
}

void print_services(const file_contents &contents) {
  print_heading("Services by type");
  for (const auto &[type, count] : contents.services_by_type) {
    print_row(service_type_name(type), std::to_string(count));
  }
  print_heading("Services by flag");
  for (const file_contents::flag_count &flag : contents.flags) {
    print_row(flag.name, std::to_string(flag.services));
  }
}

void print_views(const file_contents &contents) {
  print_heading("Views");
  for (const file_contents::view &view : contents.views) {
    if (is_told(view)) {
      print_row(label_of(view.name), fmt::format("{} of {}", view.count, view.capacity));
    }
  }
}

std::string names_of(const std::vector<file_contents::group> &groups) {
  std::string names;
  for (std::size_t i = 0; i < std::min(groups.size(), most_names); ++i) {
    names += (i == 0 ? ": " : ", ") + harmless(groups[i].name);
  }
  return groups.size() > most_names ? fmt::format("{} and {} more", names, groups.size() - most_names) : names;
}

void print_groups(const file_contents &contents) {
  print_heading("Groups");
  for (const file_contents::groups &table : contents.tables) {
    print_row(table.table, fmt::format("{} of {}{}", table.count, table.capacity, names_of(table.used)));
  }
}

void print_networks(const file_contents &contents) {
  print_heading("Networks");
  text_table table({{"net", true}, {"network", true}, {"transponders", true}, {"services", true}, {"name", false}});
  for (const file_contents::network &network : contents.networks) {
    table.add({std::to_string(network.net_index), std::to_string(network.network_id),
               std::to_string(network.transponders.size()), std::to_string(network.services()),
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
      .examples = {"chlist info channels.dat", "chlist info --json channels.dat | jq .services.total"},
      .options = {{.names = "FILE",
                   .target = &options->file,
                   .about = "the channel file, of version 7 to 10",
                   .is_required = true},
                  {.names = "--json", .target = &options->as_json, .about = "report as JSON"}},
      .run = [options] { return run_info(*options); }};
}

}  // namespace chlist
