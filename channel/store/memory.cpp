// The one place where memory is taken.
#include "channel/store/memory.h"

#include <cstdlib>

#include "channel/log.h"

namespace channel {

void *allocate_zeroed(std::size_t size) {
  void *memory = std::calloc(1, size);
  if (memory == nullptr) {
    LOG_ERROR("no memory for %lu bytes\n", static_cast<unsigned long>(size));
    std::abort();
  }
  return memory;
}

}  // namespace channel
