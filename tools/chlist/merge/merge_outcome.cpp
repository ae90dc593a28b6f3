// The library merges; here the new list is made ready for it, and the lists before and after are compared. A surviving
// service keeps its record where it is, so addresses tell what is new and what is gone.
#include "chlist/merge/merge_outcome.h"

#include <channel/store.h>
#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <unordered_map>
#include <utility>

// The exported merge reads a fixed path, where a receiver's channel search places its result, and does not tell a list
// that it cannot read from one that changes nothing. The operation behind it takes a list, so the tool is linked with
// the static library, where internal operations can be reached.
#include "channel/persist/detached_list.h"
#include "channel/persist/merge.h"
#include "channel/store/hierarchy.h"
#include "channel/store/memory.h"
#include "chlist/edit/service_identity.h"
#include "chlist/exchange/group_names.h"
#include "chlist/fields/described.h"
#include "chlist/files/faithful_load.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"
#include "chlist/merge/emptied_transponders.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

// Gives a service the PIDs and component tags of another record of it.
void take_streams(channel_st &service, const channel_st &from) {
  service.pmt_pid = from.pmt_pid;
  service.pcr_pid = from.pcr_pid;
  service.video_pid = from.video_pid;
  service.video_ecm_pid = from.video_ecm_pid;
  service.video_tag = from.video_tag;
  service.audio_pid = from.audio_pid;
  service.audio_tag = from.audio_tag;
}

using channel::persist::current_format;
using channel::persist::detached_list;

// Never a pointer: the record may be gone, and another service in its place.
using address = std::uintptr_t;
address address_of(const channel_st *service) { return reinterpret_cast<address>(service); }

auto services_in_memory() { return channel::all_services_of(get_channel_list()->network_list); }

struct snapshot {
  std::vector<address> order;
  std::unordered_map<address, changed_service> services;
  std::vector<list_view> views;  // of their entries only the sizes outlive the next change
};

void add_entries(snapshot &taken, const list_view &view) {
  const auto entries = view.entries();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (const auto found = taken.services.find(address_of(entries[i].rch)); found != taken.services.end()) {
      found->second.entries.push_back({view.name, i, entries[i].major_ch_num, channel::identity_of(entries[i])});
    }
  }
}

snapshot take_snapshot() {
  snapshot taken;
  for (const channel_st *service : services_of(*get_channel_list())) {
    taken.order.push_back(address_of(service));
    taken.services[address_of(service)] = {known_as(*service), service->service_type, service->source_type, {}};
  }
  taken.views = views_of(*get_channel_list());
  for (const list_view &view : taken.views) {
    add_entries(taken, view);
  }
  return taken;
}

// The services of a list but for those that stayed.
std::vector<changed_service> without(const snapshot &of, const std::set<address> &stayed) {
  std::vector<changed_service> only_here;
  for (const address service : of.order) {
    if (!stayed.contains(service)) {
      only_here.push_back(of.services.at(service));
    }
  }
  return only_here;
}

std::size_t entries_in(const changed_service &service, std::string_view view) {
  return static_cast<std::size_t>(
      std::ranges::count(service.entries, view, [](const placed_entry &entry) { return entry.view.kind; }));
}

// The library chooses the promotion view's services by their id, those of the others by their types.
std::pair<int, int> kind_for(std::string_view view, const changed_service &service) {
  return view == "promotion" ? std::pair{int{service.known.id.service_id}, 0}
                             : std::pair{service.service_type, service.source_type};
}

// The kinds of services that are seen in a view, before or after.
std::set<std::pair<int, int>> kinds_in(std::string_view view, const snapshot &before, const snapshot &after) {
  std::set<std::pair<int, int>> kinds;
  for (const snapshot *taken : {&before, &after}) {
    for (const auto &[where, service] : taken->services) {
      if (entries_in(service, view) > 0) {
        kinds.insert(kind_for(view, service));
      }
    }
  }
  return kinds;
}

// The views to which a merge appends.
bool is_appended_to(const view_name &view) { return !view.is_favourites() && view.kind != "USER"; }

// A view that was full when the last service was added, and of which an added service is missing whose kind it lists.
std::vector<full_view> find_full(const snapshot &before, const snapshot &after,
                                 const std::vector<changed_service> &added) {
  std::vector<full_view> full;
  for (const list_view &view : before.views) {
    std::size_t reached = view.size();
    for (const changed_service &service : added) {
      reached += entries_in(service, view.name.kind);
    }
    if (!is_appended_to(view.name) || reached < view.slots.size()) {
      continue;
    }
    const auto kinds = kinds_in(view.name.kind, before, after);
    const auto left_out = std::ranges::count_if(added, [&](const changed_service &service) {
      return entries_in(service, view.name.kind) == 0 && kinds.contains(kind_for(view.name.kind, service));
    });
    if (left_out > 0) {
      full.push_back({view.name, view.slots.size(), static_cast<std::size_t>(left_out)});
    }
  }
  return full;
}

