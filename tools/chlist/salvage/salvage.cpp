// `chlist salvage`: searches the bytes, saves what is left as a list, says what came back and what is lost.
#include "chlist/commands.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "chlist/convert/conversion_report.h"
#include "chlist/fields/values.h"
#include "chlist/files/backup.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/file_bytes.h"
#include "chlist/files/file_records.h"
#include "chlist/first_of_a_kind.h"
#include "chlist/line_up/difference.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/new_list.h"
#include "chlist/report.h"
#include "chlist/salvage/salvaging.h"
#include "chlist/terminal.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct salvage_options : new_list_options {
  fs::path like;
};

json json_of_service(const placed_service &service) {
  json object = {{"offset", service.offset}};
  object.put(json_of(service.known));
  return object;
}

json json_of_torn(const torn_place &place) { return {{"offset", place.offset}, {"bytes", place.bytes}}; }

json json_of_offset(const std::size_t &offset) { return {{"offset", offset}}; }

json json_of_range(const byte_range &range) { return {{"offset", range.offset}, {"bytes", range.size}}; }

json json_of_count(const corrected_count &count) {
  return {{"what", count.what}, {"counted", count.counted}, {"present", count.present}};
}

std::string_view name_of(group_loss loss) {
  constexpr std::string_view names[] = {"empty", "unreadable", "repeated", "unknown"};
  return names[static_cast<std::size_t>(loss)];
}

json json_of_group(const lost_group &group) {
  return {{"what", group.table},
          {"loss", name_of(group.loss)},
          {"position", group.position < 0 ? json() : json(position_of(group.position))},
          {"group_id", group.id},
          {"services", group.services}};
}

json json_of_found(const found_again &found) {
  return {{"what", found.what}, {"group_id", found.id}, {"name", found.name}, {"source", found.source}};
}

std::vector<corrected_count> corrected_counts(const salvage_outcome &outcome) {
  std::vector<corrected_count> counts = outcome.list.counts;
  counts.insert(counts.end(), outcome.list.groups.counts.begin(), outcome.list.groups.counts.end());
  return counts;
}

json json_of_made(const made_record &record) {
  json object = {{"what", record.kind}, {"net_index", record.id.net_index}, {"network_id", record.id.network_id}};
  if (record.kind == "transponder") {
    object["ts_id"] = record.id.ts_id;
    object["frequency"] = record.id.frequency;
    object["polarisation"] = std::string(1, polarisation_letter(record.id));
  }
  return object;
}

json json_of_forsaken(const forsaken_record &record) { return {{"what", record.kind}, {"offset", record.offset}}; }

json json_of_counts(const record_counts &counts) {
  return {{"networks", counts.networks}, {"transponders", counts.transponders}, {"services", counts.services}};
}

json json_of_conversion(const std::optional<conversion> &converted) {
  if (!converted) {
    return {};
  }
  json object = {{"not_carried", json_of_losses(*converted)}};
  object.put(json_of_findings(*converted));
  return object;
}

constexpr std::string_view name_of(all_view all) {
  constexpr std::string_view names[] = {"kept", "filled", "numbered anew"};
  return names[static_cast<std::size_t>(all)];
}

json json_of_outcome(const salvage_options &options, const salvage_outcome &outcome) {
  return {{"file", options.input.string()},
          {"bytes", outcome.size},
          {"version", outcome.version},
          {"output", options.output.string()},
          {"recovered",
           {{"networks", outcome.recovered.networks},
            {"transponders", outcome.recovered.transponders},
            {"services", outcome.recovered.services},
            {"views", json_of_views()}}},
          {"corrected_counts", array_of(corrected_counts(outcome), json_of_count)},
          {"bytes_inserted_into_list", outcome.shift()},
          {"torn_places_of_list", array_of(outcome.torn, json_of_torn)},
          {"bytes_missing_from_list", outcome.list_bytes_missing},
          {"all_view", name_of(outcome.list.all)},
          {"entries_without_service", outcome.list.entries_without_service},
          {"favourite_groups_named_anew", outcome.list.groups.named_favourites},
          {"has_empty_favourites", outcome.list.has_empty_favourites},
          {"found_again", array_of(outcome.list.groups.found, json_of_found)},
          {"conversion", json_of_conversion(outcome.converted)},
          {"undone_transfer", outcome.transfer.empty() ? json() : json(outcome.transfer)},
          {"other_lists", array_of(outcome.other_lists, json_of_offset)},
          {"repeated", json_of_counts(outcome.repeated)},
          {"lost",
           {{"has_wrong_version", outcome.has_wrong_version},
            {"has_lost_settings", outcome.has_lost_settings},
            {"groups", array_of(outcome.list.groups.lost, json_of_group)},
            {"lost_entries", array_of(outcome.list.lost_entries, json_of)},
            {"blank_entries", outcome.list.blank_entries},
            {"counted_but_missing", json_of_counts(outcome.missing)},
            {"records_without_services", array_of(outcome.forsaken, json_of_forsaken)},
            {"bytes_of_no_record", array_of(outcome.unexplained, json_of_range)}}},
          {"other_numbers", array_of(outcome.list.other_numbers, json_of)},
          {"doubtful_services", array_of(outcome.doubtful, json_of_service)},
          {"contradicted_services", array_of(outcome.contradicted, json_of_service)},
          {"services_of_another_list", array_of(outcome.strangers, json_of_service)},
          {"made_records", array_of(outcome.made, json_of_made)},
          {"differences", outcome.is_compared ? json_of_differences(outcome.differences) : json()}};
}

