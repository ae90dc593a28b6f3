// What the search found becomes a sound file, which the library reads or converts; then its views are repaired.
#include "chlist/salvage/salvaging.h"

#include <channel/store.h>
#include <channel/views.h>

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "channel/store/hierarchy.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/faithful_load.h"
#include "chlist/salvage/damaged_list.h"
#include "chlist/salvage/list_arrays.h"
#include "chlist/salvage/rebuilt_file.h"
#include "chlist/salvage/record_bytes.h"
#include "chlist/salvage/transfer_damage.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

// A service that no view names, on a transponder that has all its services, one of which the views name and it does
// not have: its own service id is damaged, or the entry is of a service that is gone.
class contradictions {
 public:
  explicit contradictions(const damaged_list &result)
      : result_(result), services_(witnesses_of(result.records.services)) {
    for_each_counted_entry(result.list.bytes, [this](const virtual_channel_st &entry) {
      if (const channel::identity id = channel::identity_of(entry); !services_.list(id)) {
        unresolved_.add_entry(id);
      }
    });
  }

  [[nodiscard]] bool concern(const salvaged_transponder &transponder, std::size_t service) const {
    const channel::identity &id = result_.records.services[service].id;
    return transponder.offset && transponder.services.size() >= transponder.counted && !result_.known.list(id) &&
           unresolved_.know_transponder(id);
  }

 private:
  const damaged_list &result_;
  witnesses services_;
  witnesses unresolved_;
};

placed_service placed(byte_span file, const found_service &service) {
  channel_st record = {};
  read_image(file, service.offset, record);
  return {service.offset, known_as(record)};
}

void note_services(byte_span file, const damaged_list &result, salvage_outcome &outcome) {
  const contradictions contradicted(result);
  for (const salvaged_transponder &transponder : result.records.transponders) {
    for (const std::size_t service : transponder.services) {
      const found_service &taken = result.records.services[service];
      if (taken.is_doubtful) {
        outcome.doubtful.push_back(placed(file, taken));
      }
      if (contradicted.concern(transponder, service)) {
        outcome.contradicted.push_back(placed(file, taken));
      }
    }
  }
}

void note_made(const damaged_list &result, salvage_outcome &outcome) {
  for (const salvaged_network &network : result.records.networks) {
    if (!network.offset && is_kept(result.records, network)) {
      outcome.made.push_back({identity_part::network, network.id});
    }
  }
  for (const salvaged_transponder &transponder : result.records.transponders) {
    if (!transponder.offset && is_kept(transponder)) {
      outcome.made.push_back({identity_part::transponder, transponder.id});
    }
  }
}

std::size_t lacking(std::size_t counted, std::size_t present) { return counted > present ? counted - present : 0; }

// The list's own count, where it stands in its place: the record has its end, and a network comes next.
std::size_t claimed_networks(const damaged_list &result) {
  const auto &unexplained = result.records.unexplained;
  const bool is_in_place =
      result.list.missing == 0 && (unexplained.empty() || unexplained.front().offset != result.list.end);
  return is_in_place ? CHLIST_FIELD(result.list.bytes, 0, channel_list_st, network_num) : 0;
}

record_counts missing_in(const damaged_list &result) {
  const salvaged_records &records = result.records;
  record_counts missing;
  std::size_t networks = records.network_records.size();
  for (const salvaged_network &network : records.networks) {
    networks += !network.offset && is_kept(records, network) ? 1 : 0;
    const auto transponders = static_cast<std::size_t>(std::ranges::count_if(
        network.transponders, [&](std::size_t number) { return is_kept(records.transponders[number]); }));
    missing.transponders += lacking(network.counted, transponders + network.repeated);
  }
  missing.networks = lacking(claimed_networks(result), networks);
  for (const salvaged_transponder &transponder : records.transponders) {
    missing.services += lacking(transponder.counted, transponder.services.size() + transponder.repeated);
  }
  for (const record_without_services &record : records.without_services) {
    missing.services += record.kind == "transponder" ? record.counted : 0;
  }
  return missing;
}

