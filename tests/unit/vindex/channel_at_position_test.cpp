// The real channel at a position, found again through the hierarchy from the identity of the entry.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class ChannelAtPosition : public store_test {
 protected:
  // The two lookups in the current view, which behave alike but for the name in their lines.
  struct lookup {
    channel_st *(*find)(std::int16_t);
    const char *name;
  };
  const std::vector<lookup> lookups = {{get_channel, "get_channel"}, {get_channel_by_vindex, "get_channel_by_vindex"}};
};

TEST_F(ChannelAtPosition, IsResolvedFromTheIdentity) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 3);
  list.vch[1].rch = services[2];
  list.vch[2].rch = nullptr;
  for (const lookup &each : lookups) {
    EXPECT_EQ(each.find(0), services[0]);
    EXPECT_EQ(each.find(1), services[1]);
    EXPECT_EQ(each.find(2), services[2]);
  }
}

TEST_F(ChannelAtPosition, IsLookedUpInTheCurrentView) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 2);
  append_entry(VIEW_TV, entry_of(*services[1], 1));
  change_vindex_type(VIEW_TV);
  for (const lookup &each : lookups) {
    EXPECT_EQ(each.find(0), services[1]);
    EXPECT_EQ(each.find(1), nullptr);
  }
}

TEST_F(ChannelAtPosition, PositionsOutsideTheCountHoldNone) {
  fill_view(VIEW_ALL, 2);
  list.vch[2] = list.vch[0];
  for (const lookup &each : lookups) {
    for (const int vindex : {-32768, -1, 2, 3, 5000, 32767}) {
      const auto find = [&] { EXPECT_EQ(each.find(static_cast<std::int16_t>(vindex)), nullptr); };
      EXPECT_EQ(writes_at(5, find),
                lines{std::string("ChannelAPI ") + each.name + ":# virtual index = " + std::to_string(vindex) + "\n"});
      EXPECT_EQ(writes_at(4, find), lines{});
    }
  }
}

TEST_F(ChannelAtPosition, IsTracedAtLevelFive) {
  service_data data;
  data.net_index = 200;
  data.network_id = 0xABC;
  data.ts_id = 7;
  data.frequency = 0xFFFF'FFFF;
  append_entry(VIEW_ALL, entry_of(*file_service(data), 1));
  for (const lookup &each : lookups) {
    EXPECT_EQ(
        writes_at(5, [&] { return each.find(0); }),
        lines{std::string("ChannelAPI ") + each.name + ":# vch 0 net 200 on_id 0xabc tid 0x07 freq -1 sid 0x01\n"});
    EXPECT_EQ(writes_at(4, [&] { return each.find(0); }), lines{});
  }
}

TEST_F(ChannelAtPosition, IsNoneOnceTheChannelLeftTheHierarchy) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 2);
  release_rch_info(services[0]);
  for (const lookup &each : lookups) {
    EXPECT_EQ(each.find(0), nullptr);
    EXPECT_EQ(each.find(1), services[1]);
  }
  EXPECT_EQ(vtype_get_channel_by_vindex(0, VIEW_ALL), nullptr);
}

TEST_F(ChannelAtPosition, IsFoundWithinTheToleranceOfTheFrequency) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 1);
  list.vch[0].frequency += 2499;
  EXPECT_EQ(get_channel(0), services[0]);
  EXPECT_EQ(vtype_get_channel_by_vindex(0, VIEW_ALL), services[0]);

  list.vch[0].frequency += 1;
  EXPECT_EQ(get_channel(0), nullptr);
  EXPECT_EQ(vtype_get_channel_by_vindex(0, VIEW_ALL), nullptr);
}

TEST_F(ChannelAtPosition, OfEveryNamedView) {
  channel_st *service = file_service({});
  for (const view_case &each : every_view()) {
    const auto last = static_cast<std::int16_t>(each.capacity - 1);
    get_virtual_channel_st(each.code)[0] = entry_of(*service, 1);
    get_virtual_channel_st(each.code)[last] = entry_of(*service, 1);

    EXPECT_EQ(vtype_get_channel_by_vindex(0, each.code), service) << int{each.code};
    EXPECT_EQ(vtype_get_channel_by_vindex(last, each.code), service) << int{each.code};

    init_vindex(each.code);
  }
}

TEST_F(ChannelAtPosition, ANamedViewResolvesTheEmptySlotBehindTheCount) {
  fill_view(VIEW_TV, 1);

  EXPECT_EQ(vtype_get_channel_by_vindex(1, VIEW_TV), nullptr);
}

TEST_F(ChannelAtPosition, TheEmptySlotResolvesWhenAChannelHasItsIdentity) {
  service_data zero;
  zero.net_index = 0;
  zero.network_id = 0;
  zero.ts_id = 0;
  zero.frequency = 0;
  zero.service_id = 0;
  channel_st *service = file_service(zero);

  EXPECT_EQ(vtype_get_channel_by_vindex(0, VIEW_TV), service);
  EXPECT_EQ(get_channel(0), nullptr);
}

TEST_F(ChannelAtPosition, ANamedViewTracesInItsOwnFormatAtLevelFive) {
  fill_view(VIEW_TV, 1);
  const auto find = [] { return vtype_get_channel_by_vindex(0, VIEW_TV); };

  EXPECT_EQ(writes_at(5, find),
            lines{"ChannelAPI vtype_get_channel_by_vindex:# vch 0 net 1 on_id 0x 1 tid 0x64 freq 11000000 sid 0x01\n"});
  EXPECT_EQ(writes_at(4, find), lines{});
}

TEST_F(ChannelAtPosition, ANamedViewHoldsNoneBelowZero) {
  fill_view(VIEW_TV, 1);

  EXPECT_EQ(vtype_get_channel_by_vindex(-1, VIEW_TV), nullptr);
  EXPECT_EQ(vtype_get_channel_by_vindex(-32768, VIEW_TV), nullptr);
}

TEST_F(ChannelAtPosition, ANamedViewRefusesPositionsBehindItsArray) {
  for (const view_case &each : every_view()) {
    for (const int position : {each.capacity, 32767}) {
      EXPECT_EQ(writes_at(0,
                          [&] {
                            EXPECT_EQ(vtype_get_channel_by_vindex(static_cast<std::int16_t>(position), each.code),
                                      nullptr);
                          }),
                lines{outside("vtype_get_channel_by_vindex", position)});
    }
  }
}

TEST_F(ChannelAtPosition, AnUnknownViewHoldsNone) {
  for (const std::int8_t code : unknown_codes) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(vtype_get_channel_by_vindex(0, code), nullptr); }), lines{});
  }
  EXPECT_EQ(writes_at(5, [] { return vtype_get_channel_by_vindex(0, 30); }),
            (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=30\n",
                   "WARNING: get_virtual_channel_vnumber:# unknown vch_type=30\n"}));
}

}  // namespace
