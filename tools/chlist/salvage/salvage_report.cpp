// What a salvage tells people: first what came back, then what is lost or in doubt, each list with its first ten lines.
#include "chlist/salvage/salvage_report.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <cstdlib>
#include <functional>
#include <utility>

#include "chlist/convert/conversion_report.h"
#include "chlist/fields/described.h"
#include "chlist/first_of_a_kind.h"
#include "chlist/line_up/line_up.h"
#include "chlist/position.h"
#include "chlist/terminal.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

void print_heading(std::FILE *to, const std::string &text, style look) {
  fmt::print(to, "{}\n", painted(text, look, to));
}

// A list is printed with its first ten lines, unless all are asked for.
class printed_lists {
 public:
  printed_lists(std::FILE *to, bool shows_all) : to_(to), shows_all_(shows_all) {}

  template <class Record>
  void print(const std::vector<Record> &records, const std::string &heading,
             const std::function<std::string(const Record &)> &text) const {
    if (records.empty()) {
      return;
    }
    print_heading(to_, heading, style::yellow);
    first_of_a_kind printed(shows_all_);
    for (const Record &record : records) {
      if (printed.takes(heading)) {
        fmt::print(to_, "  {}\n", text(record));
      }
    }
    for (const auto &[kind, count] : printed.left_out()) {
      fmt::print(to_, "        ...  and {} more (--all)\n", count);
    }
  }

 private:
  std::FILE *to_;
  bool shows_all_;
};

std::string text_of_placed(const placed_service &service) {
  return fmt::format("{:>9}  {}", service.offset, describe(service.known));
}

std::string text_of_made(const made_record &record) {
  return fmt::format("{} ({}){}", name_of(record.kind), text_of(record.id, record.kind),
                     record.kind == identity_part::network ? ": its name is lost" : "");
}

void print_recovered(std::FILE *to, const salvage_report &report, const salvage_outcome &outcome) {
  fmt::print(to, "{}: {} on {} in {}, from {} of version {}\n", report.made,
             counted(outcome.recovered.services, "service"), counted(outcome.recovered.transponders, "transponder"),
             counted(outcome.recovered.networks, "network"), counted(outcome.size, "byte"), outcome.version);
  for (const list_view &view : views_of(*get_channel_list())) {
    if (view.size() > 0) {
      fmt::print(to, "  {:<40}{:>6}\n", "entries: " + label_of(view.name), view.size());
    }
  }
}

