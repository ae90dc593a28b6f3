// Finds services wherever they stand in a file, by scores: a service repeats what its transponder, its network, its
// neighbours and the entries of the views say.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "channel/identity.h"
#include "chlist/files/file_records.h"
#include "chlist/salvage/witnesses.h"

namespace chlist {

struct found_service {
  std::size_t offset = 0;
  channel::identity id = {};
  int score = 0;
  bool is_doubtful = false;  // its name is not as long as it says, or its frequency is none
};

witnesses witnesses_of(const std::vector<found_service> &services);

using search_progress = std::function<void(std::size_t bytes)>;

// In the file's order; no two overlap, and the sum of their scores is the largest that there is. Takes time and memory
// in proportion to the file's size.
std::vector<found_service> find_services(byte_span file, const record_sizes &sizes, std::size_t begin,
                                         const witnesses &known, const search_progress &progress);

}  // namespace chlist