detached_list<current_format> read_scan(const channel_file &scan) {
  detached_list<current_format> read = channel::persist::read_detached<current_format>(scan.bytes());
  if (read == nullptr) {
    scan.refuse_as_short();
  }
  return read;
}

// A merge deletes what is not marked: with nothing to add it makes room for what comes.
void delete_unmarked() {
  const channel::transient<channel_list_st> nothing(channel::allocate_record<channel_list_st>());
  channel::persist::merge_list(*nothing);
}

// A merge marks the services that it finds in their countries, from 0 on, and selects views; what is marked before
// stays. What goes, goes first: a view that is nearly full has room for what comes then. What is left is what stays: a
// service that comes may be given the place in memory of one that went.
std::set<address> merge_keeping_what_stays(channel_list_st &merged, const std::set<address> &going) {
  const kept_view_settings settings;
  std::unordered_map<address, std::int16_t> countries;
  for (const channel::filed_service &filed : services_in_memory()) {
    const address where = address_of(&filed.service);
    countries[where] = std::exchange(filed.service.country_id, static_cast<std::int16_t>(!going.contains(where)));
  }
  delete_unmarked();
  std::set<address> stayed;
  for (const channel::filed_service &filed : services_in_memory()) {
    stayed.insert(address_of(&filed.service));
  }
  channel::persist::merge_list(merged);
  for (const channel::filed_service &filed : services_in_memory()) {
    const address where = address_of(&filed.service);
    filed.service.country_id = stayed.contains(where) ? countries.at(where) : std::int16_t{0};
  }
  return stayed;
}

// The records of a list that was read, numbered as another one numbers its sources.
void renumber(channel_list_st &list, const std::vector<paired_source> &sources) {
  for (network_ch_st &network : channel::networks_of(list.network_list)) {
    network.net_index = renumbered(network.net_index, sources);
    for (tp_ch_st &transponder : channel::transponders_of(network)) {
      for (channel_st &service : channel::services_of(transponder)) {
        service.net_index = renumbered(service.net_index, sources);
      }
    }
  }
}

class merge {
 public:
  merge(channel_list_st &scan, const merge_choices &choices) : scan_(scan), choices_(choices) {}

  merge_outcome made() {
    own_ = line_up_in_memory();
    pair_sources_of_scan();
    const occupied_transponders occupied;
    again_ = find_again(own_, scanned_);
    refuse_to_keep_nothing();
    outcome_.dropped = unresolved_entries();
    tell_of_renamed_and_doubtful();
    find_lost_sources();
    choose_what_goes();
    move_services();
    merge_services();
    outcome_.emptied = occupied.remove_emptied(covered_sources());
    return std::move(outcome_);
  }

 private:
  void pair_sources_of_scan() {
    scanned_ = line_up_of(scan_);
    outcome_.sources = pair_sources(own_, scanned_);
    if (is_any_renumbered(outcome_.sources)) {
      renumber(scan_, outcome_.sources);
      scanned_ = line_up_of(scan_);
    }
    for (const paired_source &source : outcome_.sources) {
      if (source.is_renamed) {
        outcome_.notes.push_back(
            fmt::format("network index {} has another name: {}", source.net_index, shown(source.name)));
      }
    }
  }

  void refuse_to_keep_nothing() const {
    if (again_.found.empty() && !own_.services.empty() && !choices_.is_forced && !choices_.keeps_missing) {
      throw std::runtime_error(
          fmt::format("the new list has none of {}: nothing would stay; --force merges it nevertheless",
                      counted(own_.services.size(), "service")));
    }
  }

  // What moves is told when it has moved.
  void tell_of_renamed_and_doubtful() {
    rescan_report changes = report_of(again_, own_, scanned_);
    for (service_rename &each : changes.renamed) {
      outcome_.renamed.push_back({std::move(each), {}});
    }
    for (service_doubt &each : changes.doubtful) {
      outcome_.doubtful.push_back({std::move(each), {}});
    }
  }

