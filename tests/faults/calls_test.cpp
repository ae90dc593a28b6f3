// The calls to the file system that operations make when all is well, written out: records and tables go in one call
// each. And the operations that are refused before they make any.
#include "faults/stand_in_door.h"
#include "support/group_file_test.h"
#include "support/log_capture.h"
#include "support/old_channel_file.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class Calls : public file_test {
 protected:
  // Two networks, three transponders, four services, and no groups.
  static channel_file small_list() {
    channel_file file;
    file.service({.service_id = 1}).service({.service_id = 2});
    file.service({.ts_id = 7, .frequency = 12'000'000, .service_id = 3});
    return file.service({.net_index = 2, .service_id = 4});
  }

  // What a function does with the sizes of the small list's records.
  static lines each_record(const std::string &function) {
    lines calls;
    for (const char *size : {"460032", "416", "336", "312", "312", "336", "312", "416", "336", "312"}) {
      calls.push_back(function + ' ' + size);
    }
    return calls;
  }

  void load_small_list() { EXPECT_EQ(load(small_list().data), CHANNEL_LIST_VERSION); }
};

TEST_F(Calls, OfALoadReadEveryRecordAndThenTheGroups) {
  write_file(path("genre.dat"), side_file(MAX_GENRE, 1, "Genre"));
  write_file(path("country.dat"), side_file(MAX_COUNTRY, 2, "Country"));
  const stand_in_door door;

  load_small_list();

  EXPECT_EQ(door.events(), joined({{"open " + path() + " r"},
                                   each_record("read"),
                                   {"open " + path("genre.dat") + " r", "read 2", "read 5200", "close"},
                                   {"open " + path("country.dat") + " r", "read 2", "read 20800", "close", "close"}}));
}

TEST_F(Calls, OfASaveWriteEveryRecordAndSync) {
  load_small_list();
  const stand_in_door door;

  EXPECT_EQ(save_channel("saved.dat"), 1);

  EXPECT_EQ(door.events(),
            joined({{"open " + path("saved.dat") + " w+"}, each_record("write"), {"flush", "close", "sync"}}));
}

TEST_F(Calls, OfAGroupSaveWriteCountAndTableAndSync) {
  list.genre_num = 1;
  list.country_num = 1;
  const stand_in_door door;

  EXPECT_EQ(save_group_list(GROUP_GENRE), 1);
  EXPECT_EQ(save_group_list(GROUP_COUNTRY), 1);

  EXPECT_EQ(door.events(), (lines{"open " + path("genre.dat\n") + " w+", "write 2", "write 5200", "close", "sync",
                                  "open " + path("country.dat") + " w+", "write 2", "write 20800", "close", "sync"}));
}

TEST_F(Calls, OfAReaderOfAnEarlierVersionReadEveryRecord) {
  write_file(path(), in_version(old_version_of(9), small_list()).data);
  const stand_in_door door;

  EXPECT_NE(read_old(old_version_of(9), path()), nullptr);

  EXPECT_EQ(door.events(), joined({{"open " + path() + " r"}, each_record("read"), {"close"}}));
}

TEST_F(Calls, AreNotMadeByWhatIsRefused) {
  write_file(path(), in_version(old_version_of(9), small_list()).data);
  const std::string too_long(64, 'n');
  const stand_in_door door;

  EXPECT_EQ(load_named(too_long.c_str()), 1);
  EXPECT_EQ(save_channel(too_long.c_str()), 0);
  EXPECT_EQ(load_named(nullptr), -1);
  EXPECT_EQ(save_channel(nullptr), 0);
  for (const old_version &version : old_versions()) {
    EXPECT_EQ(version.read(nullptr), nullptr);
    EXPECT_EQ(repair_channel(version.number, nullptr), -1);
  }
  for (const int version : {6, 10, 11}) {
    EXPECT_EQ(repair_channel(version, path().c_str()), -1);
  }
  EXPECT_EQ(save_group_list(GROUP_GENRE), 1) << "an empty table";
  EXPECT_EQ(save_group_list(GROUP_PROVIDER), 0);
  EXPECT_EQ(load_group_list(GROUP_PROVIDER), 0);

  // A load that cannot open its file fills the groups from theirs.
  EXPECT_EQ(door.events(), (lines{"open " + path("genre.dat") + " r", "open " + path("country.dat") + " r"}));
}

TEST_F(Calls, ThatFailInASaveLeaveTheStatusUnsaid) {
  load_small_list();
  const log_capture log(2);
  stand_in_door door;
  door.fail_at(door_call::write, 2);

  EXPECT_EQ(save_channel("saved.dat"), 0);

  const lines all = log.writes();
  ASSERT_EQ(all.size(), 6U);
  EXPECT_EQ(all.at(4), "ChannelAPI save_channel_internal:#  sizeof(struct channel_list_st) 460032 \n");
  EXPECT_EQ(all.at(5), "ERROR: save_channel_internal:# Fail to write the tp_ch_info to '" + path("saved.dat") + "'\n");
}

TEST_F(Calls, ThatFailWhenTheBytesGoOutLeaveTheStatusUnsaid) {
  load_small_list();
  const log_capture log(2);
  stand_in_door door;
  door.fail_at(door_call::flush, 1);

  EXPECT_EQ(save_channel("saved.dat"), 0);

  const lines all = log.writes();
  ASSERT_GE(all.size(), 2U);
  EXPECT_EQ(all.at(all.size() - 2), "ChannelAPI save_channel_internal:#  sizeof(struct tp_ch_st) 336 \n");
  EXPECT_EQ(all.back(),
            "ERROR: save_channel_internal:# Fail to write the channel_list to '" + path("saved.dat") + "'\n");
  EXPECT_EQ(log.writes_with("save \t"), lines{});
}

}  // namespace
