// One input for the side file of a group table.
#pragma once

#include <cstddef>
#include <cstdint>

namespace fuzz {

// A table that has a file of its own: what it is loaded from, and what it is saved to.
struct filed_groups {
  std::int8_t kind;
  int capacity;
  const char *loaded_from;
  const char *saved_to;
};

void load_and_save(const filed_groups &table, const std::uint8_t *data, std::size_t size);

}  // namespace fuzz
