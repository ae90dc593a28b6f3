// The row of a list that a finding is about, told by where in the file it was found.
#pragma once

#include <cstddef>
#include <optional>

#include "chlist/files/file_records.h"

namespace chlist {

struct finding_place {
  std::optional<std::size_t> view = {};     // of views_of(), with an entry in it
  std::size_t entry = 0;                    // its index
  std::optional<std::size_t> service = {};  // in the file's order
};

// Neither is told when something else stands there.
finding_place place_at(std::size_t offset, const file_records &framed);

}  // namespace chlist
