// Every operation that touches files, with its first call to the file system failing, its second, and so on until it
// succeeds: the result, everything that is said, every further call, the file and the store are as documented, nothing
// stays open, and the next run is whole. A build with the address sanitizer finds what is not released.
#include <channel/channel.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "faults/operations.h"
#include "faults/stand_in_door.h"
#include "support/invariants.h"
#include "support/log_capture.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class EveryCall : public file_test, public ::testing::WithParamInterface<operation> {
 protected:
  // How a run ended.
  struct ending {
    int result = 0;
    lines log;
    lines calls;
    int open_files = 0;
    bool has_failed = false;
  };

  void SetUp() override {
    file_test::SetUp();
    prepare();
    before = state_of_store();
    EXPECT_EQ(before.list, own.own_list().data);
    // Links are the only pointers, and the clean run tells which of them are set.
    whole_ending = perform({});
    whole = state_of_store();
    whole_file = output();
  }

  // The store and the output before a run.
  void prepare() const {
    own.start();
    if (!GetParam().output.empty()) {
      write_file(own.path(GetParam().output), earlier);
    }
  }

  // The file that is written; for operations that only read, what never was there.
  [[nodiscard]] bytes output() const {
    return GetParam().output.empty() ? earlier : read_file(own.path(GetParam().output));
  }

  static auto descriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
  }

  [[nodiscard]] ending perform(const fault &planned, int log_level = 1) const {
    const log_capture log(log_level);
    stand_in_door door(planned);
    door.redirect(receiver::place_of_new_lists, own.path(receiver::new_name));
    const int result = GetParam().run(own);
    return {result, log.writes(), door.events(), door.open_files(), door.has_failed()};
  }

  // False when there was no such call any more.
  bool strike(const fault &planned) {
    SCOPED_TRACE(::testing::PrintToString(planned));
    prepare();
    const bytes memory_before = list_in_memory();
    documented_run documented(planned, before, whole, earlier);
    const int result = GetParam().document(documented, own);

    const ending end = perform(planned);

    EXPECT_EQ(end.result, result);
    EXPECT_EQ(end.log, documented.log);
    EXPECT_EQ(end.calls, documented.calls);
    EXPECT_EQ(end.open_files, 0);
    EXPECT_TRUE(output() == documented.file);
    const store_state left = state_of_store();
    EXPECT_TRUE(left == documented.store);
    EXPECT_TRUE(documented.store != before || list_in_memory() == memory_before) << "not even a pointer may change";
    EXPECT_EQ(broken_invariant(), "");
    expect_next_run_to_be_whole(left);
    return end.has_failed;
  }

  // From whatever the failure left; only what was done already is begun anew.
  void expect_next_run_to_be_whole(const store_state &left) {
    if (left == whole) {
      prepare();
    }
    const ending end = perform({});
    EXPECT_EQ(end.result, whole_ending.result);
    EXPECT_EQ(end.log, whole_ending.log);
    EXPECT_EQ(end.calls, whole_ending.calls);
    EXPECT_TRUE(state_of_store() == whole);
    EXPECT_TRUE(output() == whole_file);
  }

  // Strikes at call 1, 2, 3 and so on; how many times.
  int strike_until_success(fault planned) {
    for (planned.nth = 1; strike(planned); ++planned.nth) {
      if (HasFailure()) {
        break;
      }
    }
    return planned.nth - 1;
  }

  [[nodiscard]] int calls(door_call kind) const {
    static constexpr const char *names[] = {"open ", "read ", "write ", "flush", "close"};
    const std::string name = names[static_cast<std::size_t>(kind)];
    return static_cast<int>(
        std::ranges::count_if(whole_ending.calls, [&](const std::string &call) { return call.starts_with(name); }));
  }

  static constexpr door_call every_kind[] = {door_call::open, door_call::read, door_call::write, door_call::flush,
                                             door_call::close};
  // Longer than anything that is written.
  const bytes earlier = bytes(470'000, 'x');
  const receiver own;
  store_state before;
  store_state whole;
  bytes whole_file;
  ending whole_ending;
};

TEST_P(EveryCall, IsMadeAsDocumentedWhenNoneFails) {
  prepare();
  documented_run documented({}, before, whole, earlier);

  EXPECT_EQ(whole_ending.result, GetParam().document(documented, own));

  EXPECT_EQ(whole_ending.log, lines{});
  EXPECT_EQ(documented.log, lines{});
  EXPECT_EQ(whole_ending.calls, documented.calls);
  EXPECT_TRUE(whole == documented.store);
  EXPECT_TRUE(whole_file == documented.file);
}

TEST_P(EveryCall, MayFailOnce) {
  const auto open_before = descriptors();
  int all = 0;
  for (const door_call kind : every_kind) {
    all += calls(kind);
  }

  EXPECT_EQ(strike_until_success({}), all);
  EXPECT_EQ(descriptors(), open_before);
}

TEST_P(EveryCall, MayFailTogetherWithAllBehindIt) { EXPECT_GT(strike_until_success({.lasts = true}), 0); }

TEST_P(EveryCall, OfOneKindMayFailTogetherWithThoseBehindIt) {
  for (const door_call kind : every_kind) {
    EXPECT_EQ(strike_until_success({.kind = kind, .lasts = true}), calls(kind));
  }
}

TEST_P(EveryCall, MayMoveHalfOfItsBytes) {
  for (const door_call kind : {door_call::read, door_call::write}) {
    EXPECT_EQ(strike_until_success({.kind = kind, .is_short = true}), calls(kind));
    EXPECT_EQ(strike_until_success({.kind = kind, .lasts = true, .is_short = true}), calls(kind));
  }
}

TEST_P(EveryCall, FailsSilentlyBelowLevelZero) {
  for (fault planned = {.nth = 1, .lasts = true};; ++planned.nth) {
    prepare();
    const ending end = perform(planned, -1);
    EXPECT_EQ(end.log, lines{});
    if (!end.has_failed) {
      break;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Of, EveryCall, ::testing::ValuesIn(operations()), name_of_operation);

}  // namespace