void print_list_record(std::FILE *to, const salvage_outcome &outcome) {
  for (const torn_place &place : outcome.torn) {
    print_heading(to,
                  fmt::format("The list's own record: {} {} near offset {}",
                              counted(static_cast<std::size_t>(std::abs(place.bytes)), "byte"),
                              place.bytes > 0 ? "inserted" : "cut out", place.offset),
                  style::yellow);
  }
  if (outcome.list_bytes_missing > 0) {
    print_heading(to,
                  fmt::format("The list's own record lacks its last {}", counted(outcome.list_bytes_missing, "byte")),
                  style::yellow);
  }
  if (outcome.has_wrong_version) {
    print_heading(to, fmt::format("The version that the file names is not its own, {}", outcome.version),
                  style::yellow);
  }
  if (outcome.has_lost_settings) {
    print_heading(to, "The settings are lost", style::red);
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

void print_repeated(std::FILE *to, const salvage_outcome &outcome) {
  for (const std::size_t offset : outcome.other_lists) {
    print_heading(to,
                  fmt::format("Another list begins at offset {}: its settings, groups and views are left out", offset),
                  style::yellow);
  }
  if (!outcome.repeated.is_none()) {
    print_heading(to, fmt::format("Dropped, being there already: {}", text_of(outcome.repeated)), style::yellow);
  }
}

// What became of the views and their numbers.
void print_views(std::FILE *to, const list_repair &list) {
  if (list.all == all_view::numbered_anew) {
    print_heading(to, "No view had an entry left: all services are numbered anew", style::red);
  }
  if (list.all == all_view::filled) {
    print_heading(to, "Entries of the ALL view are lost: services have the numbers of other views, or new ones",
                  style::red);
  }
  if (const std::size_t named = list.groups.named_favourites; named > 0) {
    print_heading(to, fmt::format("Favourite groups with a new name, the old ones being lost: {}", named),
                  style::yellow);
  }
  if (list.has_empty_favourites) {
    print_heading(to, "Favourite groups have no entry: whether they had some, nothing tells", style::yellow);
  }
  if (const std::size_t kept = list.entries_without_service; kept > 0) {
    const std::string entries = kept == 1 ? "1 entry is" : fmt::format("{} entries are", kept);
    print_heading(to, fmt::format("No service is left: {} kept, without anything to tune to", entries), style::red);
  }
}

void print_notices(std::FILE *to, const salvage_outcome &outcome) {
  if (!outcome.transfer.empty()) {
    print_heading(to,
                  fmt::format("A transfer in text mode, {}, was undone: offsets are those of the file before it",
                              outcome.transfer),
                  style::yellow);
  }
  print_list_record(to, outcome);
  print_repeated(to, outcome);
  print_views(to, outcome.list);
  if (!outcome.missing.is_none()) {
    print_heading(to, fmt::format("Counts claim {} more than came back", text_of(outcome.missing)), style::yellow);
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

std::string text_of_record_without_services(const record_without_services &record) {
  return fmt::format("{:>9}  {}", record.offset, record.kind);
}

std::string text_of_range(const byte_range &range) {
  return fmt::format("{:>9}  {}", range.offset, counted(range.size, "byte"));
}

// Entries that resolve to no service are among the lost ones.
void print_conversion(std::FILE *to, const conversion &converted, const printed_lists &lists) {
  print_losses(to, converted);
  lists.print<known_service>(converted.duplicates, "The conversion dropped services:", text_of_duplicate);
  lists.print<cut_array>(converted.cut, "Counts outside their arrays:", text_of_cut);
}

// A file has no checksum: of what stands in it once nothing tells whether it is as it was.
std::string text_of_soundness(const salvage_report &report, const salvage_outcome &outcome) {
  if (outcome.is_compared) {
    return fmt::format("Everything came back: {} has the same.", report.like);
  }
  return outcome.converted && outcome.converted->has_losses()
             ? "Nothing is missing that version 10 has a place for, and nothing contradicts itself."
             : "Nothing is missing, and nothing contradicts itself.";
}

void print_comparison(std::FILE *to, const salvage_report &report, const salvage_outcome &outcome) {
  if (!outcome.differences.empty()) {
    print_heading(to, fmt::format("From {} to what came back:", report.like), style::yellow);
    fmt::print(to, "{}", text_of_differences(outcome.differences));
  }
}

std::string text_of_entry(const placed_entry &entry) { return describe(entry); }

void print_doubts(const printed_lists &lists, const salvage_outcome &outcome) {
  lists.print<placed_service>(outcome.doubtful, "In doubt, their names or frequencies are damaged:", text_of_placed);
  lists.print<placed_service>(outcome.contradicted,
                              "In doubt, the views name other services in their places:", text_of_placed);
  lists.print<placed_entry>(outcome.list.other_numbers, "In doubt, ALL shows them under other numbers:", text_of_entry);
  lists.print<placed_service>(outcome.of_another_list,
                              "In doubt, they stand behind the list's end and in none of its views:", text_of_placed);
}

void print_lost(std::FILE *to, const printed_lists &lists, const salvage_outcome &outcome) {
  lists.print<placed_entry>(outcome.list.lost_entries,
                            "Lost entries, their services did not come back:", text_of_entry);
  if (outcome.list.blank_entries > 0) {
    print_heading(to, fmt::format("Lost entries of which nothing is left: {}", outcome.list.blank_entries),
                  style::yellow);
  }
  lists.print<record_without_services>(
      outcome.without_services,
      "Lost transponders and networks, none of their services came back:", text_of_record_without_services);
  lists.print<byte_range>(outcome.unexplained, "Lost bytes, which belong to no record:", text_of_range);
}

}  // namespace

std::vector<corrected_count> corrected_counts(const salvage_outcome &outcome) {
  std::vector<corrected_count> counts = outcome.list.counts;
  counts.insert(counts.end(), outcome.list.groups.counts.begin(), outcome.list.groups.counts.end());
  return counts;
}

void print_outcome(std::FILE *to, const salvage_report &report, const salvage_outcome &outcome) {
  const printed_lists lists(to, report.shows_all);
  print_recovered(to, report, outcome);
  print_notices(to, outcome);
  lists.print<corrected_count>(corrected_counts(outcome), "Counts that were corrected:", text_of_count);
  lists.print<lost_group>(outcome.list.groups.lost, "Lost groups:", text_of_group);
  lists.print<found_again>(outcome.list.groups.found, "Found again in other copies:", text_of_found);
  if (outcome.converted) {
    print_conversion(to, *outcome.converted, lists);
  }
  lists.print<made_record>(outcome.made, "Records made anew from their services:", text_of_made);
  print_doubts(lists, outcome);
  print_lost(to, lists, outcome);
  print_comparison(to, report, outcome);
  if (!outcome.has_findings()) {
    print_heading(to, text_of_soundness(report, outcome), style::green);
  }
}

}  // namespace chlist
