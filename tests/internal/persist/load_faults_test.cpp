// A load whose n-th call to the file system fails, for every n: what it says, what it leaves, and that nothing is lost.
#include "stand_in_door.h"
#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

using test_support::channel_file;
using test_support::door_call;
using test_support::file_test;
using test_support::log_capture;
using test_support::stand_in_door;
using test_support::write_file;
using lines = std::vector<std::string>;

class LoadFaults : public file_test {
 protected:
  // Two services, no genres and no countries: those come from files of their own.
  void SetUp() override {
    file_test::SetUp();
    const channel_file file = channel_file().service({.service_id = 1}).service({.service_id = 2});
    write_file(path(), file.data);
    write_file(path("genre.dat"), test_support::side_file(50, 1, "Genre"));
    write_file(path("country.dat"), test_support::side_file(200, 2, "Country"));
  }

  [[nodiscard]] std::string complaint(const std::string &rest) const {
    return "ERROR: load_channel_internal:# Fail to read " + rest + "\n";
  }

  // What the n-th read of a load is for, and what is said when it fails.
  [[nodiscard]] lines read_complaints() const {
    const std::string header = "the channel_list to '" + path() + "'";
    const std::string side = "ERROR: load_group_list:# Fail to read the ";
    return {complaint(header + " size 460032 "),
            complaint(header),
            complaint(header),
            complaint("'" + path() + "'"),
            complaint("'" + path() + "'"),
            side + "genre to '" + path("genre.dat") + "' size 2 \n",
            side + "genre to '" + path("genre.dat") + "' size 5200 \n",
            side + "country to '" + path("country.dat") + "' size 2 \n",
            side + "country to '" + path("country.dat") + "' size 20800 \n"};
  }

  void expect_next_load_works() {
    reset_channel_list();
    const log_capture log(0);
    EXPECT_EQ(load_named("list.dat"), 10);
    EXPECT_EQ(log.writes(), lines{});
    EXPECT_NE(get_channel_st(1, 1, 100, 11'000'000, 2, 0), nullptr);
    EXPECT_EQ(list.genre_num, 1);
    EXPECT_EQ(list.country_num, 2);
    reset_channel_list();
  }

  void expect_empty_list() const {
    EXPECT_EQ(list.network_num, 0);
    EXPECT_EQ(list.network_list.next, &list.network_list);
    EXPECT_EQ(list.version, 10);
    EXPECT_EQ(list.vnumber, 0);
    EXPECT_EQ(list.cur_vch, list.vch);
    EXPECT_EQ(list.genre_num, 1);
    EXPECT_EQ(list.country_num, 2);
  }
};

TEST_F(LoadFaults, AreNotThereWhenAllIsWell) {
  const stand_in_door door;

  EXPECT_EQ(load_named("list.dat"), 10);

  EXPECT_EQ(door.events(), (lines{"open " + path() + " r", "read 460032", "read 416", "read 336", "read 312",
                                  "read 312", "open " + path("genre.dat") + " r", "read 2", "read 5200", "close",
                                  "open " + path("country.dat") + " r", "read 2", "read 20800", "close", "close"}));
}

TEST_F(LoadFaults, InRecordsEmptyTheList) {
  const lines complaints = read_complaints();
  for (int n = 1; n <= 5; ++n) {
    stand_in_door door;
    door.fail_at(door_call::read, n);
    const log_capture log(0);

    EXPECT_EQ(load_named("list.dat"), -1) << n;

    EXPECT_EQ(log.writes(), lines{complaints[static_cast<std::size_t>(n - 1)]});
    EXPECT_EQ(door.events().at(static_cast<std::size_t>(n + 1)), "close") << "closed before anything else";
    EXPECT_EQ(door.open_files(), 0);
    expect_empty_list();
    expect_next_load_works();
  }
}

TEST_F(LoadFaults, InGroupsEmptyOneTable) {
  const lines complaints = read_complaints();
  for (int n = 6; n <= 9; ++n) {
    stand_in_door door;
    door.fail_at(door_call::read, n);
    const log_capture log(0);

    EXPECT_EQ(load_named("list.dat"), 10) << n;

    EXPECT_EQ(log.writes(), lines{complaints[static_cast<std::size_t>(n - 1)]});
    EXPECT_EQ(list.genre_num, n < 8 ? 0 : 1);
    EXPECT_EQ(list.genre[0].id, n < 8 ? 0 : 100);
    EXPECT_EQ(list.country_num, n < 8 ? 2 : 0);
    EXPECT_EQ(list.country[1].id, n < 8 ? 101 : 0);
    EXPECT_EQ(list.network_num, 1);
    EXPECT_EQ(door.open_files(), 0);
    expect_next_load_works();
  }
}

TEST_F(LoadFaults, OfTheFirstOpenAreAMissingFile) {
  stand_in_door door;
  door.fail_at(door_call::open, 1);
  const log_capture log(0);

  EXPECT_EQ(load_named("list.dat"), 1);

  EXPECT_EQ(log.writes(), (lines{"ERROR: load_channel_internal:# Fail to open '" + path() + "'\n"}));
  expect_empty_list();
  expect_next_load_works();
}

TEST_F(LoadFaults, OfTheOtherOpensAreMissingGroups) {
  const lines names = {"genre.dat", "country.dat"};
  for (int n = 2; n <= 3; ++n) {
    stand_in_door door;
    door.fail_at(door_call::open, n);
    const log_capture log(0);

    EXPECT_EQ(load_named("list.dat"), 10);

    EXPECT_EQ(log.writes(),
              (lines{"ERROR: load_group_list:# Fail to open '" + names[static_cast<std::size_t>(n - 2)] + "'\n"}));
    EXPECT_EQ(list.genre_num, n == 2 ? 0 : 1);
    EXPECT_EQ(list.country_num, n == 2 ? 2 : 0);
    EXPECT_EQ(door.open_files(), 0);
    expect_next_load_works();
  }
}

TEST_F(LoadFaults, OfClosingDoNotMatter) {
  for (int n = 1; n <= 3; ++n) {
    stand_in_door door;
    door.fail_at(door_call::close, n);
    const log_capture log(0);

    EXPECT_EQ(load_named("list.dat"), 10);

    EXPECT_EQ(log.writes(), lines{});
    EXPECT_EQ(door.open_files(), 0);
    expect_next_load_works();
  }
}

TEST_F(LoadFaults, NeverWriteOrSync) {
  stand_in_door door;
  door.fail_at(door_call::read, 3);

  load_named("list.dat");

  EXPECT_EQ(door.calls(door_call::write), 0);
  EXPECT_EQ(door.calls(door_call::sync), 0);
}

}  // namespace
