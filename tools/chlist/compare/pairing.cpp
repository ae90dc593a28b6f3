// Records are the same when they lead to the same place of the second line-up.
#include "chlist/compare/pairing.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <numeric>
#include <optional>
#include <tuple>
#include <utility>

#include "channel/identity.h"
#include "channel/store/service_index.h"
#include "chlist/fields/record_fields.h"

namespace chlist {
namespace {

// A number for each transponder that can be told apart: that of the first in the list within the tolerance, else one
// for the frequency alone.
class transponder_numbers {
 public:
  explicit transponder_numbers(const line_up &list) {
    for (std::size_t place = 0; place < list.transponders.size(); ++place) {
      const line_up_transponder &transponder = list.transponders[place];
      const line_up_network &network = list.networks[transponder.network];
      const std::uint32_t network_key = channel::network_key(network.net_index, network.network_id);
      frequencies_[{network_key, transponder.polarisation}].emplace(transponder.frequency, place);
      ts_ids_.emplace(std::pair{network_key, transponder.ts_id}, place);
    }
  }

  // The place of a transponder, or none and what is looked for.
  using key = std::tuple<std::size_t, std::uint32_t, std::uint32_t, std::uint16_t>;

  key of(const channel::identity &id) {
    const std::uint32_t network = channel::network_key(id.net_index, id.network_id);
    const std::size_t place =
        id.frequency != 0 ? tuned_to(network, id.polarisation, id.frequency) : with_ts_id(network, id.ts_id);
    return place != nowhere ? key{place, 0, 0, 0}
                            : key{nowhere, network << 8U | id.polarisation, id.frequency, id.ts_id};
  }

 private:
  using scope = std::pair<std::uint32_t, std::uint8_t>;
  using query = std::pair<scope, std::uint32_t>;

  // Services of one transponder stand together in most lists: what was found last is found again.
  std::size_t tuned_to(std::uint32_t network, std::uint8_t polarisation, std::uint32_t frequency) {
    const query asked = {{network, polarisation}, frequency};
    if (!last_ || last_->first != asked) {
      last_ = std::pair{asked, first_near(asked)};
    }
    return last_->second;
  }

  [[nodiscard]] std::size_t first_near(const query &asked) const {
    const auto found = frequencies_.find(asked.first);
    if (found == frequencies_.end()) {
      return nowhere;
    }
    constexpr std::uint32_t reach = channel::frequency_tolerance - 1;
    const std::uint32_t lowest = asked.second > reach ? asked.second - reach : 0;
    std::size_t first = nowhere;
    for (auto near = found->second.lower_bound(lowest);
         near != found->second.end() && channel::same_frequency(near->first, asked.second); ++near) {
      first = std::min(first, near->second);
    }
    return first;
  }

  [[nodiscard]] std::size_t with_ts_id(std::uint32_t network, std::uint16_t ts_id) const {
    const auto found = ts_ids_.find({network, ts_id});
    return found != ts_ids_.end() ? found->second : nowhere;
  }