record_counts repeated_in(const salvaged_records &records) {
  record_counts repeated = {0, 0, records.repeated.size()};
  repeated.networks = records.network_records.size();
  for (const salvaged_network &network : records.networks) {
    repeated.networks -= network.offset ? 1 : 0;
    repeated.transponders += network.repeated;
  }
  return repeated;
}

// Where the list ends that the file begins with: another begins there, or more networks follow than it counts.
std::size_t end_of_first_list(byte_span file, const damaged_list &result) {
  std::size_t end = result.other_lists.empty() ? file.size() : result.other_lists.front();
  const std::size_t claimed = claimed_networks(result);
  if (const auto &networks = result.records.network_records; claimed > 0 && networks.size() > claimed) {
    end = std::min(end, networks[claimed]);
  }
  return end;
}

void note_services_of_another_list(byte_span file, const damaged_list &result, salvage_outcome &outcome) {
  const std::size_t end = end_of_first_list(file, result);
  for (const found_service &service : result.records.services) {
    if (service.offset >= end && !result.known.list(service.id)) {
      outcome.of_another_list.push_back(placed(file, service));
    }
  }
}

void load(const damaged_list &result, byte_span damaged, salvage_outcome &outcome) {
  const channel_file input("the rebuilt file",
                           rebuilt_bytes(damaged, result.sizes, result.version, result.list, result.records));
  if (result.version == CHANNEL_LIST_VERSION) {
    load_faithfully(input);
  } else {
    outcome.converted = convert_to_memory(input);
  }
}

// A load leaves a view whose count was damaged.
void restore_current_view(const list_image &list) {
  const auto type = static_cast<std::int8_t>(CHLIST_FIELD(list.bytes, 0, channel_list_st, vch_type));
  if (type != get_vindex_type() && type >= VIEW_ALL && type <= VIEW_FAVOURITE_LAST && type != VIEW_WORK) {
    const std::int16_t *count = get_virtual_channel_vnumber(type);
    if (count != nullptr && *count > 0) {
      change_vindex_type(type);
    }
  }
}

// A second list of the same file is a copy as good as any.
void add_other_lists(list_copies &copies, const damaged_list &result, byte_span damaged) {
  for (const std::size_t offset : result.other_lists) {
    copies.emplace_back(fmt::format("the list at offset {}", offset), file_records(damaged.subspan(offset)));
  }
}

void find_settings(salvage_outcome &outcome, const list_copies &copies) {
  if (outcome.has_lost_settings && !copies.empty()) {
    const channel_list_st &theirs = copies.front().list();
    view_settings::of(theirs).restore();
    get_channel_list()->use_tuner = theirs.use_tuner;
    get_channel_list()->bouquet_id = theirs.bouquet_id;
    outcome.list.groups.found.push_back({"settings", 0, "", copies.front().name()});
  }
}

void find_network_name(network_ch_st &network, const list_copies &copies, std::vector<found_again> &found) {
  for (const list_copy &copy : copies) {
    const std::string name = copy.network_name(network.net_index, network.network_id);
    if (network.network_name[0] == '\0' && !name.empty()) {
      name.copy(network.network_name, sizeof network.network_name);
      found.push_back({"network", network.network_id, name_in(network.network_name), copy.name()});
    }
  }
}

void find_network_names(salvage_outcome &outcome, const list_copies &copies) {
  for (network_ch_st &network : channel::networks_of(get_channel_list()->network_list)) {
    find_network_name(network, copies, outcome.list.groups.found);
  }
}

// Without services a file has to say that it is one.
void must_hold_something(byte_span damaged, const salvage_outcome &outcome) {
  const bool has_list = is_known_version(version_in(damaged)) && outcome.list.is_of_a_list;
  if (outcome.recovered.services == 0 && !has_list) {
    reset_channel_list();
    throw std::runtime_error("nothing of a channel list is left in it: there is nothing to recover");
  }
}

