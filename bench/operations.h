// The catalogue of what is measured: every operation by its name, with its floors. Every program here takes it from
// this table.
#pragma once

#include <channel/records.h>

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace bench {

// One or two; the second is empty when there is one.
using floor_names = std::array<std::string_view, 2>;

// How the cost may grow with the list, for operations that can be measured with lists of other sizes: nearly as the
// number of services; nearly as that of a view's entries, or, for sorts, as that and its logarithm.
enum class growth { not_measured, near_linear, with_view, as_sorting };

struct operation {
  std::string_view name;
  // None for a floor itself.
  floor_names floors;
  // Brings the store to where the operation starts; not measured. Null when a run leaves it there.
  void (*prepare)();
  void (*run)();
  // What one run handles: records, entries or steps of a walk, and bytes of a file.
  std::int64_t items;
  std::int64_t bytes = 0;
  // True when it allocates, so that it matters whether memory is at hand.
  bool takes_memory = false;
  growth grows = growth::not_measured;

  [[nodiscard]] bool is_floor() const { return floors[0].empty(); }
};

std::span<const operation> operations();

// Null for a name that is not in the catalogue.
const operation *find_operation(std::string_view name);

// Builds the scene for a number of services, once; brings it back before each operation.
void set_the_scene(int services = MAX_CHANNEL);
void reset_the_scene();

}  // namespace bench