void print_heading(const std::string &text, style look) { fmt::print("{}\n", painted(text, look)); }

// Of each list the first ten lines, unless all are asked for.
class printed_lists {
 public:
  explicit printed_lists(bool shows_all) : shows_all_(shows_all) {}

  template <class Record>
  void print(const std::vector<Record> &records, const std::string &heading,
             const std::function<std::string(const Record &)> &text) const {
    if (records.empty()) {
      return;
    }
    print_heading(heading, style::yellow);
    first_of_a_kind printed(shows_all_);
    for (const Record &record : records) {
      if (printed.takes(heading)) {
        fmt::print("  {}\n", text(record));
      }
    }
    for (const auto &[kind, count] : printed.left_out()) {
      fmt::print("        ...  and {} more (--all)\n", count);
    }
  }

 private:
  bool shows_all_;
};

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

void print_list_record(const salvage_outcome &outcome) {
  for (const torn_place &place : outcome.torn) {
    print_heading(fmt::format("The list's own record: {} {} near offset {}",
                              counted(static_cast<std::size_t>(std::abs(place.bytes)), "byte"),
                              place.bytes > 0 ? "inserted" : "cut out", place.offset),
                  style::yellow);
  }
  if (outcome.list_bytes_missing > 0) {
    print_heading(fmt::format("The list's own record lacks its last {}", counted(outcome.list_bytes_missing, "byte")),
                  style::yellow);
  }
  if (outcome.has_wrong_version) {
    print_heading(fmt::format("The version that the file names is not its own, {}", outcome.version), style::yellow);
  }
  if (outcome.has_lost_settings) {
    print_heading("The settings are lost", style::red);
  }
}

// "1 network, 2 services".
std::string text_of(const record_counts &records) {
  const std::pair<std::size_t, std::string_view> kinds[] = {
      {records.networks, "network"}, {records.transponders, "transponder"}, {records.services, "service"}};
  std::vector<std::string> parts;
  for (const auto &[count, kind] : kinds) {
    if (count > 0) {
      parts.push_back(counted(count, kind));
    }
  }
  return joined(parts, ", ");
}

void print_repeated(const salvage_outcome &outcome) {
  for (const std::size_t offset : outcome.other_lists) {
    print_heading(fmt::format("Another list begins at offset {}: its settings, groups and views are left out", offset),
                  style::yellow);
  }
  if (!outcome.repeated.is_none()) {
    print_heading(fmt::format("Dropped, being there already: {}", text_of(outcome.repeated)), style::yellow);
  }
}

void print_notices(const salvage_outcome &outcome) {
  if (!outcome.transfer.empty()) {
    print_heading(fmt::format("A transfer in text mode, {}, was undone: offsets are those of the file before it",
                              outcome.transfer),
                  style::yellow);
  }
  print_list_record(outcome);
  print_repeated(outcome);
  if (outcome.list.all == all_view::numbered_anew) {
    print_heading("No view had an entry left: all services are numbered anew", style::red);
  }
  if (outcome.list.all == all_view::filled) {
    print_heading("Entries of the ALL view are lost: services have the numbers of other views, or new ones",
                  style::red);
  }
  if (const std::size_t named = outcome.list.groups.named_favourites; named > 0) {
    print_heading(fmt::format("Favourite groups with a new name, the old ones being lost: {}", named), style::yellow);
  }
  if (outcome.list.has_empty_favourites) {
    print_heading("Favourite groups have no entry: whether they had some, nothing tells", style::yellow);
  }
  if (outcome.list.entries_without_service > 0) {
    print_heading(fmt::format("No service is left: {} kept, without anything to tune to",
                              outcome.list.entries_without_service == 1
                                  ? "1 entry is"
                                  : fmt::format("{} entries are", outcome.list.entries_without_service)),
                  style::red);
  }
  if (!outcome.missing.is_none()) {
    print_heading(fmt::format("Counts claim {} more than came back", text_of(outcome.missing)), style::yellow);
  }
}