  // A scan of one satellite says nothing of the others.
  void find_lost_sources() {
    if (choices_.is_forced) {
      return;
    }
    std::map<std::uint8_t, std::size_t> gone;
    for (const std::size_t place : again_.gone) {
      ++gone[own_.services[place].fields.net_index];
    }
    for (const kept_service &each : again_.found) {
      gone.erase(own_.services[each.before].fields.net_index);
    }
    for (const auto &[net_index, services] : gone) {
      outcome_.notes.push_back(fmt::format("has no service of network index {} of the list: {} {}", net_index, services,
                                           choices_.keeps_missing ? "stay" : "go; --keep-missing keeps them"));
    }
  }

  [[nodiscard]] std::set<std::uint8_t> covered_sources() const {
    std::set<std::uint8_t> covered;
    for (const line_up_service &service : scanned_.services) {
      covered.insert(service.fields.net_index);
    }
    return covered;
  }

  // What is in doubt stays, unless the merge is forced.
  void choose_what_goes() {
    for (const channel::filed_service &filed : services_in_memory()) {
      records_.push_back(&filed.service);
    }
    std::set<std::size_t> doubtful;
    for (const doubtful_service &each : again_.doubtful) {
      doubtful.insert(each.before);
    }
    for (const std::size_t place : again_.gone) {
      const bool stays = choices_.keeps_missing || (doubtful.contains(place) && !choices_.is_forced);
      (stays ? missing_ : going_).insert(address_of(records_[place]));
    }
  }

  // The library keeps a service that the new list has: one that moved is brought to its new place before. What stands
  // there goes out of the way first when it moves as well, or is about to go.
  void move_services() {
    const std::vector<const channel_st *> scanned = services_of(scan_);
    std::vector<kept_service> moving;
    std::ranges::copy_if(again_.found, std::back_inserter(moving),
                         [](const kept_service &each) { return each.by != found_by::identity; });
    std::set<address> leaving = going_;
    for (const kept_service &each : moving) {
      leaving.insert(address_of(records_[each.before]));
    }
    for (const kept_service &each : moving) {
      clear_the_place(channel::identity_of(*scanned[each.after]), leaving);
    }
    for (const kept_service &each : moving) {
      move(each, *scanned[each.after]);
    }
  }

  // A service that stays where it is may be found there too, within the tolerance of frequencies.
  void clear_the_place(const channel::identity &wanted, const std::set<address> &leaving) {
    const channel_st *holder = find_filed(wanted);
    if (holder == nullptr || !leaving.contains(address_of(holder))) {
      return;
    }
    const channel::identity former = channel::identity_of(*holder);
    channel::identity aside = former;
    aside.service_id = free_service_id();
    aside_.emplace(identity_text(aside), former);
    change(static_cast<std::size_t>(std::ranges::find(records_, holder) - records_.begin()), aside);
  }

  // One that neither list has.
  std::uint16_t free_service_id() {
    if (used_service_ids_.empty()) {
      for (const line_up *list : {&own_, &scanned_}) {
        for (const line_up_service &service : list->services) {
          used_service_ids_.insert(service.fields.service_id);
        }
      }
    }
    std::uint16_t id = 0xFFFF;
    while (id > 0 && !used_service_ids_.insert(id).second) {
      --id;
    }
    return id;
  }

  static channel_st *find_filed(const channel::identity &id) {
    return get_channel_st(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation);
  }

  // The record of a service may be another one afterwards.
  void change(std::size_t place, const channel::identity &wanted) {
    const address former = address_of(records_[place]);
    change_identity(*records_[place], wanted);
    records_[place] = find_filed(wanted);
    for (std::set<address> *addresses : {&missing_, &going_}) {
      if (addresses->erase(former) != 0) {
        addresses->insert(address_of(records_[place]));
      }
    }
  }

  void move(const kept_service &found, const channel_st &scanned) {
    const line_up_service &was = own_.services[found.before];
    const channel::identity wanted = channel::identity_of(scanned);
    try {
      change(found.before, wanted);
    } catch (const std::runtime_error &error) {
      outcome_.notes.push_back(fmt::format("{} could not move: {}", describe(known_as(was)), error.what()));
      put_back(found.before);
      missing_.insert(address_of(records_[found.before]));
      return;
    }
    // What a receiver tunes to and listens for goes with the service; what the user made of it stays.
    take_streams(*records_[found.before], scanned);
    outcome_.moved.push_back({{known_as(was), {was.name, wanted}, found.by}, {}});
  }

  // Its own place may be taken by now: then it stays aside, and is told under the ids that it has there.
  void put_back(std::size_t place) {
    const auto found = aside_.find(identity_text(channel::identity_of(*records_[place])));
    if (found != aside_.end() && find_filed(found->second) == nullptr) {
      change(place, found->second);
    }
  }

