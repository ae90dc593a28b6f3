// Rebuilds a channel list from the bytes of a damaged file, and tells what came back and what did not.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "chlist/files/file_bytes.h"
#include "chlist/list_contents.h"
#include "chlist/salvage/list_repair.h"
#include "chlist/salvage/salvaged_records.h"

namespace chlist {

struct placed_service {
  std::size_t offset = 0;
  known_service known;
};

struct made_record {
  std::string_view kind;  // "network" or "transponder"
  channel::identity id = {};
};

struct salvage_outcome {
  std::size_t size = 0;
  int version = 0;  // of the damaged file, or the one that it was read as
  hierarchy_counts recovered;
  std::vector<placed_service> doubtful;      // taken, with a damaged name or frequency
  std::vector<placed_service> contradicted;  // left out: the views name another service in its place
  std::vector<made_record> made;             // records that were lost and made anew from their services
  std::vector<std::size_t> forsaken;         // transponders and networks none of whose services is left
  std::vector<byte_range> unexplained;       // bytes of no record
  std::size_t missing_services = 0;          // that transponders count and do not have
  std::ptrdiff_t shift = 0;                  // bytes inserted into the list's own record; cut out when negative
  std::size_t shifted_from = 0;
  bool has_lost_settings = false;  // of the list's own record nothing was right
  list_repair list;

  [[nodiscard]] bool has_losses() const;
};

// The rebuilt list is in memory afterwards. Throws std::runtime_error when there is no service in the bytes.
salvage_outcome salvage_to_memory(byte_span damaged);

}  // namespace chlist
