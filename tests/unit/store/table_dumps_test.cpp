// The dumps of views, groups and providers, whole: every write of every dump, and what a count outside a table prints.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/groups.h"
#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class TableDumps : public store_test {};

lines providers_dump() {
  return writes_at(2, [] {
    print_provider_info();
    return 0;
  });
}

lines writes_of_view(int view, int level = 2) {
  return writes_at(level, [view] {
    print_virtual_channel_list(static_cast<std::int8_t>(view));
    return 0;
  });
}

const std::string columns =
    "ch_number,\tfrequency,\tpolarisationt,\tnet_index,\tnetwork_id,\ttransport_id,\tservice_id\n";

TEST_F(TableDumps, AnEmptyViewPrintsItsColumns) {
  for (const int view : {0, 1, 2, 3, 4, 5, 10, 29}) {
    EXPECT_EQ(writes_of_view(view), lines{columns}) << view;
  }
}

TEST_F(TableDumps, AnEntryIsPrintedInSevenPieces) {
  virtual_channel_st entry = {};
  entry.major_ch_num = -7;
  entry.net_index = 85;
  entry.frequency = 0xFFFFFFFF;
  entry.polarisation = 2;
  entry.service_id = 1;
  entry.network_id = 0xABCD;
  entry.ts_id = 0xFFFF;
  append_entry(VIEW_USER, entry);
  virtual_channel_st other = {};
  other.major_ch_num = 32767;
  other.net_index = 84;
  other.frequency = 11'727'480;
  append_entry(VIEW_USER, other);

  EXPECT_EQ(writes_of_view(VIEW_USER),
            (lines{columns, "-7,", "\t-1,", "\tV,", "\tJSAT3,", "\t0xabcd,", "\t0xffff,", "\t0x0001\n", "32767,",
                   "\t11727480,", "\tH,", "\tJSAT4,", "\t0x0000,", "\t0x0000,", "\t0x0000\n"}));
}

TEST_F(TableDumps, AnEntryIsResolvedBeforeItsLineForTheDiagnosticsOfTheLookup) {
  virtual_channel_st unresolved = entry_of(*file_service({}), 0);
  unresolved.frequency = 5;
  append_entry(VIEW_ALL, unresolved);

  EXPECT_EQ(
      writes_of_view(VIEW_ALL),
      (lines{columns,
             "ChannelAPI get_channel_st:# Fail to find tp_ch ni=0x1,on_id=0x1,ts_id=0x64,freq=5,sid=0x1 polar=0\n",
             "0,", "\t5,", "\tH,", "\tJSAT4,", "\t0x0001,", "\t0x0064,", "\t0x0001\n"}));
}

TEST_F(TableDumps, AnUnknownViewPrintsTheWarningsOfItsLookupAlone) {
  for (const int view : {-128, -1, 6, 9, 30, 127}) {
    const std::string code = std::to_string(view) + "\n";

    EXPECT_EQ(writes_of_view(view, 9), (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=" + code,
                                              "WARNING: get_virtual_channel_vnumber:# unknown vch_type=" + code}));
    EXPECT_EQ(writes_of_view(view, 0), lines{});
  }
}

TEST_F(TableDumps, ACountOutsideAViewIsReadAsTheNearestInside) {
  list.promo_vnumber = 11;
  EXPECT_EQ(writes_of_view(VIEW_PROMOTION).size(), 1U + 7U * 10U);

  list.promo_vnumber = -1;
  EXPECT_EQ(writes_of_view(VIEW_PROMOTION), lines{columns});
}

group_st group(std::int16_t id, const char *name, std::int16_t name_len) {
  group_st made = named_group(name, id);
  made.name_len = name_len;
  return made;
}

TEST_F(TableDumps, GroupsArePrintedOneALine) {
  const group_st groups[] = {group(7, "News", 4), group(-1, "", 0), group(3, "Not asked for", 0)};
  const auto print = [&groups] { return print_group_info(groups, 2); };

  EXPECT_EQ(print(), 0);
  EXPECT_EQ(writes_at(2, print), (lines{"ChannelAPI print_group_info:# | 0 |id 7 |name News |\n",
                                        "ChannelAPI print_group_info:# | 1 |id -1 |name  |\n"}));
  EXPECT_EQ(writes_at(1, print), lines{});
}

TEST_F(TableDumps, AGroupNameWithoutTerminatorIsPrintedToIts98thByte) {
  group_st groups[2] = {group(1, "", 0), group(0x4141, "tail", 0)};
  std::memset(groups[0].name, 'g', sizeof groups[0].name);
  groups[1].reserved_0 = 0x4141;

  EXPECT_EQ(writes_at(2, [&groups] { return print_group_info(groups, 1); }),
            lines{"ChannelAPI print_group_info:# | 0 |id 1 |name " + std::string(98, 'g') + " |\n"});
}

TEST_F(TableDumps, ACountBelow1PrintsNoGroup) {
  for (const std::int16_t count : {std::int16_t{0}, std::int16_t{-1}, std::int16_t{-32768}}) {
    EXPECT_EQ(print_group_info(nullptr, count), 0);
    EXPECT_EQ(writes_at(9, [count] { return print_group_info(nullptr, count); }), lines{});
  }
}

TEST_F(TableDumps, GroupsThatAreMissingAreRefused) {
  EXPECT_EQ(print_group_info(nullptr, 1), -1);
  EXPECT_EQ(writes_at(0, [] { return print_group_info(nullptr, 1); }),
            lines{"ERROR: print_group_info:# groups is null\n"});
}

TEST_F(TableDumps, ProvidersArePrintedOneALine) {
  list.provider[0] = group(12, "First", 5);
  list.provider[1] = group(-3, "Second", -1);
  list.provider[2] = group(4, "Behind the count", 0);
  list.provider_num = 2;

  EXPECT_EQ(providers_dump(),
            (lines{"=================== PROVIDER LIST : 2 =======================\n",
                   "\t\t + id : 12 name: First len : 5 \n", "\t\t + id : -3 name: Second len : -1 \n"}));
}

TEST_F(TableDumps, AnEmptyProviderTablePrintsItsHeadAlone) {
  EXPECT_EQ(providers_dump(), lines{"=================== PROVIDER LIST : 0 =======================\n"});
}

TEST_F(TableDumps, AProviderNameWithoutTerminatorIsPrintedToIts98thByte) {
  list.provider[0] = group(1, "", 98);
  std::memset(list.provider[0].name, 'p', sizeof list.provider[0].name);
  list.provider[1].reserved_0 = 0x4141;
  list.provider_num = 1;

  EXPECT_EQ(providers_dump().at(1), "\t\t + id : 1 name: " + std::string(98, 'p') + " len : 98 \n");
}

TEST_F(TableDumps, ANumberOfProvidersOutsideTheTablePrintsTheNearestNumberInside) {
  for (const auto &[count, printed] :
       {std::pair{499, 499U}, std::pair{500, 500U}, std::pair{501, 500U}, std::pair{32767, 500U}, std::pair{-1, 0U}}) {
    list.provider_num = static_cast<std::int16_t>(count);

    EXPECT_EQ(providers_dump().size(), 1 + printed) << count;
  }
}

}  // namespace
