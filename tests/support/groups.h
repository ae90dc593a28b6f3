// Groups as a host passes them, of every table: providers, genres, countries and favourites.
#pragma once

#include <channel/records.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace test_support {

// The length is that of the whole name, the name is cut to its field: one of 98 bytes or more has no terminator.
inline group_st named_group(const std::string &name, int id = 0) {
  group_st made = {};
  made.id = static_cast<std::int16_t>(id);
  made.name_len = static_cast<std::int16_t>(name.size());
  std::memcpy(made.name, name.data(), std::min(name.size(), sizeof made.name));
  return made;
}

}  // namespace test_support
