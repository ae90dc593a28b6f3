// `chlist salvage`: searches the bytes, saves what is left as a list, says what came back and what is lost.
#include "chlist/commands.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "chlist/common_options.h"
#include "chlist/compare/difference.h"
#include "chlist/convert/conversion_report.h"
#include "chlist/edit/edits.h"
#include "chlist/fields/described.h"
#include "chlist/files/backup.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/file_bytes.h"
#include "chlist/files/file_records.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/new_list.h"
#include "chlist/position.h"
#include "chlist/report.h"
#include "chlist/salvage/salvage_report.h"
#include "chlist/salvage/salvaging.h"
#include "chlist/terminal.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct salvage_options : new_list_options {  // without an output: into the list in memory
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

json json_of_made(const made_record &record) {
  json object = {{"what", name_of(record.kind)}};
  put_fields(object, identity_fields(record.kind), record.id);
  return object;
}

json json_of_record_without_services(const record_without_services &record) {
  return {{"what", record.kind}, {"offset", record.offset}};
}

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
          {"output", options.output.empty() ? json() : json(options.output.string())},
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
            {"records_without_services", array_of(outcome.without_services, json_of_record_without_services)},
            {"bytes_of_no_record", array_of(outcome.unexplained, json_of_range)}}},
          {"other_numbers", array_of(outcome.list.other_numbers, json_of)},
          {"doubtful_services", array_of(outcome.doubtful, json_of_service)},
          {"contradicted_services", array_of(outcome.contradicted, json_of_service)},
          {"services_of_another_list", array_of(outcome.of_another_list, json_of_service)},
          {"made_records", array_of(outcome.made, json_of_made)},
          {"differences", outcome.is_compared ? json_of_differences(outcome.differences) : json()}};
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

void print_salvage(const salvage_options &options, const salvage_outcome &outcome) {
  print_outcome(stdout, {harmless(options.output.string()), options.like.string(), options.shows_all}, outcome);
}

constexpr new_list_road<salvage_options, salvage_outcome> road = {salvage, json_of_outcome, print_salvage};

// What came back takes the place of the whole list.
void salvage_into(const salvage_options &options, edited_list &list) {
  const salvage_outcome outcome = salvage(options);
  list.services_changed();
  list.count_as_chosen(outcome.recovered.services);
  list.tables.push_back({text_of_report([&](std::FILE *to) {
                           print_outcome(to, {"the list", options.like.string(), options.shows_all}, outcome);
                         }),
                         json_of_outcome(options, outcome)});
  if (outcome.has_findings()) {
    list.notes.push_back(options.input.string() + ": something of it is lost, or in doubt");
  }
}

option option_of_damaged(salvage_options &options) {
  return {.names = "DAMAGED", .target = &options.input, .about = "the channel file to read", .is_required = true};
}

std::vector<option> options_of_search(salvage_options &options) {
  return {{.names = "--like",
           .target = &options.like,
           .about = "another copy of the list, or one that is like it",
           .value = "LIST"},
          all_findings_option(options.shows_all)};
}

std::vector<option> options_of(salvage_options &options) {
  std::vector<option> all = {option_of_damaged(options),
                             {.names = "-o,--output",
                              .target = &options.output,
                              .about = "the channel file to write",
                              .value = "OUT",
                              .is_required = true}};
  std::ranges::move(options_of_search(options), std::back_inserter(all));
  all.push_back(json_option(options.as_json));
  return all;
}

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
      .options = options_of(*options),
      .run = [options] { return make_new_list(*options, road); }};
}

edit_row salvage_edit() {
  auto options = std::make_shared<salvage_options>();
  std::vector<option> all = {option_of_damaged(*options)};
  std::ranges::move(options_of_search(*options), std::back_inserter(all));
  return {.name = "salvage",
          .summary = "Take what is left of a damaged file in place of the list",
          .details = {"As `chlist salvage` does: services are found wherever they stand, and the report tells what "
                      "came back and what is lost."},
          .examples = {},
          .options = std::move(all),
          .take = taking<salvage_options>(options, salvage_into)};
}

}  // namespace chlist
