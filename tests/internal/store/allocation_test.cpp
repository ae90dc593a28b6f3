// Memory of records: zeroed, and never null. When there is none left the process stops with one line.
#include <base/verbosity.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdint>

#include "channel/store/memory.h"
#include "support/rounds.h"

#ifdef CHANNEL_TESTS_SANITIZED
// The sanitizer's allocator ends the process by itself unless it is told to fail as the system's does.
extern "C" __attribute__((visibility("default"))) const char *__asan_default_options();
extern "C" const char *__asan_default_options() { return "allocator_may_return_null=1"; }
#endif

namespace {

// More than any allocator can give.
constexpr std::size_t too_much = SIZE_MAX;

void allocate_too_much(int level) {
  verbosity_map[7] = level;
  channel::allocate_zeroed(too_much);
}

TEST(Allocation, MemoryIsZeroed) {
  const channel::transient<char> memory(static_cast<char *>(channel::allocate_zeroed(4096)));

  EXPECT_TRUE(std::all_of(memory.get(), memory.get() + 4096, [](char byte) { return byte == 0; }));
}

TEST(AllocationDeathTest, TheProcessStopsWithAnErrorLineWhenThereIsNoMemory) {
  const std::string line =
      "\033\\[32mERROR: [a-z_]+:[0-9]+ no memory for " + std::to_string(too_much) + " bytes\n\033\\[0m";

  EXPECT_EXIT(allocate_too_much(0), ::testing::KilledBySignal(SIGABRT), line);
}

TEST(AllocationDeathTest, TheProcessStopsEvenIfTheLogIsSilent) {
  EXPECT_EXIT(allocate_too_much(-1), ::testing::KilledBySignal(SIGABRT), "");
}

}  // namespace
