// The tables, and their rows.
#include "chlist/fields/record_fields.h"

#include "chlist/fields/identity_fields.h"
#include "chlist/position.h"

namespace chlist {
namespace {

template <class Row, auto Part, const field_words &Words>
json key_of(const Row &row) {
  return shown_value(Words.values, static_cast<std::int64_t>(row.id().*Part));
}

template <class Row, std::size_t Row::*Count>
json count_of(const Row &row) {
  return row.*Count;
}

using id = channel::identity;
using role = field_role;

constexpr field_words services_words = {"services", "services", "how many services it has", ranges::number_of_records};

constexpr record_field<network_row> table_of_networks[] = {
    {net_index_words, role::key, key_of<network_row, &id::net_index, net_index_words>},
    {network_id_words, role::key, key_of<network_row, &id::network_id, network_id_words>},
    {{"transponders", "transponders", "how many transponders it has", ranges::number_of_records},
     role::counted,
     count_of<network_row, &network_row::transponders>},
    {services_words, role::counted, count_of<network_row, &network_row::services>},
    {{"name", "name", "name of the network", ranges::free_text},
     role::own,
     [](const network_row &row) { return json(row.network->name); }},
};

constexpr record_field<transponder_row> table_of_transponders[] = {
    {ts_id_words, role::own, key_of<transponder_row, &id::ts_id, ts_id_words>},
    {frequency_words, role::own, key_of<transponder_row, &id::frequency, frequency_words>},
    {polarisation_words, role::key, key_of<transponder_row, &id::polarisation, polarisation_words>},
    {services_words, role::counted, count_of<transponder_row, &transponder_row::services>},
};

constexpr record_field<group_row> table_of_groups[] = {
    {{"table", "table", "provider, genre, country or favourite group", ranges::free_text},
     role::key,
     [](const group_row &row) { return json(row.table); }},
    {{"number", "number", "position of a favourite group, id of another", ranges::signed16},
     role::key,
     [](const group_row &row) { return json(row.number()); }},
    {{"name", "name", "name of the group", ranges::free_text},
     role::own,
     [](const group_row &row) { return json(row.name); }},
    {{"id", "id", "id of the group", ranges::signed16}, role::own, [](const group_row &row) { return json(row.id); }},
    {{"position", "position", "place of a favourite group, from 1", ranges::byte},
     role::own,
     [](const group_row &row) { return row.position > 0 ? json(row.position) : json(); }},
};

}  // namespace

channel::identity network_row::id() const {
  channel::identity known = {};
  known.net_index = network->net_index;
  known.network_id = network->network_id;
  return known;
}

channel::identity transponder_row::id() const {
  return {network->net_index,       network->network_id, transponder->ts_id, transponder->frequency, 0,
          transponder->polarisation};
}

std::span<const record_field<network_row>> network_fields() { return table_of_networks; }
std::span<const record_field<transponder_row>> transponder_fields() { return table_of_transponders; }
std::span<const record_field<group_row>> group_fields() { return table_of_groups; }

std::vector<transponder_row> rows_of_transponders(const line_up &list) {
  std::vector<transponder_row> rows;
  rows.reserve(list.transponders.size());
  for (const line_up_transponder &each : list.transponders) {
    rows.push_back({&list.networks[each.network], &each});
  }
  for (const line_up_service &service : list.services) {
    if (service.transponder != nowhere) {
      ++rows[service.transponder].services;
    }
  }
  return rows;
}

std::vector<network_row> rows_of_networks(const line_up &list) {
  std::vector<network_row> rows;
  rows.reserve(list.networks.size());
  for (const line_up_network &each : list.networks) {
    rows.push_back({&each});
  }
  for (const transponder_row &below : rows_of_transponders(list)) {
    network_row &above = rows[below.transponder->network];
    ++above.transponders;
    above.services += below.services;
  }
  return rows;
}

std::vector<group_row> rows_of_groups(const line_up &list) {
  std::vector<group_row> rows;
  for (const group_facts &each : all_group_kinds()) {
    for (const line_up_group &group : list.groups_of(each.kind).groups) {
      rows.push_back({each.one, group.id, group.name});
    }
  }
  int index = 0;
  for (const favourite_group &group : list.favourites) {
    if (group.is_counted) {
      rows.push_back({"favourite group", group.id, group.name, position_of(index++)});
    }
  }
  return rows;
}

}  // namespace chlist
