// Stands between the test program and the allocator; the build tells the linker so (--wrap=calloc).
#include "scarce_memory.h"

// The names are the linker's.
extern "C" void *__real_calloc(std::size_t count, std::size_t size);
extern "C" void *__wrap_calloc(std::size_t count, std::size_t size);

extern "C" void *__wrap_calloc(std::size_t count, std::size_t size) {
  return test_support::scarce_memory::refuses(count * size) ? nullptr : __real_calloc(count, size);
}

namespace test_support {
namespace {

scarce_memory *current = nullptr;

}  // namespace

scarce_memory::scarce_memory(std::size_t refused) : refused_(refused) { current = this; }

scarce_memory::~scarce_memory() { current = nullptr; }

bool scarce_memory::refuses(std::size_t size) {
  if (current == nullptr) {
    return false;
  }
  current->requests_.push_back(size);
  return current->requests_.size() == current->refused_;
}

}  // namespace test_support
