// The one command on favourites that changes nothing.
#include "chlist/commands.h"

#include <channel/favourites.h>
#include <channel/views.h>
#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "chlist/edit/favourite_groups.h"
#include "chlist/exit_codes.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/faithful_load.h"
#include "chlist/report.h"
#include "chlist/service/columns.h"
#include "chlist/service/names.h"
#include "chlist/text/broadcast_text.h"
#include "chlist/text_table.h"

namespace chlist {
namespace {

constexpr std::string_view entry_columns =
    "position,number,minor,name,net_index,network_id,ts_id,frequency,polarisation,service_id";

struct fav_list_options {
  std::filesystem::path file;
  std::optional<std::string> group;
  bool as_json = false;
};

json json_of_groups() {
  json groups = json::array();
  for (int index = 0; index < get_fav_group_number(); ++index) {
    const group_st &group = *get_fav_group_info(static_cast<std::int16_t>(index));
    groups.push_back({{"group", index},
                      {"id", group.id},
                      {"name", name_in(group.name)},
                      {"count", get_fav_vch_number(static_cast<std::int16_t>(index))}});
  }
  return groups;
}

json json_of_entries(const favourites &group) {
  json entries = json::array();
  for (const listed_service &row : listed_in(group.view())) {
    json entry = json::object();
    for (const column *each : columns_named(entry_columns)) {
      entry[std::string(each->name)] = each->value(row);
    }
    entries.push_back(entry);
  }
  return entries;
}

// Objects with the same keys, as a table under them.
std::string table_of(const json &rows, std::vector<text_table::column> columns) {
  text_table table(std::move(columns));
  for (const json &row : rows.elements()) {
    std::vector<std::string> cells;
    for (const json::member &field : row.members()) {
      cells.push_back(harmless(text_of_value(field.value)));
    }
    table.add(std::move(cells));
  }
  return table.text();
}

std::vector<text_table::column> group_columns() {
  return {{"group", true}, {"id", true}, {"name", false}, {"entries", true}};
}

std::vector<text_table::column> columns_of_entries() {
  std::vector<text_table::column> columns;
  for (const column *each : columns_named(entry_columns)) {
    columns.push_back({std::string(each->title), each->is_number});
  }
  return columns;
}

int list_favourites(const fav_list_options &options) {
  const channel_file input(options.file);
  input.must_be_current();
  load_faithfully(input);
  const json rows = options.group ? json_of_entries(shown_favourites(*options.group)) : json_of_groups();
  print_report([&] {
    if (options.as_json) {
      print_json({{"file", options.file.string()}, {options.group ? "entries" : "groups", rows}});
    } else {
      fmt::print("{}", table_of(rows, options.group ? columns_of_entries() : group_columns()));
    }
  });
  return exit_done;
}

}  // namespace

command fav_list_command() {
  auto options = std::make_shared<fav_list_options>();
  return {.name = "list",
          .summary = "Show favourite groups",
          .details = {"Without GROUP, the groups with their positions, ids, names and numbers of entries; with GROUP, "
                      "its entries."},
          .exit_codes = {{"0", "listed"},
                         {"2", "bad usage, a group that is not there, an input that cannot be read or is of another "
                               "version than 10; or the list could not be written"}},
          .examples = {"chlist fav list channels.dat", "chlist fav list channels.dat Films --json"},
          .options = {{.names = "FILE", .target = &options->file, .about = "the channel file", .is_required = true},
                      {.names = "GROUP",
                       .target = &options->group,
                       .about = "the group: its name, or its position, 0 to 19"},
                      {.names = "--json", .target = &options->as_json, .about = "print JSON"}},
          .run = [options] { return list_favourites(*options); }};
}

}  // namespace chlist
