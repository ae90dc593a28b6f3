// The checked-in new lists merged into the checked-in channel file: the saved list is bit for bit the checked-in
// result.
#include "golden/golden_scans.h"
#include "merge_test.h"

namespace {

using test_support::bytes;
using test_support::expect_same_bytes;
using test_support::lines;
using test_support::log_capture;

struct golden_merge {
  const char *name;
  bytes (*scan)();
  bytes (*merged)();
  int changes;
};

class MergeGolden : public test_support::merge_test, public ::testing::WithParamInterface<golden_merge> {
 protected:
  static bytes golden_file(const std::string &name) {
    return test_support::read_file(CHANNEL_TESTS_DIR "/golden/" + name + ".dat");
  }

  [[nodiscard]] static bytes scan() { return golden_file(std::string("scan_") + GetParam().name); }
  [[nodiscard]] static bytes merged() { return golden_file(std::string("merged_") + GetParam().name); }
};

TEST_P(MergeGolden, FilesAreWhatTheirProgramWrites) {
  expect_same_bytes(scan(), GetParam().scan());
  expect_same_bytes(merged(), GetParam().merged());
}

TEST_P(MergeGolden, ListIsSavedBitForBit) {
  load(golden_file("channel_v10"));
  const log_capture log(1);

  EXPECT_EQ(merge(scan()), GetParam().changes);

  EXPECT_EQ(log.writes(), lines{});
  EXPECT_TRUE(test_support::counts_match_lists());
  expect_same_bytes(save(), merged());
}

// Marks go with a load; what was added is then known, and what the new list lacks is gone already.
TEST_P(MergeGolden, ListIsTheSameAfterAnotherLoadAndMerge) {
  load(merged());

  EXPECT_EQ(merge(scan()), 0);

  expect_same_bytes(save(), merged());
}

INSTANTIATE_TEST_SUITE_P(Scans, MergeGolden,
                         ::testing::Values(golden_merge{"unchanged", golden::scan_unchanged, golden::merged_unchanged,
                                                        0},
                                           golden_merge{"changed", golden::scan_changed, golden::merged_changed, 14},
                                           golden_merge{"hostile", golden::scan_hostile, golden::merged_hostile, 2}),
                         [](const auto &test) { return std::string(test.param.name); });

}  // namespace
