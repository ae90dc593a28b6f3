// The multipliers of a process.
#include "channel/store/spread.h"

#include <array>
#include <bit>
#include <cstring>
#include <sys/auxv.h>

namespace channel {
namespace {

// The 16 random bytes that the kernel gives every process; where there are none, numbers that everybody knows.
std::array<std::uint64_t, 2> random_numbers() {
  std::array<std::uint64_t, 2> numbers = {0x9E3779B97F4A7C15, 0xD1342543DE82EF95};
  if (const auto *random = std::bit_cast<const void *>(::getauxval(AT_RANDOM)); random != nullptr) {
    std::memcpy(numbers.data(), random, sizeof numbers);
  }
  return numbers;
}

}  // namespace

spread::spread() {
  const auto [first, second] = random_numbers();
  *this = spread(first, second);
}

}  // namespace channel