std::string text_of_count(const corrected_count &count) {
  return fmt::format("{}: {} -> {}", count.what, count.counted, count.present);
}

std::string text_of_group(const lost_group &group) {
  const std::string where = fmt::format("{}, position {}", group.table, position_of(group.position));
  switch (group.loss) {
    case group_loss::empty:
      return where + ": nothing is left of it";
    case group_loss::unreadable:
      return where + ": its name is damaged";
    case group_loss::repeated:
      return fmt::format("{}: has the id {} of an earlier one", where, group.id);
    default:
      return fmt::format("{} {}: {} it, and it is not there", group.table, group.id,
                         group.services == 1 ? "1 service has" : fmt::format("{} services have", group.services));
  }
}

std::string text_of_found(const found_again &found) {
  const std::string name = found.name.empty() ? "" : ' ' + shown(found.name);
  return fmt::format("{}{}{}, in {}", found.what, found.what == "settings" ? "" : fmt::format(" {}", found.id), name,
                     found.source);
}

std::string text_of_forsaken(const forsaken_record &record) {
  return fmt::format("{:>9}  {}", record.offset, record.kind);
}

std::string text_of_range(const byte_range &range) {
  return fmt::format("{:>9}  {}", range.offset, counted(range.size, "byte"));
}

// Entries that resolve to no service are among the lost ones.
void print_conversion(const conversion &converted, const printed_lists &lists) {
  print_losses(converted);
  lists.print<known_service>(converted.duplicates, "The conversion dropped services:", text_of_duplicate);
  lists.print<cut_array>(converted.cut, "Counts outside their arrays:", text_of_cut);
}

// A file has no checksum: of what stands in it once nothing tells whether it is as it was.
std::string text_of_soundness(const salvage_options &options, const salvage_outcome &outcome) {
  if (outcome.is_compared) {
    return fmt::format("Everything came back: {} has the same.", options.like.string());
  }
  return outcome.converted && outcome.converted->has_losses()
             ? "Nothing is missing that version 10 has a place for, and nothing contradicts itself."
             : "Nothing is missing, and nothing contradicts itself.";
}

void print_comparison(const salvage_options &options, const salvage_outcome &outcome) {
  if (!outcome.differences.empty()) {
    print_heading(fmt::format("From {} to what came back:", options.like.string()), style::yellow);
    fmt::print("{}", text_of_differences(outcome.differences));
  }
}

void print_outcome(const salvage_options &options, const salvage_outcome &outcome) {
  const printed_lists lists(options.shows_all);
  print_recovered(options, outcome);
  print_notices(outcome);
  lists.print<corrected_count>(corrected_counts(outcome), "Counts that were corrected:", text_of_count);
  lists.print<lost_group>(outcome.list.groups.lost, "Lost groups:", text_of_group);
  lists.print<found_again>(outcome.list.groups.found, "Found again in other copies:", text_of_found);
  if (outcome.converted) {
    print_conversion(*outcome.converted, lists);
  }
  lists.print<made_record>(outcome.made, "Records made anew from their services:", text_of_made);
  lists.print<placed_service>(outcome.doubtful, "In doubt, their names or frequencies are damaged:", text_of_placed);
  lists.print<placed_service>(outcome.contradicted,
                              "In doubt, the views name other services in their places:", text_of_placed);
  lists.print<placed_entry>(outcome.list.other_numbers, "In doubt, ALL shows them under other numbers:",
                            [](const placed_entry &entry) { return describe(entry); });
  lists.print<placed_service>(outcome.strangers,
                              "In doubt, they stand behind the list's end and in none of its views:", text_of_placed);
  lists.print<placed_entry>(outcome.list.lost_entries, "Lost entries, their services did not come back:",
                            [](const placed_entry &entry) { return describe(entry); });
  if (outcome.list.blank_entries > 0) {
    print_heading(fmt::format("Lost entries of which nothing is left: {}", outcome.list.blank_entries), style::yellow);
  }
  lists.print<forsaken_record>(outcome.forsaken,
                               "Lost transponders and networks, none of their services came back:", text_of_forsaken);
  lists.print<byte_range>(outcome.unexplained, "Lost bytes, which belong to no record:", text_of_range);
  print_comparison(options, outcome);
  if (!outcome.has_findings()) {
    print_heading(text_of_soundness(options, outcome), style::green);
  }
}

