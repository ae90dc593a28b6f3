// Unlinking and freeing one real channel: how it is found, what is counted down, and when the sweep follows.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/removal_test.h"

namespace {

using namespace test_support;

class RemovalOfServices : public removal_test {};

tp_ch_st *transponder_at(std::size_t index) { return transponders(*networks().at(0)).at(index); }

std::vector<int> service_ids_on(const tp_ch_st *transponder) {
  std::vector<int> ids;
  for (const channel_st *service : services(*transponder)) {
    ids.push_back(service->service_id);
  }
  return ids;
}

TEST_F(RemovalOfServices, FreesTheServiceAndCountsItsTransponderDown) {
  struct removing {
    int removed;
    std::vector<int> left;
  };
  for (const auto &[removed, left] : std::vector<removing>{{1, {2, 3}}, {2, {1, 3}}, {3, {1, 2}}}) {
    for (const std::uint32_t frequency : {11'000'000U, 0U}) {
      reset_channel_list();
      fill_view(VIEW_ALL, 3);

      EXPECT_EQ(remove_service({.frequency = frequency, .service_id = removed}), 0);

      EXPECT_EQ(service_ids_on(transponder_at(0)), left);
      EXPECT_EQ(transponder_at(0)->rch_num, 2);
      EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, static_cast<std::uint16_t>(removed), 0), nullptr);
    }
  }
}

TEST_F(RemovalOfServices, AnEmptyTransponderAndItsNetworkStay) {
  for (const std::uint32_t frequency : {11'000'000U, 0U}) {
    file(1);

    EXPECT_EQ(remove_service({.frequency = frequency}), 0);

    EXPECT_EQ(list.network_num, 1);
    EXPECT_EQ(networks().at(0)->tp_num, 1);
    EXPECT_EQ(transponder_at(0)->rch_num, 0);
    EXPECT_TRUE(points_to_itself(transponder_at(0)->rch_list));
  }
}

TEST_F(RemovalOfServices, TheSecondRemovalFindsNothing) {
  file(1);
  remove_service({});

  EXPECT_EQ(remove_service({}), -1);
  EXPECT_EQ(remove_service({.frequency = 0}), -1);
  EXPECT_EQ(transponder_at(0)->rch_num, 0);
}

TEST_F(RemovalOfServices, ByFrequencyTheTransportStreamDoesNotMatter) {
  file(1);

  EXPECT_EQ(remove_service({.ts_id = 101}), 0);
}

TEST_F(RemovalOfServices, ByFrequencyTheToleranceAndThePolarisationDecide) {
  file(1);
  for (const channel_key &other :
       std::vector<channel_key>{{.frequency = 11'002'500}, {.frequency = 10'997'500}, {.polarisation = 1}}) {
    EXPECT_EQ(remove_service(other), -1);
  }
  EXPECT_EQ(transponder_at(0)->rch_num, 1);

  EXPECT_EQ(remove_service({.frequency = 11'002'499}), 0);
  file(1);
  EXPECT_EQ(remove_service({.frequency = 10'997'501}), 0);
}

TEST_F(RemovalOfServices, ByTransportStreamThePolarisationDoesNotMatter) {
  file(1);

  EXPECT_EQ(remove_service({.ts_id = 101, .frequency = 0}), -1);
  EXPECT_EQ(remove_service({.frequency = 0, .polarisation = 1}), 0);
}

TEST_F(RemovalOfServices, TheNetworkAndTheServiceMustMatch) {
  file(1);
  for (const std::uint32_t frequency : {11'000'000U, 0U}) {
    EXPECT_EQ(remove_service({.net_index = 2, .frequency = frequency}), -1);
    EXPECT_EQ(remove_service({.network_id = 2, .frequency = frequency}), -1);
    EXPECT_EQ(remove_service({.frequency = frequency, .service_id = 2}), -1);
  }
  EXPECT_EQ(transponder_at(0)->rch_num, 1);
}

TEST_F(RemovalOfServices, ByFrequencyOnlyTheFirstMatchingTransponderIsSearched) {
  file_service({.frequency = 11'000'000, .service_id = 1});
  file_service({.frequency = 11'003'000, .service_id = 2});

  EXPECT_EQ(remove_service({.frequency = 11'001'500, .service_id = 2}), -1);
  EXPECT_EQ(remove_service({.frequency = 11'001'500, .service_id = 1}), 0);
}

