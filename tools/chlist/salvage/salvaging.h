// Rebuilds a channel list from the bytes of a damaged file, and tells what came back and what did not. How this folder
// does it, with a drawing of a shifted record, is told in docs/damaged-files.md: how `salvage` finds its way.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/compare/difference.h"
#include "chlist/convert/conversion.h"
#include "chlist/fields/identity_fields.h"
#include "chlist/files/file_bytes.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/salvage/list_repair.h"
#include "chlist/salvage/salvaged_records.h"

namespace chlist {

struct placed_service {
  std::size_t offset = 0;
  known_service known;
};

struct made_record {
  identity_part kind = identity_part::network;  // or transponder
  channel::identity id = {};
};

// Where bytes were inserted, or cut out when less than 0.
struct torn_place {
  std::size_t offset = 0;
  std::ptrdiff_t bytes = 0;
};

struct record_counts {
  std::size_t networks = 0;
  std::size_t transponders = 0;
  std::size_t services = 0;

  [[nodiscard]] bool is_none() const { return networks + transponders + services == 0; }
};

struct salvage_outcome {
  std::size_t size = 0;
  std::string_view transfer;  // in text mode, that was undone: offsets are those before it; empty when there was none
  int version = 0;            // of the damaged file, or the one that it was read as
  hierarchy_counts recovered;
  std::vector<placed_service> doubtful;      // taken, with a damaged name or frequency
  std::vector<placed_service> contradicted;  // taken, though the views name another service in its place
  std::vector<made_record> made;             // records that were lost and made anew from their services
  std::vector<record_without_services> without_services;
  std::vector<byte_range> unexplained;   // bytes of no record
  record_counts missing;                 // that counts claim and that did not come back; a count may be what is damaged
  record_counts repeated;                // that were there already, and were dropped
  std::vector<std::size_t> other_lists;  // where more lists begin in the file; their own records are left out
  std::vector<placed_service> of_another_list;  // behind the list's end, and in none of its views
  std::vector<torn_place> torn;                 // of the list's own record
  std::size_t list_bytes_missing = 0;           // at the end of the list's own record
  bool has_wrong_version = false;               // the file names another one than it is of
  bool has_lost_settings = false;               // of the list's own record nothing was right
  list_repair list;
  bool is_compared = false;             // with another copy of the list
  std::vector<change> differences;      // from that
  std::optional<conversion> converted;  // when the file is of an earlier version

  // Bytes that the list's own record has in all that are not its own; less than 0 when some of its own are missing.
  [[nodiscard]] std::ptrdiff_t shift() const;
  // Something is lost, or in doubt.
  [[nodiscard]] bool has_findings() const;

 private:
  [[nodiscard]] bool has_lost_records() const;
  [[nodiscard]] bool has_lost_of_list() const;
  [[nodiscard]] bool has_doubts() const;
};

using salvage_progress = std::function<void(std::size_t done, std::size_t total)>;

// The rebuilt list is in memory afterwards. copies: where to look for what is lost of groups, networks and settings.
// Throws std::runtime_error when there is nothing of a list in the bytes.
salvage_outcome salvage_to_memory(byte_span damaged, list_copies copies = {}, const salvage_progress &progress = {});

}  // namespace chlist
