// `chlist list`: the entries of a view in the columns and the format that are asked for.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "chlist/exchange/csv/csv.h"
#include "chlist/exchange/csv/csv_line_up.h"
#include "chlist/exit_codes.h"
#include "chlist/fields/described.h"
#include "chlist/fields/service_fields.h"
#include "chlist/fields/view_rows.h"
#include "chlist/files/file_line_up.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"
#include "chlist/text_table.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view columns_of_tables =
    "number,name,type,provider,frequency,polarisation,ts_id,service_id,scrambled,locked,skipped";
constexpr std::string_view help = "help";

struct list_options {
  fs::path file;
  std::string view = "all";
  std::string sort;
  std::vector<std::string> filters;
  std::vector<std::string> conditions;
  std::string columns;
  std::string format = "table";
  bool as_json = false;
};

using columns_shown = std::vector<const field *>;
using rows_shown = std::vector<service_row>;

struct listing {
  const fs::path &file;
  view_name view;
  rows_shown rows;
  columns_shown columns;
};

columns_shown chosen_columns(const list_options &options, const rows_shown &rows) {
  if (!options.columns.empty()) {
    return fields_named(options.columns);
  }
  columns_shown columns;
  if (options.format != "table") {
    for (const field &each : service_fields()) {
      columns.push_back(&each);
    }
    return columns;
  }
  columns = fields_named(columns_of_tables);
  if (std::ranges::any_of(rows, [](const service_row &row) { return row.entry->number.minor != 0; })) {
    columns.insert(columns.begin() + 1, &field_named("minor"));
  }
  return columns;
}

std::string cell_of_table(const json &value) { return harmless(text_of_value(value)); }

// As an import reads it. Texts of a list are one line without controls already.
std::string cell_of_csv(const json &value) { return text_of_value(value, std::string(1, csv_group_separator)); }

std::vector<std::string> cells_of(const service_row &row, const columns_shown &columns,
                                  std::string (*cell_of)(const json &value)) {
  std::vector<std::string> cells;
  for (const field *each : columns) {
    cells.push_back(cell_of(each->get(row)));
  }
  return cells;
}

void print_table(const listing &listed) {
  std::vector<text_table::column> titles;
  for (const field *each : listed.columns) {
    titles.push_back({std::string(each->title), each->is_number(), each->name == "name"});
  }
  text_table table(std::move(titles));
  for (const service_row &row : listed.rows) {
    table.add(cells_of(row, listed.columns, cell_of_table));
  }
  fmt::print("{}", table.text());
}

void print_csv(const listing &listed) {
  std::vector<std::string> names;
  for (const field *each : listed.columns) {
    names.emplace_back(each->name);
  }
  std::string text = csv_line(names);
  for (const service_row &row : listed.rows) {
    text += csv_line(cells_of(row, listed.columns, cell_of_csv));
  }
  fmt::print("{}", text);
}

void print_as_json(const listing &listed) {
  json entries = json::array();
  for (const service_row &row : listed.rows) {
    json object = json::object();
    for (const field *each : listed.columns) {
      object[std::string(each->name)] = each->get(row);
    }
    entries.push_back(std::move(object));
  }
  json document = {{"file", listed.file.string()}};
  document.put(json_of(listed.view));
  document["entries"] = std::move(entries);
  print_json(document);
}

view_name name_in(const line_up &list, std::int8_t view) {
  view_name name = name_of_view(view).value();
  if (name.is_favourites() && static_cast<std::size_t>(name.group) < list.favourites.size()) {
    name.group_name = list.favourites[static_cast<std::size_t>(name.group)].name;
  }
  return name;
}

struct list_format {
  std::string_view name;
  void (*print)(const listing &listed);
};

constexpr list_format formats[] = {{"table", print_table}, {"csv", print_csv}, {"json", print_as_json}};

void print_columns_there_are() {
  text_table table({{"column", false, true}, {"what it is", false}});
  for (const field &each : service_fields()) {
    table.add({std::string(each.name), std::string(each.about)});
  }
  fmt::print("{}", table.text());
}