TEST_F(RemovalOfServices, ByTransportStreamTheFirstTransponderThatCarriesTheServiceIsTaken) {
  file_service({.ts_id = 100, .frequency = 11'000'000, .service_id = 1});
  file_service({.ts_id = 101, .frequency = 12'000'000, .service_id = 2});
  file_service({.ts_id = 100, .frequency = 13'000'000, .service_id = 2});
  file_service({.ts_id = 100, .frequency = 14'000'000, .service_id = 2});

  EXPECT_EQ(remove_service({.frequency = 0, .service_id = 2}), 0);

  EXPECT_EQ(transponder_at(0)->rch_num, 1);
  EXPECT_EQ(transponder_at(1)->rch_num, 1);
  EXPECT_EQ(transponder_at(2)->rch_num, 0);
  EXPECT_EQ(transponder_at(3)->rch_num, 1);
}

TEST_F(RemovalOfServices, WithAFrequencyTheViewEntriesStay) {
  fill_view(VIEW_ALL, 2);
  append_entry(VIEW_TV, list.vch[0]);
  append_entry(VIEW_TV, entry_with({.service_id = 9}));

  remove_service({});

  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1, 2}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 9}));
}

TEST_F(RemovalOfServices, WithoutAFrequencyTheSweepFollows) {
  fill_view(VIEW_ALL, 2);
  for (const view_case &each : every_view()) {
    if (each.code != VIEW_ALL) {
      append_entry(each.code, list.vch[0]);
      append_entry(each.code, entry_with({.service_id = 9}));
      append_entry(each.code, list.vch[1]);
    }
  }

  remove_service({.frequency = 0});

  for (const view_case &each : swept_views()) {
    EXPECT_EQ(service_ids(each.code), (std::vector<int>{2})) << int{each.code};
  }
  EXPECT_EQ(service_ids(VIEW_WORK), (std::vector<int>{1, 9, 2}));
}

TEST_F(RemovalOfServices, WithoutAFrequencyEntriesThatResolveElsewhereSurviveTheSweep) {
  file_service({.frequency = 11'000'000});
  file_service({.frequency = 12'000'000});
  append_entry(VIEW_ALL, entry_with({.frequency = 0}));
  append_entry(VIEW_ALL, entry_with({.frequency = 11'000'000}));
  append_entry(VIEW_ALL, entry_with({.frequency = 12'000'000}, 3));

  remove_service({.frequency = 0});

  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1, 3}));
}

TEST_F(RemovalOfServices, NothingFoundSweepsNothing) {
  file(1);
  append_entry(VIEW_ALL, entry_with({.service_id = 9}));

  EXPECT_EQ(remove_service({.frequency = 0, .service_id = 9}), -1);

  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{9}));
}

TEST_F(RemovalOfServices, EntriesThatStayForgetTheFreedChannel) {
  channel_st *service = file(1);
  channel_st *kept = file(2);
  for (const view_case &each : every_view()) {
    append_entry(each.code, entry_of(*service, 1));
    append_entry(each.code, entry_of(*kept, 2));
  }
  add_return_channel(0, 1, 1, 100, 11'000'000, 1, 0);
  ASSERT_EQ(get_return_channel()->vch.rch, service);

  remove_service({});

  for (const view_case &each : every_view()) {
    EXPECT_EQ(get_virtual_channel_st(each.code)[0].rch, nullptr) << int{each.code};
    EXPECT_EQ(get_virtual_channel_st(each.code)[1].rch, kept) << int{each.code};
  }
  EXPECT_EQ(get_return_channel()->vch.rch, nullptr);
}

TEST_F(RemovalOfServices, TheWorkViewForgetsAChannelThatIsSweptFromTheOthers) {
  append_entry(VIEW_WORK, entry_of(*file(1), 1));

  remove_service({.frequency = 0});

  EXPECT_EQ(service_ids(VIEW_WORK), (std::vector<int>{1}));
  EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)[0].rch, nullptr);
}

TEST_F(RemovalOfServices, ACountThatAHostSetToZeroStaysZero) {
  file(1);
  transponder_at(0)->rch_num = 0;

  EXPECT_EQ(remove_service({}), 0);

  EXPECT_EQ(transponder_at(0)->rch_num, 0);
}

