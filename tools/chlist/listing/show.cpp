// `chlist show`: one service, where it hangs in the hierarchy, and every entry that shows it.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "chlist/common_options.h"
#include "chlist/exit_codes.h"
#include "chlist/fields/described.h"
#include "chlist/fields/record_fields.h"
#include "chlist/fields/service_fields.h"
#include "chlist/files/file_line_up.h"
#include "chlist/line_up/selection.h"
#include "chlist/position.h"
#include "chlist/report.h"
#include "chlist/terminal.h"
#include "chlist/text/shown.h"
#include "chlist/text_table.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct show_options {
  fs::path file;
  std::string service;
  std::string view = "all";
  bool as_json = false;
};

struct shown_entry {
  view_name view;
  service_row row;
};

// A service, the records that it hangs from, whatever its own fields say, and every entry that shows it.
struct shown_service {
  const line_up &list;
  std::size_t place;

  [[nodiscard]] const line_up_service &service() const { return list.services[place]; }
  [[nodiscard]] service_row row() const { return {&list, &service()}; }
  [[nodiscard]] transponder_row transponder() const { return rows_of_transponders(list)[service().transponder]; }
  [[nodiscard]] network_row network() const {
    return rows_of_networks(list)[list.transponders[service().transponder].network];
  }
  [[nodiscard]] std::vector<shown_entry> entries() const {
    std::vector<shown_entry> found;
    for (const named_view &view : views_of(list)) {
      for (std::size_t i = 0; i < view.entries.size(); ++i) {
        if (view.entries[i].service == place) {
          found.push_back({view.name, {&list, &service(), &view.entries[i], i}});
        }
      }
    }
    return found;
  }
};

json json_of_service(const shown_service &shown) {
  json object = {{"identity", identity_text(shown.service().id())}};
  for (const field &each : service_fields()) {
    if (each.owner != field_owner::entry) {
      object[std::string(each.name)] = each.get(shown.row());
    }
  }
  return object;
}

json json_of_entry(const shown_entry &shown) {
  json object = json_of(shown.view);
  for (const field &each : service_fields()) {
    if (each.owner == field_owner::entry) {
      object[std::string(each.name)] = each.get(shown.row);
    }
  }
  return object;
}

json json_of_show(const show_options &options, const shown_service &shown) {
  return {{"file", options.file.string()},
          {"service", json_of_service(shown)},
          {"transponder", json_of_fields(transponder_fields(), shown.transponder())},
          {"network", json_of_fields(network_fields(), shown.network())},
          {"entries", array_of(shown.entries(), json_of_entry)}};
}

void print_field(std::string_view title, const std::string &value) { fmt::print("  {:<16}{}\n", title, value); }

// What is not set is not shown.
void print_service(const shown_service &shown) {
  fmt::print("{}\n", painted(harmless(shown.service().name), style::bold));
  print_field("identity", identity_text(shown.service().id()));
  for (const field &each : service_fields()) {
    const std::string value = each.owner == field_owner::entry ? "" : text_of_value(each.get(shown.row()));
    if (!value.empty()) {
      print_field(each.title, harmless(value));
    }
  }
}

template <class Row>
void print_record(std::string_view title, std::span<const record_field<Row>> fields, const Row &row) {
  fmt::print("{}\n", painted(title, style::bold));
  for (const record_field<Row> &each : fields) {
    print_field(each.title, harmless(text_of_value(each.get(row))));
  }
}

void print_entries(const shown_service &shown) {
  const std::vector<shown_entry> entries = shown.entries();
  if (entries.empty()) {
    fmt::print("In no view.\n");
    return;
  }
  text_table table({{"view", false}, {"number", true}, {"position", true}, {"tag", true}, {"favourite key", true}});
  for (const auto &[view, row] : entries) {
    table.add({label_of(view), text_of(row.entry->number), std::to_string(position_of(row.index)),
               std::to_string(row.entry->tag), std::to_string(row.entry->favourite_key)});
  }
  fmt::print("{}", table.text());
}

void print_show(const shown_service &shown) {
  print_service(shown);
  print_record("Transponder", transponder_fields(), shown.transponder());
  print_record("Network", network_fields(), shown.network());
  print_entries(shown);
}

int run_show(const show_options &options) {
  const line_up list = line_up_in(channel_file(options.file));
  const shown_service service = {list, service_named(list, options.service, view_named(list, options.view))};
  print_report([&] {
    if (options.as_json) {
      print_json(json_of_show(options, service));
    } else {
      print_show(service);
    }
  });
  return exit_done;
}

}  // namespace

command show_command() {
  auto options = std::make_shared<show_options>();
  return {.name = "show",
          .summary = "Show everything of one service",
          .details = {"SERVICE is a number (7, or 7-2 with a minor number) in the view, a name or a part of it, or an "
                      "identity: network index, network id, transport stream id, frequency and polarisation, service "
                      "id, as 1:2:3:11727480H:5. A text that could be several services lists them. FILE is of version "
                      "10 and is only read."},
          .sections = {{"Views", terms_of_views()}},
          .exit_codes = {{"0", "shown"},
                         {"2", "bad usage, no such service or several, no such view; a file that cannot be read, is "
                               "short or is of another version; or the report could not be written"}},
          .examples = {"chlist show channels.dat 7", "chlist show channels.dat 3 --view fav:Films",
                       "chlist show channels.dat 'News' --json", "chlist show channels.dat 1:2:3:11727480H:5"},
          .options = {{.names = "FILE", .target = &options->file, .about = "the channel file", .is_required = true},
                      {.names = "SERVICE",
                       .target = &options->service,
                       .about = "the service, by number, name or identity",
                       .is_required = true},
                      {.names = "--view",
                       .target = &options->view,
                       .about = "the view that a number is of (all)",
                       .value = "VIEW"},
                      json_option(options->as_json)},
          .run = [options] { return run_show(*options); }};
}

}  // namespace chlist
