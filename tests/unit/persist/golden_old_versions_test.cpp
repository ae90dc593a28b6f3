// The checked-in files of earlier versions, and the checked-in files of today that repairing them must give, bit for
// bit.
#include "golden/golden_old_versions.h"
#include "support/log_capture.h"
#include "support/old_channel_file.h"
#include "support/repair_test.h"

namespace {

namespace service_field = test_support::service_field;
using test_support::bytes;
using test_support::expect_same_bytes;
using test_support::log_capture;
using lines = std::vector<std::string>;

class GoldenOldVersion : public test_support::repair_test {
 protected:
  [[nodiscard]] bytes golden(const std::string &kind) const {
    return test_support::read_file(CHANNEL_TESTS_DIR "/golden/" + kind + "_v" + std::to_string(GetParam().number) +
                                   ".dat");
  }
};

TEST_P(GoldenOldVersion, IsWhatItsProgramWrites) {
  expect_same_bytes(golden("channel"), golden::old_versions::channel_file(GetParam().number));
  expect_same_bytes(golden("repaired"), golden::old_versions::repaired_file(GetParam().number));
}

TEST_P(GoldenOldVersion, HoldsWholeRecords) {
  const std::size_t records = 1 + 3 + 4 + 6;

  EXPECT_EQ(golden("channel").size(), 460'032U + 3 * 416 + 4 * 336 + 6 * 312 + records * GetParam().extra);
  EXPECT_EQ(golden("repaired").size(), 460'032U + 2 * 416 + 3 * 336 + 5 * 312);
}

TEST_P(GoldenOldVersion, IsRepairedAndSavedBitForBit) {
  ASSERT_EQ(repair(golden("channel")), 0);

  expect_same_bytes(save(), golden("repaired"));
}

TEST_P(GoldenOldVersion, LosesOnlyTheTwin) {
  const bytes old = golden("channel");
  const log_capture log(1);

  ASSERT_EQ(repair(old), 0);

  EXPECT_EQ(log.writes(), lines{"WARNING: add_rch_info:# rch: s_id(0x3001), n_id(0x301), ts_id(0x501), "
                                "name(Alpha Television), type(0x0101)\n"});
}

TEST_P(GoldenOldVersion, LoadsLinkedAndUsable) {
  ASSERT_EQ(repair(golden("channel")), 0);
  ASSERT_EQ(save_channel("repaired.dat"), 1);
  reset_channel_list();
  const log_capture log(1);

  ASSERT_EQ(load_named("repaired.dat"), 10);

  // The last favourite group is not among the counted ones, and so it is not linked either.
  EXPECT_EQ(log.writes(), lines{});
  EXPECT_EQ(get_vindex_type(), VIEW_USER);
  for (const std::int8_t view : {VIEW_ALL, VIEW_TV, VIEW_RADIO, VIEW_USER, VIEW_PROMOTION, VIEW_FAVOURITE}) {
    for (int i = 0; i < *get_virtual_channel_vnumber(view); ++i) {
      const virtual_channel_st &entry = get_virtual_channel_st(view)[i];
      ASSERT_NE(entry.rch, nullptr) << int{view} << ' ' << i;
      EXPECT_EQ(entry.rch->service_id, entry.service_id);
    }
  }
  ASSERT_EQ(change_vindex_type(VIEW_TV), 0);
  EXPECT_STREQ(get_channel(get_channel_index(106))->name[0].text, "Alpha Television");
}

TEST_P(GoldenOldVersion, IsSavedAsItWasRepairedAfterALoad) {
  ASSERT_EQ(repair(golden("channel")), 0);
  ASSERT_EQ(save_channel("repaired.dat"), 1);
  reset_channel_list();
  ASSERT_EQ(load_named("repaired.dat"), 10);

  bytes expected = golden("repaired");
  // A load clears the country of every service.
  constexpr std::size_t services_at[] = {460'032 + 416 + 336, 460'032 + 416 + 336 + 312,
                                         460'032 + 2 * 416 + 2 * 336 + 2 * 312, 460'032 + 2 * 416 + 3 * 336 + 3 * 312,
                                         460'032 + 2 * 416 + 3 * 336 + 4 * 312};
  for (const std::size_t at : services_at) {
    test_support::put(expected, at + service_field::country_id, 2, 0);
  }
  expect_same_bytes(save(), expected);
}

REPAIRED_FROM_EVERY_VERSION(GoldenOldVersion);

}  // namespace