// Another channel file, whatever is left of it.
struct other_file {
  explicit other_file(const fs::path &path) : bytes(bytes_of_file(path)), records(bytes) {}

  [[nodiscard]] bool is_list() const { return is_known_version(records.version()) && records.has_list(); }
  [[nodiscard]] bool is_sound() const { return records.version() == CHANNEL_LIST_VERSION && records.is_whole(); }

  std::vector<std::byte> bytes;
  file_records records;
};

list_copies copies_for(const salvage_options &options, const std::optional<other_file> &like) {
  list_copies copies;
  if (like) {
    if (!like->is_list()) {
      throw foreign_file(options.like, "is no channel file: there is nothing to be found again in it");
    }
    copies.emplace_back(options.like.string(), like->records);
  }
  std::error_code none;
  if (const fs::path kept = backup_of(options.input); fs::is_regular_file(kept, none)) {
    if (const other_file backup(kept); backup.is_list()) {
      copies.emplace_back(kept.string(), backup.records);
    }
  }
  return copies;
}

void compare_with(const other_file &like, salvage_outcome &outcome) {
  outcome.is_compared = true;
  outcome.differences = differences(line_up_of(like.records.list()), line_up_in_memory());
}

salvage_outcome salvage(const salvage_options &options) {
  const std::vector<std::byte> bytes = bytes_of_file(options.input);
  std::optional<other_file> like;
  if (!options.like.empty()) {
    like.emplace(options.like);
  }
  list_copies copies = copies_for(options, like);
  progress searched("Bytes searched");
  try {
    salvage_outcome outcome = salvage_to_memory(
        bytes, std::move(copies), [&](std::size_t done, std::size_t total) { searched.reached(done, total); });
    if (like && like->is_sound()) {
      compare_with(*like, outcome);
    }
    return outcome;
  } catch (const std::runtime_error &error) {
    throw foreign_file(options.input, error.what());
  }
}

constexpr new_list_road<salvage_options, salvage_outcome> road = {salvage, json_of_outcome, print_outcome};

}  // namespace

command salvage_command() {
  auto options = std::make_shared<salvage_options>();
  return {
      .name = "salvage",
      .summary = "Rebuild a channel list from a damaged file",
      .details =
          {"For files that end early, have bytes inserted or cut out, or stretches that were wiped or overwritten; for "
           "files that a transfer took for text, and such that hold a list twice. Services are found wherever they "
           "stand: each repeats what its transponder, its neighbours and the entries of the views say. Views keep "
           "the numbers and favourites of all services that came back; entries of services that did not are "
           "dropped. Where the ALL view is cut, services get their numbers from other views, or new ones. Of a "
           "file that ends before the first service, groups and entries are kept. Counts are made right. "
           "Transponders and networks whose own records are lost are made anew from their services. A damaged "
           "file of version 7, 8 or 9 is converted as `chlist convert` does. OUT is of version 10, and is replaced "
           "as a whole or not at all; it cannot be DAMAGED itself.",
           "Names of providers, genres, networks and favourite groups, and settings, are found again in other "
           "copies of the list: in LIST, in DAMAGED.bak, where edits keep what a file was before, and in a second "
           "list of DAMAGED itself. With LIST, what came back is compared with it: nothing else tells whether a "
           "value that stands in one place only is as it was."},
      .exit_codes = {{"0", "nothing that DAMAGED held is missing or in doubt"},
                     {"1", "something is lost, or in doubt; the report says what"},
                     {"2", "nothing was written: bad usage, DAMAGED cannot be read or holds nothing of a list, OUT "
                           "cannot be written; or only the report could not be written"}},
      .examples = {"chlist check channels.dat",
                   "chlist salvage channels.dat -o rescued.dat && chlist check rescued.dat"},
      .options =
          {{.names = "DAMAGED", .target = &options->input, .about = "the channel file to read", .is_required = true},
           {.names = "-o,--output",
            .target = &options->output,
            .about = "the channel file to write",
            .value = "OUT",
            .is_required = true},
           {.names = "--like",
            .target = &options->like,
            .about = "another copy of the list, or one that is like it",
            .value = "LIST"},
           {.names = "--all",
            .target = &options->shows_all,
            .about = "tell every finding, not only the first ten of each kind"},
           {.names = "--json", .target = &options->as_json, .about = "report as JSON, every finding included"}},
      .run = [options] { return make_new_list(*options, road); }};
}

}  // namespace chlist
