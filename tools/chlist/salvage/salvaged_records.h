// The hierarchy that is left in a damaged file: found services below their transponders and networks, whose records are
// taken from the file where they are there, and made anew from what the services say where they are not.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "channel/identity.h"
#include "chlist/salvage/service_search.h"

namespace chlist {

struct salvaged_transponder {
  std::optional<std::size_t> offset;  // none: its record is lost
  channel::identity id = {};
  std::size_t counted = 0;  // by its record
  std::size_t network = 0;
  std::size_t repeated = 0;  // services that came again, and were dropped
  std::vector<std::size_t> services = {};
};

struct salvaged_network {
  std::optional<std::size_t> offset;
  channel::identity id = {};
  std::size_t counted = 0;
  std::size_t repeated = 0;  // transponders whose record came again
  std::vector<std::size_t> transponders = {};
};

// A transponder or a network none of whose services is left.
struct record_without_services {
  std::string_view kind;
  std::size_t offset = 0;
  std::size_t counted = 0;  // by it, of what should stand below it
};

struct byte_range {
  std::size_t offset = 0;
  std::size_t size = 0;
};

struct salvaged_records {
  std::vector<salvaged_network> networks;
  std::vector<salvaged_transponder> transponders;
  std::vector<found_service> services;
  std::vector<record_without_services> without_services;
  std::vector<byte_range> unexplained;       // bytes that belong to no record
  std::vector<found_service> repeated;       // of an identity that was there already, dropped
  std::vector<std::size_t> network_records;  // their offsets, in the file's order, also of networks that came again
};

// Where records are looked for: from a place on, and not in other lists' own records.
struct record_area {
  std::size_t begin = 0;
  std::vector<std::size_t> other_lists = {};  // ascending
};

salvaged_records arrange(byte_span file, const record_sizes &sizes, const record_area &area, const witnesses &known,
                         const std::vector<found_service> &services);

}  // namespace chlist
