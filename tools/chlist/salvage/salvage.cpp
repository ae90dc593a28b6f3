// `chlist salvage`: searches the bytes, saves what is left as a list, says what came back and what is lost.
#include "chlist/salvage/salvage.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "chlist/exit_codes.h"
#include "chlist/files/distinct_files.h"
#include "chlist/files/list_file.h"
#include "chlist/report.h"
#include "chlist/salvage/salvaging.h"
#include "chlist/terminal.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr const char *description = "Rebuild a channel list from a damaged file";

constexpr const char *details =
    "For files that end early, have bytes inserted or cut out, or stretches that were wiped or overwritten. Services\n"
    "are found wherever they stand: each repeats what its transponder, its neighbours and the entries of the views\n"
    "say. Views keep the numbers and favourites of all services that came back; entries of services that did not are\n"
    "dropped. Counts are made right. Transponders and networks whose own records are lost are made anew from their\n"
    "services. A damaged file of version 7, 8 or 9 is converted as `chlist convert` does. OUT is of version 10, and "
    "is\n"
    "replaced as a whole or not at all; it cannot be DAMAGED itself.\n"
    "\n"
    "Exit codes:\n"
    "  0  everything that DAMAGED held came back\n"
    "  1  something is lost, or in doubt; the report says what\n"
    "  2  nothing was written: bad usage, DAMAGED cannot be read or holds no service, OUT cannot be written; or only\n"
    "     the report could not be written\n"
    "\n"
    "Examples:\n"
    "  chlist check channels.dat\n"
    "  chlist salvage channels.dat -o rescued.dat && chlist check rescued.dat";

struct salvage_options {
  fs::path damaged;
  fs::path output;
  bool as_json = false;
};

json json_of_service(const placed_service &service) {
  json object = {{"offset", service.offset}};
  object.update(json_of(service.known));
  return object;
}

json json_of_range(const byte_range &range) { return {{"offset", range.offset}, {"size", range.size}}; }

json json_of_count(const corrected_count &count) {
  return {{"what", count.what}, {"counted", count.counted}, {"present", count.present}};
}

json json_of_made(const made_record &record) {
  json object = {{"kind", record.kind}, {"net_index", record.id.net_index}, {"network_id", record.id.network_id}};
  if (record.kind == "transponder") {
    object["ts_id"] = record.id.ts_id;
    object["frequency"] = record.id.frequency;
    object["polarisation"] = std::string(1, polarisation_letter(record.id));
  }
  return object;
}

json json_of_views() {
  json views = json::array();
  for (const list_view &view : views_of(*get_channel_list())) {
    json object = json_of(view.name);
    object["entries"] = view.size();
    views.push_back(object);
  }
  return views;
}

json json_of_outcome(const salvage_options &options, const salvage_outcome &outcome) {
  return {{"damaged", options.damaged.string()},
          {"size", outcome.size},
          {"version", outcome.version},
          {"output", options.output.string()},
          {"recovered",
           {{"networks", outcome.recovered.networks},
            {"transponders", outcome.recovered.transponders},
            {"services", outcome.recovered.services},
            {"views", json_of_views()}}},
          {"corrected_counts", array_of(outcome.list.counts, json_of_count)},
          {"bytes_inserted_into_list", outcome.shift},
          {"numbered_anew", outcome.list.is_numbered_anew},
          {"lost",
           {{"settings", outcome.has_lost_settings},
            {"entries", array_of(outcome.list.lost_entries, json_of)},
            {"services_counted_but_missing", outcome.missing_services},
            {"contradicted_services", array_of(outcome.contradicted, json_of_service)},
            {"records_without_services", outcome.forsaken},
            {"bytes_of_no_record", array_of(outcome.unexplained, json_of_range)}}},
          {"doubtful_services", array_of(outcome.doubtful, json_of_service)},
          {"made_records", array_of(outcome.made, json_of_made)}};
}

void print_heading(const std::string &text, style look) { fmt::print("{}\n", painted(text, look)); }

template <class Record>
void print_list(const std::vector<Record> &records, const std::string &heading,
                const std::function<std::string(const Record &)> &text) {
  if (records.empty()) {
    return;
  }
  print_heading(heading, style::yellow);
  for (const Record &record : records) {
    fmt::print("  {}\n", text(record));
  }
}

std::string text_of_placed(const placed_service &service) {
  return fmt::format("{:>9}  {}", service.offset, describe(service.known));
}

