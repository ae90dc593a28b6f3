// Other copies of a damaged list: an earlier one, a similar one, a second one in the same file. What of the damaged one
// is lost is looked for there.
#pragma once

#include <channel/records.h>

#include <memory>
#include <span>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "channel/identity.h"
#include "channel/store/group_table.h"
#include "chlist/files/file_records.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

using group_field = std::int16_t channel_st::*;

class list_copy {
 public:
  list_copy(std::string name, const file_records &records);

  [[nodiscard]] const std::string &name() const { return name_; }
  // Its settings, groups and views; it has no networks.
  [[nodiscard]] const channel_list_st &list() const { return *list_; }
  // Its groups of the table that corresponds to one of the list in memory.
  [[nodiscard]] std::span<const group_st> groups_like(const channel::group_table &table) const;
  // The group that most of these services belong to; null when it knows none of them, or they belong to none. Networks
  // may be numbered otherwise.
  [[nodiscard]] const group_st *group_of(std::span<const channel::identity> services, group_field field,
                                         const channel::group_table &table) const;
  // Empty when it does not know the network, or has no name for it.
  [[nodiscard]] std::string network_name(int net_index, int network_id) const;

 private:
  struct service_groups {
    std::int16_t provider;
    std::int16_t genre;
  };

  std::string name_;
  std::unique_ptr<channel_list_st> list_;
  std::unordered_map<std::uint64_t, service_groups> services_;
  std::unordered_map<std::uint32_t, std::string> networks_;
};

using list_copies = std::vector<list_copy>;

struct found_again {
  std::string what;  // "provider", "network"
  int id = 0;        // of a group; a favourite group's place; a network's original network id
  std::string name;  // as people read it
  std::string source;
};

}  // namespace chlist
