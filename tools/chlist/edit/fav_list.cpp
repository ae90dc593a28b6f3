// The one command on favourites that changes nothing.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "chlist/common_options.h"
#include "chlist/exit_codes.h"
#include "chlist/fields/service_fields.h"
#include "chlist/files/file_line_up.h"
#include "chlist/line_up/selection.h"
#include "chlist/position.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"
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

json json_of_groups(const line_up &list) {
  json groups = json::array();
  for (const favourite_group &group : list.favourites) {
    if (group.is_counted) {
      groups.push_back({{"group", position_of(groups.size())},
                        {"id", group.id},
                        {"name", group.name},
                        {"count", group.entries.size()}});
    }
  }
  return groups;
}

json json_of_entries(const line_up &list, std::size_t group) {
  json entries = json::array();
  for (const service_row &row : rows_of(list, static_cast<std::int8_t>(VIEW_FAVOURITE + group))) {
    json entry = json::object();
    for (const field *each : fields_named(entry_columns)) {
      entry[std::string(each->name)] = each->get(row);
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
  return {{"group", true}, {"id", true}, {"name", false, true}, {"entries", true}};
}

std::vector<text_table::column> columns_of_entries() {
  std::vector<text_table::column> columns;
  for (const field *each : fields_named(entry_columns)) {
    columns.push_back({std::string(each->title), each->is_number(), each->name == "name"});
  }
  return columns;
}

int list_favourites(const fav_list_options &options) {
  const line_up list = line_up_in(channel_file(options.file));
  const json rows =
      options.group ? json_of_entries(list, favourite_group_named(list, *options.group)) : json_of_groups(list);
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
                       .about = "the group: its name, or its position, 1 to 20"},
                      json_option(options->as_json)},
          .run = [options] { return list_favourites(*options); }};
}

}  // namespace chlist
