// Memory: zero-filled, never null, and freed with what it was taken for.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace channel {

// Zero-filled memory that goes back with free. Never null: the process stops when there is none left.
void *allocate_zeroed(std::size_t size);

struct freeing {
  void operator()(void *memory) const { std::free(memory); }
};

// Memory of one call, freed when it goes.
template <class Record>
using transient = std::unique_ptr<Record, freeing>;

template <class Record>
Record *allocate_array(std::size_t count) {
  return static_cast<Record *>(allocate_zeroed(count * sizeof(Record)));
}

template <class Record>
Record *allocate_record() {
  return static_cast<Record *>(allocate_zeroed(sizeof(Record)));
}

}  // namespace channel
