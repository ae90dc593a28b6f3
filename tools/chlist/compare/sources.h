// What the network indexes of a list stand for. Lists number their sources as they come up, so that one satellite has
// another index in another list: it is known by its orbital position or by its name.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "chlist/line_up/line_up.h"

namespace chlist {

// A source of one list, and the index that it has, or gets, in another.
struct paired_source {
  std::string name;
  std::uint8_t net_index = 0;
  std::uint8_t other = 0;
  bool is_new = false;      // the other list does not have it
  bool is_renamed = false;  // paired by original network ids, since names and positions say nothing alike

  [[nodiscard]] bool is_renumbered() const { return net_index != other; }
};

// The sources of a second list, as the first one numbers them; those that it lacks keep their index, or get one that is
// free.
std::vector<paired_source> pair_sources(const line_up &first, const line_up &second);

bool is_any_renumbered(const std::vector<paired_source> &sources);

// The index of a source by the pairs; that of one that is not among them stays.
std::uint8_t renumbered(std::uint8_t net_index, const std::vector<paired_source> &sources);

// Numbers a whole line-up so.
void renumber_sources(line_up &list, const std::vector<paired_source> &sources);

// "2 (\"S19.2E\") is 1 in the other list".
std::string text_of(const paired_source &source);

}  // namespace chlist