std::vector<where> conditions_of(const list_options &options) {
  std::vector<where> wanted;
  std::ranges::transform(options.filters, std::back_inserter(wanted), where::has);
  for (const std::string &condition : options.conditions) {
    wanted.emplace_back(condition);
  }
  return wanted;
}

int list_file(const list_options &options) {
  const std::vector<where> wanted = conditions_of(options);
  const channel_file input(options.file);
  input.must_be_current();
  const file_records records(input.bytes());
  must_be_whole(input, records);
  line_up list = line_up_of(records.list());
  const std::int8_t view = view_named(list, options.view);
  if (!options.sort.empty()) {
    sort_view(records.list(), view, options.sort);
    list = line_up_of(records.list());
  }
  const rows_shown rows = filtered(list, view, wanted);
  const listing listed = {options.file, name_in(list, view), rows, chosen_columns(options, rows)};
  print_report([&] { std::ranges::find(formats, options.format, &list_format::name)->print(listed); });
  return exit_done;
}

int run_list(list_options options) {
  if (options.columns == help) {
    print_report(print_columns_there_are);
    return exit_done;
  }
  if (options.file.empty()) {
    throw usage_error("FILE is required");
  }
  options.format = options.as_json ? "json" : options.format;
  return list_file(options);
}

}  // namespace

command list_command() {
  auto options = std::make_shared<list_options>();
  return {
      .name = "list",
      .summary = "List the services of a channel file",
      .details =
          {"FILE is of version 10 and is only read. Sorting is the receiver's own; numbers stay with their services.",
           "A filter is COLUMN=TEXT (the text is part of the column's or spells its value; numbers, yes and no are "
           "compared as a whole), or a text that is part of the name or of the provider, or is the number; case does "
           "not count. A condition says more: whole values, patterns, comparisons, and, or, not. Of several all must "
           "be met.",
           "`chlist list --columns help` says what each column is. CSV (RFC 4180) and JSON have all columns unless "
           "--columns says otherwise; between favourite groups CSV has ';'. An entry that resolves to no service has "
           "its identity only."},
      .sections = {{"Views", terms_of_views()}, {"Sorts", terms_of_sorts()}, {"Conditions", terms_of_conditions()}},
      .exit_codes = {{"0", "listed"},
                     {"2", "bad usage, or no such view, column or sort; a file that cannot be read, is short or is of "
                           "another version; or the list could not be written"}},
      .examples = {"chlist list channels.dat", "chlist list channels.dat --view tv --sort name --filter 'provider=sky'",
                   "chlist list channels.dat --view fav:Films --columns number,name,video_pid",
                   "chlist list channels.dat --filter locked=yes --format csv > locked.csv",
                   "chlist list channels.dat --where 'type=TV scrambled=no name~\" HD$\"'"},
      .options = {{.names = "FILE", .target = &options->file, .about = "the channel file"},
                  {.names = "--view", .target = &options->view, .about = "the view to list (all)", .value = "VIEW"},
                  {.names = "--sort",
                   .target = &options->sort,
                   .about = "sort the view, positions included; else it stays in the file's order",
                   .value = "SORT"},
                  {.names = "--filter",
                   .target = &options->filters,
                   .about = "list only what matches",
                   .value = "COLUMN=TEXT"},
                  {.names = "--where",
                   .target = &options->conditions,
                   .about = "list only what meets a condition",
                   .value = "CONDITION"},
                  {.names = "--columns",
                   .target = &options->columns,
                   .about = "the columns, with commas between; 'help' names them",
                   .value = "NAMES"},
                  {.names = "--format",
                   .target = &options->format,
                   .about = "how to print it (table)",
                   .value = "FORMAT",
                   .choices = {"table", "csv", "json"}},
                  {.names = "--json",
                   .target = &options->as_json,
                   .about = "the same as --format json",
                   .excluded = {"--format"}}},
      .run = [options] { return run_list(*options); }};
}

}  // namespace chlist
