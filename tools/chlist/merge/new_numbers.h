// The channel numbers of services that a merge adds.
#pragma once

#include <channel/records.h>

#include <string>
#include <string_view>
#include <vector>

namespace chlist {

struct numbering {
  enum class way { next, from, service_id };
  way by = way::next;
  int first = 0;  // of "from"
};

// "next", "service-id", or the number from which on: "from 900" or "900". Throws std::runtime_error that names them.
numbering numbering_from(std::string_view text);

// Numbers the entries of the services in the ALL, TV and radio views. Receivers number by service ids, modulo 16,384,
// which may give numbers twice: returns what to say of those.
std::vector<std::string> number_added(const std::vector<const channel_st *> &added, const numbering &chosen);

}  // namespace chlist
