// What became of the services of a list in a newer one: a service is the same by its identity as the receiver finds it,
// or else by its ids on another transponder, or else by its name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "chlist/line_up/line_up.h"

namespace chlist {

enum class found_by : std::uint8_t {
  identity,
  ids,   // original network id and service id, and the name, which is not another one
  name,  // name and service type
};

// "identity", "ids", "name".
std::string_view text_of(found_by by);

struct kept_service {
  std::size_t before = nowhere;
  std::size_t after = nowhere;
  found_by by = found_by::identity;
};

// A service that may have become one of several, or whose ids have gone to one with another name.
struct doubtful_service {
  std::size_t before = nowhere;
  std::vector<std::size_t> candidates;
};

struct rescan {
  std::vector<kept_service> found;  // in the order of the newer list
  std::vector<std::size_t> gone;    // those in doubt among them
  std::vector<std::size_t> added;   // candidates among them
  std::vector<doubtful_service> doubtful;
};

// Both lists number their sources alike.
rescan find_again(const line_up &before, const line_up &after);

}  // namespace chlist
