// What can be told of the records around services: networks, transponders, and groups of any table;
// and of the settings of a channel list.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "chlist/fields/field.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

struct network_row {
  const line_up_network *network;
  std::size_t transponders = 0;
  std::size_t services = 0;

  [[nodiscard]] channel::identity id() const;
};

struct transponder_row {
  const line_up_network *network;
  const line_up_transponder *transponder;
  std::size_t services = 0;

  [[nodiscard]] channel::identity id() const;
};

struct group_row {
  std::string_view table;  // "provider", "genre", "country" or "favourite group"
  int id = 0;
  std::string_view name;
  int position = 0;  // of a favourite group, from 1, which is known by it; others are known by their ids

  [[nodiscard]] int number() const { return position > 0 ? position : id; }
};

std::span<const record_field<network_row>> network_fields();
std::span<const record_field<transponder_row>> transponder_fields();
std::span<const record_field<group_row>> group_fields();
std::span<const record_field<line_up_settings>> setting_fields();

// Every record of a line-up in its order, with what is counted below it.
std::vector<network_row> rows_of_networks(const line_up &list);
std::vector<transponder_row> rows_of_transponders(const line_up &list);
// Table by table. A favourite group that a channel file has no group for is none.
std::vector<group_row> rows_of_groups(const line_up &list);

}  // namespace chlist
