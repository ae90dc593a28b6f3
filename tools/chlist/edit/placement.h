// Where in a view services are moved to: in front of another one, behind it, or to a position.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/command.h"
#include "chlist/edit/edited_services.h"

namespace chlist {

struct placement {
  std::optional<std::string> before;
  std::optional<std::string> after;
  std::optional<int> to;  // a position
};

// The index of a position, one of so many. Throws, and says "in the TV view", when it is not there.
std::size_t index_of_position(int position, std::size_t count, std::string_view where);

// --before, --after and --to; one of them is required.
option_group placement_options(placement &place);

// Moves the services' entries to their place, one after another, in the order in which they are given. Throws when a
// service has no entry in the view, or the place is not there.
void move_services(std::int8_t view, const std::vector<channel_st *> &services, const placement &place,
                   edited_list &list);

}  // namespace chlist