salvage_outcome outcome_of(byte_span damaged, const damaged_list &result) {
  salvage_outcome outcome;
  outcome.size = damaged.size();
  outcome.version = result.version;
  note_services(damaged, result, outcome);
  note_made(result, outcome);
  outcome.without_services = result.records.without_services;
  outcome.unexplained = result.records.unexplained;
  outcome.missing = missing_in(result);
  outcome.repeated = repeated_in(result.records);
  outcome.other_lists = result.other_lists;
  note_services_of_another_list(damaged, result, outcome);
  std::ptrdiff_t before = 0;
  for (const shift_step &step : result.list.steps) {
    outcome.torn.push_back(
        {static_cast<std::size_t>(static_cast<std::ptrdiff_t>(step.from) + before), step.shift - before});
    before = step.shift;
  }
  outcome.list_bytes_missing = result.list.missing;
  outcome.has_wrong_version = version_in(damaged) != result.version;
  outcome.has_lost_settings = result.list.has_lost_settings;
  return outcome;
}

// What was found in the bytes that fit better: those of the file, or those before a transfer in text mode.
struct read_file {
  damaged_list list;
  byte_span bytes;
  std::string_view transfer;
};

std::size_t fit_of(const damaged_list &result) {
  const witnesses services = witnesses_of(result.records.services);
  std::size_t fit = result.records.services.size();
  for_each_counted_entry(result.list.bytes, [&](const virtual_channel_st &entry) {
    fit += services.list(channel::identity_of(entry)) ? 1 : 0;
  });
  return fit;
}

read_file search_best(byte_span damaged, const std::optional<undone_transfer> &undone,
                      const salvage_progress &progress) {
  const std::size_t own = searches_of(damaged) * damaged.size();
  const std::size_t total = own + (undone ? searches_of(undone->bytes) * undone->bytes.size() : 0);
  const auto tell = [&](std::size_t done) {
    if (progress) {
      progress(done, total);
    }
  };
  read_file as_it_is = {search_file(damaged, tell), damaged, ""};
  if (!undone) {
    return as_it_is;
  }
  read_file before = {search_file(undone->bytes, [&](std::size_t done) { tell(own + done); }), undone->bytes,
                      undone->what};
  return fit_of(before.list) > fit_of(as_it_is.list) ? std::move(before) : std::move(as_it_is);
}

}  // namespace

std::ptrdiff_t salvage_outcome::shift() const {
  std::ptrdiff_t bytes = 0;
  for (const torn_place &place : torn) {
    bytes += place.bytes;
  }
  return bytes;
}

bool salvage_outcome::has_findings() const {
  return has_lost_records() || has_lost_of_list() || has_doubts() || (converted && !converted->duplicates.empty());
}

bool salvage_outcome::has_lost_records() const {
  return !made.empty() || !without_services.empty() || !unexplained.empty() || !missing.is_none() ||
         !repeated.is_none();
}

bool salvage_outcome::has_lost_of_list() const {
  return !torn.empty() || list_bytes_missing != 0 || has_wrong_version || has_lost_settings ||
         !list.lost_entries.empty() || list.blank_entries > 0 || list.entries_without_service > 0 ||
         list.all != all_view::kept || !list.groups.lost.empty() || list.groups.named_favourites > 0;
}

bool salvage_outcome::has_doubts() const {
  return !transfer.empty() || !differences.empty() || !doubtful.empty() || !contradicted.empty() ||
         !other_lists.empty() || !of_another_list.empty() || !list.counts.empty() || !list.groups.counts.empty() ||
         !list.other_numbers.empty() || list.has_empty_favourites;
}

salvage_outcome salvage_to_memory(byte_span damaged, list_copies copies, const salvage_progress &progress) {
  const std::optional<undone_transfer> undone = undo_transfer(damaged);
  const read_file read = search_best(damaged, undone, progress);
  salvage_outcome outcome = outcome_of(read.bytes, read.list);
  outcome.size = damaged.size();
  outcome.transfer = read.transfer;
  load(read.list, read.bytes, outcome);
  add_other_lists(copies, read.list, read.bytes);
  outcome.list = repair_list_in_memory(read.list.list.is_all_view_torn, copies);
  find_settings(outcome, copies);
  find_network_names(outcome, copies);
  restore_current_view(read.list.list);
  outcome.recovered = count_hierarchy(*get_channel_list());
  must_hold_something(read.bytes, outcome);
  return outcome;
}

}  // namespace chlist
