// The whole road: captures become a list, the list is merged into somebody's own, and that is zapped through; and the
// next day's capture, with services that moved, have other names, or are gone.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tool/scan/scan_host.h"
#include "tool/zapper/zapper_host.h"

namespace {

using namespace scan_test;
using tool_test::has_line;
using tool_test::program_result;

class ScanRoad : public scan_test::scan_host {
 protected:
  static astra today() {
    astra from;
    from.all.push_back({104, {service_name(0x01, "ARD", "tagesschau24")}});
    return from;
  }

  // arte moved to another transponder, Bayern 3 has another name, tagesschau24 is gone, ONE is new.
  static std::vector<astra> tomorrow() {
    astra first;
    first.all = {{101, {service_name(0x01, "ARD", "Das Erste")}},
                 {102, {service_name(0x01, "ARD", "ONE")}},
                 {103, {service_name(0x02, "ARD", "Bayern drei")}}};
    astra second;
    second.ts_id = 1051;
    second.by = {.frequency = 0x01074375};
    second.all = {{101, {service_name(0x19, "ARD", "arte HD")}, true}};
    return {first, second};
  }

  void make_own_list() const {
    write_capture("a.ts", today().capture());
    ASSERT_EQ(run({"scan", "a.ts", "-o", "own.dat"}).exit_code, 0);
    for (const std::vector<std::string> &edit :
         std::vector<std::vector<std::string>>{{"renumber", "own.dat", "arte HD", "7", "--swap"},
                                               {"fav", "new", "own.dat", "Evening"},
                                               {"fav", "add", "own.dat", "Evening", "arte HD", "Das Erste"},
                                               {"lock", "own.dat", "Bayern 3"}}) {
      const program_result result = run(edit);
      ASSERT_EQ(result.exit_code, 0) << result.err;
    }
  }

  // Into merged.dat.
  void merge_the_next_day() const {
    make_own_list();
    const std::vector<astra> captures = tomorrow();
    write_capture("b.ts", captures[0].capture());
    write_capture("c.ts", captures[1].capture());
    ASSERT_EQ(run({"scan", "b.ts", "c.ts", "-o", "new.dat", "--like", "own.dat"}).exit_code, 0);
    const program_result merged = run({"merge", "own.dat", "new.dat", "-o", "merged.dat"});
    ASSERT_LE(merged.exit_code, 1) << merged.err;
  }
};

TEST_F(ScanRoad, TheNextDaysCapturesLeaveAUserWhatIsTheirs) {
  merge_the_next_day();

  load("merged.dat");
  const channel_st &arte = service_at(7);
  EXPECT_STREQ(arte.name[0].text, "arte HD");
  EXPECT_EQ(arte.ts_id, 1051);
  EXPECT_EQ(arte.frequency, 10'743'750);
  EXPECT_STREQ(service_at(1).name[0].text, "Das Erste");
  EXPECT_EQ(get_fav_vch_number(0), 2);
  EXPECT_EQ(get_fav_vch(0, 0)->ts_id, 1051);
  const channel_st *radio = get_channel_st(1, 1, 1019, 11'493'750, 103, 0);
  ASSERT_NE(radio, nullptr);
  EXPECT_EQ(radio->flag & CHANNEL_FLAG_LOCKED, CHANNEL_FLAG_LOCKED);
  EXPECT_EQ(get_channel_st(1, 1, 1019, 11'493'750, 104, 0), nullptr);
  const channel_st *added = get_channel_st(1, 1, 1019, 11'493'750, 102, 0);
  ASSERT_NE(added, nullptr);
  EXPECT_STREQ(added->name[0].text, "ONE");
}

#ifdef ZAPPER_PROGRAM

TEST_F(ScanRoad, AViewerZapsThroughTheList) {
  make_own_list();

  tool_test::viewer viewer({ZAPPER_PROGRAM, dir.path(), "own.dat"});

  EXPECT_EQ(
      viewer.answer("7"),
      ">     7  arte HD                     S19.2E  11493.75 MHz H  V  528  A  529  PCR  528  scrambled\nALL 7> ");
  EXPECT_EQ(viewer.answer("1"),
            ">     1  Das Erste                   S19.2E  11493.75 MHz H  V  512  A  513  PCR  512\nALL 1> ");
}

TEST_F(ScanRoad, AViewerFindsAServiceThatMovedUnderItsNumber) {
  merge_the_next_day();

  tool_test::viewer viewer({ZAPPER_PROGRAM, dir.path(), "merged.dat"});

  EXPECT_EQ(
      viewer.answer("7"),
      ">     7  arte HD                     S19.2E  10743.75 MHz H  V  512  A  513  PCR  512  scrambled\nALL 7> ");
}

#endif

}  // namespace