  std::map<scope, std::multimap<std::uint32_t, std::size_t>> frequencies_;
  std::map<std::pair<std::uint32_t, std::uint16_t>, std::size_t> ts_ids_;
  std::optional<std::pair<query, std::size_t>> last_;
};

template <class Record, class KeyOf>
auto keys_of(const std::vector<Record> &records, const KeyOf &key_of) {
  std::vector<decltype(key_of(records.front()))> keys;
  std::ranges::transform(records, std::back_inserter(keys), key_of);
  return keys;
}

pairing pair_transponders(const line_up &before, const line_up &after) {
  transponder_numbers numbers(after);
  const auto key_of = [&numbers](const transponder_row &row) { return numbers.of(row.id()); };
  return pair_keys(keys_of(rows_of_transponders(before), key_of), keys_of(rows_of_transponders(after), key_of));
}

pairing pair_networks(const line_up &before, const line_up &after) {
  const auto key_of = [](const line_up_network &network) {
    return channel::network_key(network.net_index, network.network_id);
  };
  return pair_keys(keys_of(before.networks, key_of), keys_of(after.networks, key_of));
}

template <class KeyOf>
pairing pair_groups(const line_up &before, const line_up &after, const KeyOf &key_of) {
  return pair_keys(keys_of(rows_of_groups(before), key_of), keys_of(rows_of_groups(after), key_of));
}

// Two arrays place by place.
pairing pair_places(std::size_t before, std::size_t after) {
  const auto places = [](std::size_t count) {
    std::vector<std::size_t> made(count);
    std::iota(made.begin(), made.end(), std::size_t{0});
    return made;
  };
  return pair_keys(places(before), places(after));
}

// What services stand below is paired with what the first of them stands below; of several with one, the first is.
template <class ParentsOf>
pairing pair_parents(const pairing &children, std::size_t before, std::size_t after, const ParentsOf &parents_of) {
  std::vector<std::size_t> partners(after, nowhere);
  std::vector<bool> is_paired(before, false);
  for (const auto &[was, is] : children.both) {
    const auto [parent_before, parent_after] = parents_of(was, is);
    if (partners[parent_after] == nowhere && !is_paired[parent_before]) {
      partners[parent_after] = parent_before;
      is_paired[parent_before] = true;
    }
  }
  pairing result;
  for (std::size_t place = 0; place < after; ++place) {
    if (partners[place] != nowhere) {
      result.both.push_back({partners[place], place});
    } else {
      result.added.push_back(place);
    }
  }
  for (std::size_t place = 0; place < before; ++place) {
    if (!is_paired[place]) {
      result.removed.push_back(place);
    }
  }
  return result;
}

// The views of favourite groups as their groups; those behind the groups that there are, which a damaged list may have,
// by their places.
pairing pair_views(const line_up &before, const line_up &after) {
  const auto keys = [](const line_up &list) {
    std::vector<std::pair<std::size_t, std::string_view>> made(view_kinds);
    for (std::size_t kind = 0; kind < view_kinds; ++kind) {
      made[kind].first = kind;
    }
    for (const favourite_group &group : list.favourites) {
      made.emplace_back(group.is_counted ? nowhere : made.size(), group.is_counted ? std::string_view(group.name) : "");
    }
    return made;
  };
  return pair_keys(keys(before), keys(after));
}

}  // namespace

pairing pair_services(const line_up &before, const line_up &after) {
  transponder_numbers numbers(after);
  const auto key_of = [&numbers](const line_up_service &service) {
    const channel::identity id = service.id();
    return std::pair{numbers.of(id), id.service_id};
  };
  return pair_keys(keys_of(before.services, key_of), keys_of(after.services, key_of));
}

paired_records pair_by_identity(const line_up &before, const line_up &after) {
  const auto key_of = [](const group_row &group) { return std::pair{group.table, group.number()}; };
  return {.services = pair_services(before, after),
          .transponders = pair_transponders(before, after),
          .networks = pair_networks(before, after),
          .groups = pair_groups(before, after, key_of),
          .views = pair_places(views_of(before).size(), views_of(after).size())};
}

paired_records pair_around(pairing services, const line_up &before, const line_up &after) {
  const auto key_of = [](const group_row &group) { return std::pair{group.table, group.name}; };
  paired_records made = {.services = std::move(services),
                         .transponders = {},
                         .networks = {},
                         .groups = pair_groups(before, after, key_of),
                         .views = pair_views(before, after)};
  made.transponders = pair_parents(made.services, before.transponders.size(), after.transponders.size(),
                                   [&](std::size_t was, std::size_t is) {
                                     return std::pair{before.services[was].transponder, after.services[is].transponder};
                                   });
  made.networks = pair_parents(made.transponders, before.networks.size(), after.networks.size(),
                               [&](std::size_t was, std::size_t is) {
                                 return std::pair{before.transponders[was].network, after.transponders[is].network};
                               });
  return made;
}

}  // namespace chlist