  // Whatever went aside in order to go is told as the list knew it.
  void tell_deleted(const snapshot &before, const std::set<address> &stayed) {
    outcome_.deleted = without(before, stayed);
    for (changed_service &each : outcome_.deleted) {
      const auto found = aside_.find(identity_text(each.known.id));
      each.known.id = found != aside_.end() ? found->second : each.known.id;
    }
  }

  void merge_services() {
    const snapshot before = take_snapshot();
    const std::set<address> stayed = merge_keeping_what_stays(scan_, going_);
    name_groups_of_added(stayed);
    append(outcome_.notes, number_added(added_, choices_.numbers));
    const snapshot after = take_snapshot();
    outcome_.added = without(after, stayed);
    tell_deleted(before, stayed);
    outcome_.kept = after.order.size() - outcome_.added.size();
    outcome_.duplicates = dropped_among(match_services(scan_));
    outcome_.full = find_full(before, after, outcome_.added);
    take_entries(after);
  }

  void take_entries(const snapshot &after) {
    std::map<std::string, const changed_service *> services;
    for (const address where : after.order) {
      const changed_service &service = after.services.at(where);
      services.try_emplace(identity_text(service.known.id), &service);
      if (missing_.contains(where)) {
        outcome_.missing.push_back(service);
      }
    }
    const auto entries_at = [&](const channel::identity &id) {
      const auto found = services.find(identity_text(id));
      return found != services.end() ? found->second->entries : std::vector<placed_entry>();
    };
    for (moved_service &each : outcome_.moved) {
      each.entries = entries_at(each.after.id);
    }
    for (renamed_service &each : outcome_.renamed) {
      each.entries = entries_at(each.after.id);
    }
    for (doubtful_move &each : outcome_.doubtful) {
      each.entries = entries_at(each.before.id);
    }
  }

  // A new service is in the groups that have the names of those which the new list says.
  void name_groups_of_added(const std::set<address> &stayed) {
    std::map<std::string, const line_up_service *> scanned;
    for (const line_up_service &service : scanned_.services) {
      scanned.try_emplace(identity_text(service.id()), &service);
    }
    group_names providers(GROUP_PROVIDER);
    group_names genres(GROUP_GENRE);
    group_names countries(GROUP_COUNTRY);
    loss_counts lost;
    for (const channel::filed_service &filed : services_in_memory()) {
      if (stayed.contains(address_of(&filed.service))) {
        continue;
      }
      added_.push_back(&filed.service);
      if (const auto found = scanned.find(identity_text(channel::identity_of(filed.service))); found != scanned.end()) {
        filed.service.provider_id = providers.id_of(found->second->provider, lost);
        filed.service.genre_id = genres.id_of(found->second->genre, lost);
        filed.service.country_id = countries.id_of(found->second->country, lost);
      }
    }
    for (const loss_counts::row &row : lost.rows()) {
      outcome_.notes.push_back(fmt::format("{} are cut: {}", row.what, row.count));
    }
    for (const group_names *names : {&providers, &genres, &countries}) {
      if (const auto text = names->left_out()) {
        outcome_.notes.push_back(*text);
      }
    }
  }

  static void append(std::vector<std::string> &notes, const std::vector<std::string> &more) {
    notes.insert(notes.end(), more.begin(), more.end());
  }

  channel_list_st &scan_;
  const merge_choices &choices_;
  line_up own_;
  line_up scanned_;
  rescan again_;
  std::vector<channel_st *> records_;  // of the list's services, wherever they stand
  std::set<address> missing_;          // in the new list, and staying
  std::set<address> going_;
  std::map<std::string, channel::identity> aside_;  // by where services are out of the way: where they were
  std::set<std::uint16_t> used_service_ids_;
  std::vector<const channel_st *> added_;
  merge_outcome outcome_;
};

}  // namespace

bool merge_outcome::has_findings() const {
  return !dropped.empty() || !duplicates.empty() || !full.empty() || !lost.empty() || !notes.empty() ||
         !doubtful.empty();
}

merge_outcome merge_in_memory(const channel_file &list, const channel_file &scan, const merge_choices &choices) {
  list.must_be_current();
  scan.must_be_current();
  std::vector<std::string> lost = load_faithfully(list);
  const detached_list<current_format> read = read_scan(scan);
  merge_outcome outcome = merge(*read, choices).made();
  outcome.lost = std::move(lost);
  return outcome;
}

}  // namespace chlist
