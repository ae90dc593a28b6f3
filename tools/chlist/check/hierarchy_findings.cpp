// Networks, transponders and services by the finder's rules: what it does not find by its own identity is lost to every
// operation that goes by identities.
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "channel/identity.h"
#include "channel/store/group_table.h"
#include "channel/store/service_index.h"
#include "chlist/check/rules.h"
#include "chlist/fields/described.h"
#include "chlist/fields/identity_fields.h"
#include "chlist/line_up/list_contents.h"

namespace chlist {
namespace {

void check_networks(const file_records &framed, finding_list &findings) {
  std::map<std::pair<int, int>, std::size_t> first;
  const auto &networks = framed.networks();
  for (std::size_t i = 0; i < networks.size(); ++i) {
    const network_ch_st &network = *networks[i].record;
    const auto [found, is_new] = first.emplace(std::pair{network.net_index, network.network_id}, i);
    if (!is_new) {
      findings.push_back({networks[i].offset, severity::warning, "duplicate-network",
                          fmt::format("network {} (net {}, network {}) is network {} once more", i + 1,
                                      network.net_index, network.network_id, found->second + 1),
                          "searches look into the first one only: services of this one are not found"});
    }
  }
}

std::string describe_transponder(const tp_ch_st &transponder) {
  return fmt::format("ts {}, {} {}", transponder.ts_id, transponder.frequency,
                     polarisation_text(transponder.polarisation));
}

using framed_transponders = std::vector<const framed_record<tp_ch_st> *>;

void add_near(const framed_record<tp_ch_st> &hidden, const framed_record<tp_ch_st> &first, finding_list &findings) {
  findings.push_back(
      {hidden.offset, severity::warning, "near-transponders",
       fmt::format("transponder {} is within the tolerance of {} at offset {}", describe_transponder(*hidden.record),
                   describe_transponder(*first.record), first.offset),
       "searches take the first one for both: services of this one are not found there"});
}

// Of one network and polarisation. A search takes the first transponder of the list within the tolerance, whichever
// lie between the two: each is held against the first of all that are near it.
void check_near_ones(framed_transponders &transponders, finding_list &findings) {
  std::ranges::stable_sort(transponders, {}, [](const auto *each) { return each->record->frequency; });
  const auto are_near = [](const auto *a, const auto *b) {
    return channel::same_frequency(a->record->frequency, b->record->frequency);
  };
  std::map<std::size_t, const framed_record<tp_ch_st> *> near;  // by offset
  auto lowest = transponders.begin();
  auto next = transponders.begin();
  for (const auto *each : transponders) {
    for (; next != transponders.end() && are_near(*next, each); ++next) {
      near.emplace((*next)->offset, *next);
    }
    for (; !are_near(*lowest, each); ++lowest) {
      near.erase((*lowest)->offset);
    }
    if (const auto *first = near.begin()->second; first != each) {
      add_near(*each, *first, findings);
    }
  }
}

void check_transponders(const file_records &framed, finding_list &findings) {
  std::map<std::pair<std::size_t, int>, framed_transponders> alike;
  for (const framed_record<tp_ch_st> &transponder : framed.transponders()) {
    if (transponder.record->frequency != 0) {
      alike[{transponder.parent, transponder.record->polarisation}].push_back(&transponder);
    }
  }
  for (auto &[which, transponders] : alike) {
    check_near_ones(transponders, findings);
  }
}

// A service below a transponder that is not the one of its identity; searches look elsewhere for it.
bool is_misplaced(const file_records &framed, const framed_record<channel_st> &service) {
  const channel::identity id = channel::identity_of(*service.record);
  const framed_record<tp_ch_st> &transponder = framed.transponders()[service.parent];
  const network_ch_st &network = *framed.networks()[transponder.parent].record;
  return !channel::is_network(network, id.net_index, id.network_id) ||
         !channel::is_transponder(*transponder.record, id.ts_id, id.frequency, id.polarisation);
}

void add_unfound(const file_records &framed, const framed_record<channel_st> &service, finding_list &findings) {
  const std::string who = describe(known_as(*service.record));
  if (is_misplaced(framed, service)) {
    findings.push_back({service.offset, severity::error, "misplaced-service",
                        fmt::format("service {} does not stand below a transponder of its identity", who),
                        "no search finds it by that identity, and a channel search adds it a second time; when many "
                        "services are concerned, the file is out of frame"});
  } else {
    findings.push_back({service.offset, severity::error, "shadowed-service",
                        fmt::format("service {} stands below a transponder or network that an earlier one hides", who),
                        "searches end at the earlier one: none finds it, and a channel search adds it a second time"});
  }
}

void check_identities(const file_records &framed, finding_list &findings) {
  std::unordered_map<const channel_st *, std::size_t> offsets;
  for (const framed_record<channel_st> &service : framed.services()) {
    offsets.emplace(service.record, service.offset);
  }
  channel::service_index index(framed.list());
  for (const framed_record<channel_st> &service : framed.services()) {
    const channel_st *found = index.look_up(channel::identity_of(*service.record));
    if (found == nullptr) {
      add_unfound(framed, service, findings);
    } else if (found != service.record) {
      findings.push_back({service.offset, severity::warning, "hidden-service",
                          fmt::format("service {} has the identity of the one at offset {}",
                                      describe(known_as(*service.record)), offsets[found]),
                          "every search stops at the first one: this one is never shown"});
    }
  }
}

struct group_ids {
  std::int16_t channel_st::*id;
  severity level;
  std::string_view consequence;
};

void check_group_ids(const file_records &framed, const group_table &table, const group_ids &ids,
                     finding_list &findings) {
  const auto known = std::make_unique<channel::id_set>();
  for (const group_st &group : table.used()) {
    known->add(group.id);
  }
  for (const framed_record<channel_st> &service : framed.services()) {
    const std::int16_t id = service.record->*ids.id;
    if (id > 0 && !known->holds(id)) {
      findings.push_back({service.offset_of(&(service.record->*ids.id)), ids.level, "unknown-group-id",
                          fmt::format("service {} has the {} id {}, which no {} has",
                                      describe(known_as(*service.record)), table.one_group, id, table.one_group),
                          std::string(ids.consequence)});
    }
  }
}

// Services of no group have the id 0 or -1. The tables of genres and countries may come from a file of their own.
constexpr group_ids ids_of_groups[] = {
    {&channel_st::provider_id, severity::warning, "it is shown without a provider, and no provider's list holds it"},
    {&channel_st::genre_id, severity::note,
     "no genre's list holds it, unless the receiver has the genres in a file of their own"},
    {&channel_st::country_id, severity::note, "none: every load sets the country id to 0"},
};

void check_groups(const file_records &framed, finding_list &findings) {
  const std::vector<group_table> tables = groups_of(framed.list());
  for (std::size_t i = 0; i < std::size(ids_of_groups); ++i) {
    check_group_ids(framed, tables[i], ids_of_groups[i], findings);
  }
}

}  // namespace

void check_hierarchy(const file_records &framed, finding_list &findings) {
  check_networks(framed, findings);
  check_transponders(framed, findings);
  check_identities(framed, findings);
  check_groups(framed, findings);
}

}  // namespace chlist
