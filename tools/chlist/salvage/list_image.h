// The list's own record in a damaged file: where its arrays stand, what its entries name, and how it was when bytes
// have been inserted into it or cut out of it since.
#pragma once

#include <cstddef>
#include <vector>

#include "chlist/files/channel_file.h"
#include "chlist/files/file_records.h"
#include "chlist/salvage/list_alignment.h"
#include "chlist/salvage/witnesses.h"

namespace chlist {

struct list_image {
  std::vector<std::byte> bytes;    // as large as the record; zero where nothing is left
  std::vector<shift_step> steps;   // where bytes were inserted, or cut out
  std::size_t end = 0;             // in the file: the records begin there
  std::size_t missing = 0;         // bytes of its end that are not there
  bool is_all_view_torn = false;   // bytes of it are missing
  bool has_lost_settings = false;  // they are those of an empty list
};

// Records one behind the other, up to a gap; the first ones are those behind the list's own.
struct record_run {
  std::size_t begin = 0;    // the first record that is there
  std::size_t end = 0;      // of the last service
  std::size_t network = 0;  // where the first network stands, or would stand above it
};

// services: those that were found. runs: by ascending place; the list ends in front of the one that makes most of it
// right.
list_image repair_list_image(byte_span file, const record_sizes &sizes, const std::vector<record_run> &runs,
                             const witnesses &services);

}  // namespace chlist