std::string text_of_made(const made_record &record) {
  const std::string network = fmt::format("net {}, network {}", record.id.net_index, record.id.network_id);
  return record.kind == "network" ? fmt::format("network ({}): its name is lost", network)
                                  : fmt::format("transponder ({}, ts {}, {} {})", network, record.id.ts_id,
                                                record.id.frequency, polarisation_letter(record.id));
}

void print_recovered(const salvage_options &options, const salvage_outcome &outcome) {
  fmt::print("{}: {} on {} in {}, from {} of version {}\n", options.output.string(),
             counted(outcome.recovered.services, "service"), counted(outcome.recovered.transponders, "transponder"),
             counted(outcome.recovered.networks, "network"), counted(outcome.size, "byte"), outcome.version);
  for (const list_view &view : views_of(*get_channel_list())) {
    if (view.size() > 0) {
      fmt::print("  {:<40}{:>6}\n", "entries: " + label_of(view.name), view.size());
    }
  }
}

void print_notices(const salvage_outcome &outcome) {
  if (outcome.shift != 0) {
    print_heading(fmt::format("The list's own record: {} {} near offset {}",
                              counted(static_cast<std::size_t>(std::abs(outcome.shift)), "byte"),
                              outcome.shift > 0 ? "inserted" : "cut out", outcome.shifted_from),
                  style::yellow);
  }
  if (outcome.has_lost_settings) {
    print_heading("Settings, groups and views are lost", style::red);
  }
  if (outcome.list.is_numbered_anew) {
    print_heading("No view had an entry left: all services are numbered anew", style::red);
  }
  if (outcome.missing_services > 0) {
    print_heading(
        fmt::format("Transponders count {} more than they have", counted(outcome.missing_services, "service")),
        style::yellow);
  }
}

void print_outcome(const salvage_options &options, const salvage_outcome &outcome) {
  print_recovered(options, outcome);
  print_notices(outcome);
  print_list<corrected_count>(outcome.list.counts, "Counts that were corrected:", [](const corrected_count &count) {
    return fmt::format("{}: {} -> {}", count.what, count.counted, count.present);
  });
  print_list<made_record>(outcome.made, "Records made anew from their services:", text_of_made);
  print_list<placed_service>(outcome.doubtful, "In doubt, their names or frequencies are damaged:", text_of_placed);
  print_list<placed_service>(outcome.contradicted,
                             "Left out, the views name other services in their places:", text_of_placed);
  print_list<placed_entry>(outcome.list.lost_entries, "Lost entries, their services did not come back:",
                           [](const placed_entry &entry) { return describe(entry); });
  print_list<std::size_t>(outcome.forsaken, "Lost transponders and networks, none of their services came back:",
                          [](const std::size_t &offset) { return fmt::format("{:>9}", offset); });
  print_list<byte_range>(outcome.unexplained, "Lost bytes, which belong to no record:", [](const byte_range &range) {
    return fmt::format("{:>9}  {}", range.offset, counted(range.size, "byte"));
  });
  if (!outcome.has_losses()) {
    print_heading("Everything came back.", style::green);
  }
}

salvage_outcome salvage(const fs::path &damaged) {
  const std::vector<std::byte> bytes = bytes_of_file(damaged);
  try {
    return salvage_to_memory(bytes);
  } catch (const std::runtime_error &error) {
    throw std::runtime_error(damaged.string() + ": " + error.what());
  }
}

int run_salvage(const salvage_options &options) {
  must_differ(options.damaged, options.output);
  const salvage_outcome outcome = salvage(options.damaged);
  save_list_as(options.output);
  print_report([&] {
    if (options.as_json) {
      print_json(json_of_outcome(options, outcome));
    } else {
      print_outcome(options, outcome);
    }
  });
  return outcome.has_losses() ? exit_findings : exit_done;
}

}  // namespace

void add_salvage(CLI::App &app, int &exit_code) {
  CLI::App *command = app.add_subcommand("salvage", description);
  command->footer(details);
  auto options = std::make_shared<salvage_options>();
  command->add_option("DAMAGED", options->damaged, "the channel file to read")->required();
  command->add_option("-o,--output", options->output, "the channel file to write")->required()->type_name("OUT");
  command->add_flag("--json", options->as_json, "report as JSON");
  command->callback([options, &exit_code] { exit_code = run_salvage(*options); });
}

}  // namespace chlist
