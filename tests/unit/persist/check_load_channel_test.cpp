// The merge at the fixed path where the producer of a new channel list places it.
#include "support/log_capture.h"
#include "support/new_list_folder.h"

namespace {

using test_support::channel_file;
using test_support::log_capture;
using test_support::new_list;
using test_support::write_file;
using lines = std::vector<std::string>;

class CheckLoadChannel : public test_support::new_list_test {
 protected:
  void SetUp() override {
    new_list_test::SetUp();
    if (IsSkipped()) {
      return;
    }
    channel_file file;
    file.service({.service_id = 1}).service({.service_id = 2}).entry(VIEW_ALL, {.service_id = 1}, 11);
    file.entry(VIEW_ALL, {.service_id = 2}, 12).entry(VIEW_FAVOURITE, {.service_id = 2}, 13);
    load(file.group(GROUP_GENRE, 1, "News").group(GROUP_COUNTRY, 1, "Malta").data);
  }
};

TEST_F(CheckLoadChannel, MergesTheListThatStandsThere) {
  write_file(new_list, channel_file().service({.service_id = 1}).service({.service_id = 0xC005}).data);
  const log_capture log(0);

  EXPECT_EQ(check_load_channel(), 2);

  EXPECT_EQ(log.writes(), lines{});
  EXPECT_EQ(test_support::majors(VIEW_ALL), (std::vector<int>{11, 5}));
  EXPECT_EQ(test_support::majors(VIEW_TV), std::vector<int>{5});
  EXPECT_EQ(test_support::majors(VIEW_FAVOURITE), std::vector<int>{});
  EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 2, 0), nullptr);
  EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 1, 0)->country_id, 1);
}

TEST_F(CheckLoadChannel, OnlyReadsTheList) {
  const test_support::bytes contents = channel_file().service({.service_id = 7}).data;
  write_file(new_list, contents);

  check_load_channel();

  EXPECT_TRUE(test_support::read_file(new_list) == contents);
}

TEST_F(CheckLoadChannel, DoesNotLookIntoTheTargetDirectory) {
  write_file(path("all_channel.dat"), channel_file().data);

  EXPECT_EQ(check_load_channel(), 0);

  EXPECT_NE(get_channel_st(1, 1, 100, 11'000'000, 1, 0), nullptr);
}

TEST_F(CheckLoadChannel, ChangesNothingWhereThereIsNoList) {
  const test_support::bytes before = save();
  const log_capture log(0);

  EXPECT_EQ(check_load_channel(), 0);

  EXPECT_EQ(log.writes(), lines{"ERROR: new_load_channel:# Fail to open '/DATA/BACKUP/all_channel.dat'\n"});
  EXPECT_TRUE(save() == before);
}

TEST_F(CheckLoadChannel, ChangesNothingWhereTheListIsShort) {
  const test_support::bytes before = save();
  const test_support::bytes whole = channel_file().service({.service_id = 7}).data;
  write_file(new_list, whole.substr(0, whole.size() - 1));
  const log_capture log(0);

  EXPECT_EQ(check_load_channel(), 0);

  EXPECT_EQ(log.writes(), lines{"ERROR: new_load_channel:# Fail to read '/DATA/BACKUP/all_channel.dat'\n"});
  EXPECT_TRUE(save() == before);
}

TEST_F(CheckLoadChannel, TellsThePathAtLevelTwo) {
  const log_capture log(2);

  check_load_channel();

  EXPECT_EQ(log.writes().front(), "ChannelAPI new_load_channel:# (/DATA/BACKUP/all_channel.dat)\n");
}

}  // namespace
