// What is said and done when the system has no memory left. A single record that cannot be had stops the process; a
// list beside the one in memory is a file that cannot be opened.
#include <base/verbosity.h>

#include <csignal>
#include <functional>

#include "support/log_capture.h"
#include "support/old_channel_file.h"
#include "support/resource_limits.h"

namespace {

using test_support::log_capture;
using test_support::no_memory_of;
using lines = std::vector<std::string>;

constexpr int stopped = 77;

class NoMemory : public test_support::file_test {
 protected:
  void SetUp() override {
    file_test::SetUp();
    if (!no_memory_of::is_possible()) {
      GTEST_SKIP() << "memory cannot be limited here";
    }
  }
};

TEST_F(NoMemory, LeavesAFileOfAnEarlierVersionUnopened) {
  for (const auto &version : test_support::old_versions()) {
    test_support::write_file(path(), in_version(version, test_support::channel_file()).data);
    const std::string name = path();
    for (const int level : {0, -1}) {
      const log_capture log(level);
      channel_list_st *read = nullptr;
      {
        const no_memory_of most(200'000);
        read = version.read(name.c_str());
      }
      EXPECT_EQ(read, nullptr);
      EXPECT_EQ(log.writes(),
                level == 0 ? lines{"ERROR: " + version.reader + ":# Fail to open '" + name + "'\n"} : lines{});
    }
    EXPECT_NE(read_old(version, name), nullptr) << "once there is memory again";
  }
}

// A host's own handler of SIGABRT: it lets the process end as any other does, with a status of its own.
[[noreturn]] void end_orderly(int /*signal*/) {
  no_memory_of::end();
  std::exit(stopped);
}

[[noreturn]] void run_out_of(int level, const std::function<void *()> &allocate) {
  std::signal(SIGABRT, end_orderly);
  verbosity_map[7] = level;
  const no_memory_of any(sizeof(void *));
  while (allocate() != nullptr) {
  }
  std::_Exit(1);
}

using NoMemoryDeathTest = NoMemory;

TEST_F(NoMemoryDeathTest, StopsTheProcessWhereARecordIsNeeded) {
  const struct {
    std::function<void *()> allocate;
    std::size_t size;
  } cases[] = {{[]() -> void * { return alloc_channel_info(); }, sizeof(channel_st)},
               {[]() -> void * { return alloc_tp_ch_info(1, 1, 0); }, sizeof(tp_ch_st)},
               {[]() -> void * { return alloc_network_ch_info(1, 1, nullptr); }, sizeof(network_ch_st)}};
  for (const auto &each : cases) {
    const std::string line =
        "^\033\\[32mERROR: [a-z_]+:[0-9]+ no memory for " + std::to_string(each.size) + " bytes\n\033\\[0m$";
    EXPECT_EXIT(run_out_of(0, each.allocate), ::testing::ExitedWithCode(stopped), line);
    EXPECT_EXIT(run_out_of(-1, each.allocate), ::testing::ExitedWithCode(stopped), "^$");
  }
}

}  // namespace