TEST_F(RemovalOfServices, AStoreWithoutNetworksIsLeftInSilence) {
  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(remove_service({}), -1); }), lines{});
  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(remove_service({.frequency = 0}), -1); }), lines{});
}

TEST_F(RemovalOfServices, NetworksThatAreNotCountedAreNotSearched) {
  file(1);
  list.network_num = 0;

  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(remove_service({}), -1); }), lines{});

  list.network_num = 1;
  EXPECT_EQ(transponder_at(0)->rch_num, 1);
}

TEST_F(RemovalOfServices, DumpsTheServiceAtLevelTwo) {
  const lines dump = dump_of(file(1));
  ASSERT_EQ(dump.size(), 14U);
  EXPECT_EQ(writes_at(2, [] { return remove_service({}); }), dump);

  file(1);
  EXPECT_EQ(writes_at(2, [] { return remove_service({.frequency = 0}); }), joined({dump, {sweep_line}}));
}

TEST_F(RemovalOfServices, IsSilentBelowLevelTwo) {
  for (const std::uint32_t frequency : {11'000'000U, 0U}) {
    file(1);
    EXPECT_EQ(writes_at(1, [&] { EXPECT_EQ(remove_service({.frequency = frequency}), 0); }), lines{});
  }
}

class MissedServices : public removal_test {
 protected:
  // What only the lookup of an identity that nothing is filed under logs, at level 3 and not below.
  static void expect_miss(const channel_key &key, const lines &expected) {
    const auto removal = [&key] { EXPECT_EQ(remove_service(key), -1); };
    EXPECT_EQ(writes_at(3, removal), expected);
    EXPECT_EQ(writes_at(5, removal), expected);
    EXPECT_EQ(writes_at(2, removal), lines{});
  }
};

TEST_F(MissedServices, AMissingNetworkIsALine) {
  file(1);

  expect_miss({.net_index = 0xFE,
               .network_id = 0xBEEF,
               .ts_id = 0x0A,
               .frequency = 0xFFFF'FFFF,
               .service_id = 0xCAFE,
               .polarisation = 3},
              {"ChannelAPI get_network_ch_info:# Fail to find network_ch ni=254, on_id=0xbeef\n",
               "ChannelAPI remove_channel_st:# Fail to find network_ch ni=0xfe,on_id=0xbeef,ts_id=0xa,freq=-1,"
               "sid=0xcafe\n"});
  expect_miss({.net_index = 2, .frequency = 0},
              {"ChannelAPI get_network_ch_info:# Fail to find network_ch ni=2, on_id=0x1\n",
               "ChannelAPI remove_channel_st:# Fail to find network_ch ni=0x2,on_id=0x1,ts_id=0x64,freq=0,sid=0x1\n"});
}

TEST_F(MissedServices, AMissingTransponderIsALine) {
  file(1);

  expect_miss({.ts_id = 0x0A, .frequency = 0xFFFF'FFFF, .service_id = 0xCAFE, .polarisation = 3},
              {"ChannelAPI get_tp_ch_info_by_network_ch:# Fail to find tp_ch ts_id=0xa, freq=-1, polar 3 \n",
               "ChannelAPI remove_channel_st:# Fail to find tp_ch ni=0x1,on_id=0x1,ts_id=0xa,freq=-1,sid=0xcafe "
               "polar=3\n"});
}

TEST_F(MissedServices, AMissingServiceIsALine) {
  file(1);

  expect_miss({.service_id = 0xCAFE}, {"ChannelAPI remove_channel_st:# Fail to find rchannel ni=0x1,on_id=0x1,"
                                       "ts_id=0x64,freq=11000000,sid=0xcafe\n"});
  expect_miss({.frequency = 0, .service_id = 0xCAFE},
              {"ChannelAPI remove_channel_st:# Fail to find rchannel ni=0x1,on_id=0x1,ts_id=0x64,freq=0,"
               "sid=0xcafe\n"});
}

TEST_F(MissedServices, WithoutAFrequencyAMissingTransportStreamIsAMissingService) {
  file(1);

  expect_miss({.ts_id = 101, .frequency = 0}, {"ChannelAPI remove_channel_st:# Fail to find rchannel ni=0x1,on_id=0x1,"
                                               "ts_id=0x65,freq=0,sid=0x1\n"});
}

}  // namespace
