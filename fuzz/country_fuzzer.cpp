// The country table's file.
#include <channel/channel.h>

#include "group_file.h"
#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::load_and_save({GROUP_COUNTRY, MAX_COUNTRY, "/country.dat", "/country.dat"}, data, size);
  return 0;
}
