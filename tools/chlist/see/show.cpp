// `chlist show`: one service, where it hangs in the hierarchy, and every entry that shows it.
#include "chlist/commands.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "channel/store/hierarchy.h"
#include "chlist/exit_codes.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/faithful_load.h"
#include "chlist/service/columns.h"
#include "chlist/service/names.h"
#include "chlist/service/selection.h"
#include "chlist/terminal.h"
#include "chlist/text/broadcast_text.h"
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
  std::size_t position = 0;
  const virtual_channel_st *entry = nullptr;
};

std::vector<shown_entry> entries_of(const channel_st &service) {
  std::vector<shown_entry> found;
  for (const list_view &view : views_of(*get_channel_list())) {
    const auto entries = view.entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
      if (entries[i].rch == &service) {
        found.push_back({view.name, i, &entries[i]});
      }
    }
  }
  return found;
}

// The records that a service hangs from, whatever its own fields say.
std::pair<const network_ch_st *, const tp_ch_st *> place_of(const channel_st &service) {
  for (const auto [network, transponder, each] : channel::all_services_of(get_channel_list()->network_list)) {
    if (&each == &service) {
      return {&network, &transponder};
    }
  }
  return {};
}

bool is_of_entry(const column &each) {
  static constexpr std::string_view of_entries[] = {"position", "number", "minor", "tag", "favourite_key"};
  return std::ranges::find(of_entries, each.name) != std::end(of_entries);
}

json json_of_service(const channel_st &service) {
  json object = {{"identity", identity_text(service)}};
  for (const column &each : all_columns()) {
    if (!is_of_entry(each)) {
      object[std::string(each.name)] = each.value({nullptr, &service, 0});
    }
  }
  return object;
}

json json_of_transponder(const tp_ch_st &transponder) {
  return {{"ts_id", transponder.ts_id},
          {"frequency", transponder.frequency},
          {"polarisation", transponder.polarisation == 0 ? "H" : "V"},
          {"services", transponder.rch_num}};
}

json json_of_network(const network_ch_st &network) {
  return {{"net_index", network.net_index},
          {"network_id", network.network_id},
          {"name", name_in(network.network_name)},
          {"transponders", network.tp_num}};
}

json json_of_entry(const shown_entry &shown) {
  json object = json_of(shown.view);
  for (const column &each : all_columns()) {
    if (is_of_entry(each)) {
      object[std::string(each.name)] = each.value({shown.entry, shown.entry->rch, shown.position});
    }
  }
  return object;
}

json json_of_show(const show_options &options, const channel_st &service) {
  const auto [network, transponder] = place_of(service);
  return {{"file", options.file.string()},
          {"service", json_of_service(service)},
          {"transponder", json_of_transponder(*transponder)},
          {"network", json_of_network(*network)},
          {"entries", array_of(entries_of(service), json_of_entry)}};
}

void print_field(std::string_view title, const std::string &value) { fmt::print("  {:<16}{}\n", title, value); }

// What is not set is not shown.
void print_service(const channel_st &service) {
  fmt::print("{}\n", painted(harmless(name_in(service.name[0].text)), style::bold));
  print_field("identity", identity_text(service));
  for (const column &each : all_columns()) {
    const std::string value = is_of_entry(each) ? "" : text_of_value(each.value({nullptr, &service, 0}));
    if (!value.empty()) {
      print_field(each.title, harmless(value));
    }
  }
}

void print_place(const channel_st &service) {
  const auto [network, transponder] = place_of(service);
  fmt::print("{}\n", painted("Transponder", style::bold));
  print_field("ts", std::to_string(transponder->ts_id));
  print_field("frequency", fmt::format("{} {}", transponder->frequency, transponder->polarisation == 0 ? 'H' : 'V'));
  print_field("services", std::to_string(transponder->rch_num));
  fmt::print("{}\n", painted("Network", style::bold));
  print_field("name", harmless(name_in(network->network_name)));
  print_field("net", std::to_string(network->net_index));
  print_field("network", std::to_string(network->network_id));
  print_field("transponders", std::to_string(network->tp_num));
}

void print_entries(const channel_st &service) {
  const std::vector<shown_entry> entries = entries_of(service);
  if (entries.empty()) {
    fmt::print("In no view.\n");
    return;
  }
  text_table table({{"view", false}, {"number", true}, {"position", true}, {"tag", true}, {"favourite key", true}});
  for (const shown_entry &each : entries) {
    table.add({label_of(each.view), number_text_of(*each.entry), std::to_string(each.position),
               std::to_string(each.entry->vch_tag), std::to_string(each.entry->favorite_id)});
  }
  fmt::print("{}", table.text());
}

void print_show(const channel_st &service) {
  print_service(service);
  print_place(service);
  print_entries(service);
}

int run_show(const show_options &options) {
  const channel_file input(options.file);
  input.must_be_current();
  load_faithfully(input);
  const channel_st &service = service_named(options.service, view_named(options.view));
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
                      {.names = "--json", .target = &options->as_json, .about = "report as JSON"}},
          .run = [options] { return run_show(*options); }};
}

}  // namespace chlist
