// What became of the groups of a source: how they are called now, and which services came, went and moved. What a list
// had no room for is nobody's edit: it is in neither of the two rows of services.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "chlist/line_up/line_up.h"

namespace chlist {

// Services by their places in the list as it is now.
struct group_edit {
  std::string origin{};  // of the source's own groups; empty: the group is new
  std::string name{};    // as it is called now
  bool is_renamed = false;
  bool is_gone = false;
  std::vector<std::size_t> before{};  // without services that are gone
  std::vector<std::size_t> now{};
};

// What the source says, and what a list became of it.
struct groups_before {
  const line_up &read;
  const line_up &filled;
  const std::vector<std::size_t> &places_of_read;    // in the list as it is now; nowhere: it is gone
  const std::vector<std::size_t> &places_of_filled;  // the same
};

// In the order of the source, or of the list where somebody moved groups; those that are gone at the end. Parts of one
// group of the source are one.
std::vector<group_edit> group_edits(const groups_before &before, const std::vector<favourite_group> &now);

}  // namespace chlist
