// The index of a pass against the plain walk: the same service, and on a miss the same log, whatever the hierarchy.
#include "channel/store/service_index.h"

#include <base/list.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;

channel_st *walk(const channel::identity &id) {
  return get_channel_st(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation);
}

class ServiceIndex : public store_test {
 protected:
  // Values from small ranges, so that everything occurs twice and tolerances overlap.
  int pick(int values) { return std::uniform_int_distribution<int>(0, values - 1)(random_); }

  std::uint32_t some_frequency() {
    static constexpr std::uint32_t edges[] = {0,     1,         2'499,      2'500,      4'999,       5'000,
                                              7'499, 9'999'999, 10'002'498, 10'002'499, 0xFFFF'F63C, 0xFFFF'FFFF};
    return edges[static_cast<std::size_t>(pick(std::size(edges)))];
  }

  channel::identity some_identity() {
    return {static_cast<std::uint8_t>(pick(3)),  static_cast<std::uint16_t>(pick(3)),
            static_cast<std::uint16_t>(pick(4)), some_frequency(),
            static_cast<std::uint16_t>(pick(6)), static_cast<std::uint8_t>(pick(2))};
  }

  // Hangs records below each other as a damaged or doubled list may have them; filing would refuse most of it.
  void build_hierarchy() {
    for (int networks = pick(5); networks > 0; --networks) {
      const channel::identity at = some_identity();
      network_ch_st *network = alloc_network_ch_info(at.net_index, at.network_id, nullptr);
      for (int transponders = pick(8); transponders > 0; --transponders) {
        add_transponder(*network);
      }
    }
  }

  void add_transponder(network_ch_st &network) {
    const channel::identity at = some_identity();
    tp_ch_st *transponder = alloc_tp_ch_info(at.ts_id, at.frequency, at.polarisation);
    list_add_tail(&transponder->list, &network.tp_list);
    ++network.tp_num;
    for (int services = pick(6); services > 0; --services) {
      channel_st *service = alloc_channel_info();
      service->service_id = some_identity().service_id;
      list_add_tail(&service->list, &transponder->rch_list);
      ++transponder->rch_num;
    }
  }

 private:
  std::mt19937 random_{20};
};

TEST_F(ServiceIndex, GivesTheFindersAnswerInRandomHierarchies) {
  int hits = 0;
  for (int round = 0; round < 4000; ++round) {
    reset_channel_list();
    build_hierarchy();
    channel::service_index index;
    for (int query = 0; query < 200; ++query) {
      const channel::identity id = some_identity();
      channel_st *expected = walk(id);
      hits += expected != nullptr ? 1 : 0;
      ASSERT_EQ(index.resolve(id), expected) << "round " << round << ", query " << query;
    }
  }
  EXPECT_GT(hits, 10'000);
}

TEST_F(ServiceIndex, LogsWhatTheFinderLogsAtEveryLevel) {
  build_hierarchy();
  for (int level = -1; level <= 5; ++level) {
    std::vector<channel::identity> queries;
    for (int query = 0; query < 100; ++query) {
      queries.push_back(some_identity());
    }
    std::vector<std::string> walked;
    std::vector<std::string> indexed;
    {
      const log_capture log(level);
      for (const channel::identity &id : queries) {
        walk(id);
      }
      walked = log.writes();
    }
    {
      channel::service_index index;
      const log_capture log(level);
      for (const channel::identity &id : queries) {
        index.resolve(id);
      }
      indexed = log.writes();
    }
    EXPECT_EQ(indexed, walked) << "level " << level;
    EXPECT_EQ(walked.empty(), level < 2);
  }
}

TEST_F(ServiceIndex, FindsServicesFiledAfterItWasBuilt) {
  channel::service_index index;
  channel_st *service = file_service({.service_id = 7});

  EXPECT_EQ(index.resolve(channel::identity_of(*service)), service);
}

TEST_F(ServiceIndex, FindsNothingWhileNoNetworkIsCounted) {
  channel_st *service = file_service({.service_id = 7});
  const channel::identity id = channel::identity_of(*service);
  list.network_num = 0;

  channel::service_index index;

  EXPECT_EQ(index.resolve(id), nullptr);
  list.network_num = 1;
}

}  // namespace
