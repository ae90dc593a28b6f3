// Records are the same when the library's finder gives the same record for both. Of several such the first is paired
// with the first, so that a list is equal to itself even if a service occurs twice in it.
#include "chlist/see/pairing.h"

#include <channel/store.h>
#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "channel/store/service_index.h"
#include "chlist/service/selection.h"

namespace chlist {
namespace {

// A record in memory; for an identity by which the finder finds none, the identity itself.
using key = std::pair<const void *, std::string>;

key key_of(const void *found, const channel::identity &id) {
  return {found, found != nullptr ? std::string() : identity_text(id)};
}

template <class Record, class KeyOf>
pairing pair_records(const std::vector<Record> &before, const std::vector<Record> &after, const KeyOf &key_of_record) {
  std::map<decltype(key_of_record(before.front())), std::vector<std::size_t>> unpaired;
  for (std::size_t i = before.size(); i > 0; --i) {
    unpaired[key_of_record(before[i - 1])].push_back(i - 1);
  }
  pairing result;
  for (std::size_t i = 0; i < after.size(); ++i) {
    const auto found = unpaired.find(key_of_record(after[i]));
    if (found == unpaired.end() || found->second.empty()) {
      result.added.push_back(i);
      continue;
    }
    result.both.push_back({found->second.back(), i});
    found->second.pop_back();
  }
  for (const auto &[unused, places] : unpaired) {
    result.removed.insert(result.removed.end(), places.begin(), places.end());
  }
  std::ranges::sort(result.removed);
  return result;
}

}  // namespace

pairing pair_services(const list_snapshot &before, const list_snapshot &after) {
  channel::service_index finder;
  return pair_records(before.services, after.services, [&finder](const list_snapshot::service &service) {
    return key_of(finder.resolve(service.known.id), service.known.id);
  });
}

pairing pair_transponders(const list_snapshot &before, const list_snapshot &after) {
  return pair_records(before.transponders, after.transponders, [](const list_snapshot::transponder &transponder) {
    const channel::identity &id = transponder.id;
    network_ch_st *network = get_network_ch_info(id.net_index, id.network_id);
    const tp_ch_st *found =
        network == nullptr ? nullptr : get_tp_ch_info_by_network_ch(network, id.ts_id, id.frequency, id.polarisation);
    return key_of(found, id);
  });
}

pairing pair_networks(const list_snapshot &before, const list_snapshot &after) {
  return pair_records(before.networks, after.networks, [](const list_snapshot::network &network) {
    return key_of(get_network_ch_info(network.id.net_index, network.id.network_id), network.id);
  });
}

pairing pair_groups(const list_snapshot &before, const list_snapshot &after) {
  return pair_records(before.groups, after.groups,
                      [](const list_snapshot::group &group) { return std::pair(group.table, group.number); });
}

}  // namespace chlist
