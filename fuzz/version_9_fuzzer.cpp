// Reading, and repairing from, a channel file of version 9.
#include "earlier_version.h"
#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::read_and_repair(9, data, size);
  return 0;
}
