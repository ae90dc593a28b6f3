// What became of the services of a list in a newer one: a service is the same by its identity as the receiver finds it,
// or else by its name, or else by its ids on another transponder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "chlist/line_up/line_up.h"

namespace chlist {

enum class found_by : std::uint8_t {
  identity,
  name,            // name and service type
  ids,             // original network id and service id
  name_elsewhere,  // name and type on another source
  plain_name,      // the name without "HD" or another word for the picture, wherever
};
inline constexpr std::size_t ways_to_find = 5;

// How far services are looked for: lists of one receiver have the same sources and names.
enum class search_reach : std::uint8_t { same_receiver, other_receiver, other_picture };

// "identity", "name", "ids", "name on another source", "name without quality".
std::string_view text_of(found_by by);

struct kept_service {
  std::size_t before = nowhere;
  std::size_t after = nowhere;
  found_by by = found_by::identity;
};

// A service that may have become one of several.
struct doubtful_service {
  std::size_t before = nowhere;
  std::size_t count = 0;                // of the candidates
  std::vector<std::size_t> candidates;  // the first of them
};

struct rescan {
  std::vector<kept_service> found;  // in the order of the newer list
  std::vector<std::size_t> gone;    // those in doubt among them
  std::vector<std::size_t> added;   // candidates among them
  std::vector<doubtful_service> doubtful;
};

// Both lists number their sources alike. An identity that went to another service, whose name is known from elsewhere,
// is no sign that the service is the same.
rescan find_again(const line_up &before, const line_up &after, search_reach reach = search_reach::same_receiver);

}  // namespace chlist
