// A reader of an earlier version links the list in memory again: what it needs for that, and what it finds.

#include "support/log_capture.h"
#include "support/old_channel_file.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class Relinking : public file_test {
 protected:
  void SetUp() override {
    file_test::SetUp();
    entry_ = &append_entry(VIEW_ALL, entry_of(*file_service({}), 1));
    write_file(path(), channel_file().data);
  }

  // Reads an empty list of version 9; the log at a level.
  [[nodiscard]] lines relink(int level) const {
    const log_capture log(level);
    EXPECT_NE(read_old(old_version_of(9), path()), nullptr);
    return log.writes();
  }

  virtual_channel_st *entry_ = nullptr;
};

TEST_F(Relinking, FindsTheServiceOfAnEntryAgain) {
  entry_->rch = nullptr;

  EXPECT_EQ(relink(0), lines{});

  EXPECT_EQ(entry_->rch, get_channel_st(1, 1, 100, 11'000'000, 1, 0));
  EXPECT_NE(entry_->rch, nullptr);
}

TEST_F(Relinking, WarnsOfTheCodeBehindTwentyFavouriteGroups) {
  list.favorite_group_num = 20;

  EXPECT_EQ(relink(0), lines{});
  EXPECT_EQ(relink(1), (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=30\n",
                              "WARNING: get_virtual_channel_vnumber:# unknown vch_type=30\n"}));
}

TEST_F(Relinking, FindsNothingWhileNoNetworkIsCounted) {
  const lines lost = {"ERROR: link...[0][0]-n_in 1, on 1, ts 100, freq 11000000, sid 1, polr 0\n"};
  for (const std::uint32_t frequency : {11'000'000U, 0U}) {
    entry_->frequency = frequency;
    list.network_num = 1;
    EXPECT_EQ(relink(0), lines{});
    EXPECT_NE(entry_->rch, nullptr);

    list.network_num = 0;
    EXPECT_EQ(relink(0).size(), 1U);
    EXPECT_EQ(entry_->rch, nullptr);
  }
  entry_->frequency = 11'000'000;
  EXPECT_EQ(relink(0), lost);
  list.network_num = 1;
}

TEST_F(Relinking, TakesACurrentView) {
  for (const int level : {0, -1}) {
    for (const bool lacks_count : {false, true}) {
      list.cur_vch = lacks_count ? list.vch : nullptr;
      list.cur_vnumber = lacks_count ? nullptr : &list.vnumber;
      entry_->rch = nullptr;

      EXPECT_EQ(relink(level), level == 0 ? lines{"ERROR: link_rch_info:#  channel_list NULL !! "} : lines{});

      EXPECT_EQ(entry_->rch, nullptr);
    }
  }
}

}  // namespace
