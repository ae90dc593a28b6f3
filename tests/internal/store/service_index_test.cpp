// The index of a pass against the plain walk: the same service, and on a miss the same log, whatever the hierarchy.
#include "channel/store/service_index.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <vector>

#include "channel/store/hierarchy.h"
#include "channel/store/release.h"
#include "support/log_capture.h"
#include "support/random_store.h"
#include "support/rounds.h"

namespace {

using namespace test_support;

channel_st *walk(const channel::identity &id) {
  return get_channel_st(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation);
}

class ServiceIndex : public store_test {
 protected:
  random_store some{20};
};

TEST_F(ServiceIndex, GivesTheFindersAnswerInRandomHierarchies) {
  int hits = 0;
  for (int round = 0; round < rounds(4000); ++round) {
    reset_channel_list();
    some.build_hierarchy();
    channel::service_index index;
    for (int query = 0; query < 200; ++query) {
      const channel::identity id = some.some_identity();
      channel_st *expected = walk(id);
      hits += expected != nullptr ? 1 : 0;
      ASSERT_EQ(index.resolve(id), expected) << "round " << round << ", query " << query;
    }
  }
  EXPECT_GT(hits, rounds(10'000));
}

TEST_F(ServiceIndex, LooksUpWithoutAWord) {
  some.build_hierarchy();
  channel::service_index index;
  const auto answers = writes_at(5, [&] {
    for (int query = 0; query < 200; ++query) {
      index.look_up(some.some_identity());
    }
    return 0;
  });
  EXPECT_EQ(answers, std::vector<std::string>{});
  const channel::identity missing{99, 0, 0, 1, 0, 0};
  EXPECT_EQ(index.look_up(missing), nullptr);
}

TEST_F(ServiceIndex, ServesAListBesideTheOneInMemory) {
  some.build_hierarchy();
  channel_list_st beside = {};
  channel::init_lists(beside);
  channel::service_index empty(beside);
  channel::service_index full;
  for (const channel::filed_service &filed : channel::all_services_of(get_channel_list()->network_list)) {
    const channel::identity id = channel::identity_of(filed.service);
    EXPECT_EQ(empty.look_up(id), nullptr);
    EXPECT_EQ(full.look_up(id), walk(id));
  }
}

TEST_F(ServiceIndex, LogsWhatTheFinderLogsAtEveryLevel) {
  for (int round = 0; round < 10; ++round) {
    reset_channel_list();
    some.build_hierarchy();
    for (int level = -1; level <= 5; ++level) {
      std::vector<channel::identity> queries;
      for (int query = 0; query < 100; ++query) {
        queries.push_back(some.some_identity());
      }
      const auto walked = writes_at(level, [&] {
        for (const channel::identity &id : queries) {
          walk(id);
        }
        return 0;
      });
      const auto indexed = writes_at(level, [&] {
        channel::service_index index;
        for (const channel::identity &id : queries) {
          index.resolve(id);
        }
        return 0;
      });
      EXPECT_EQ(indexed, walked) << "level " << level;
      EXPECT_TRUE(level >= 2 || walked.empty());
    }
  }
}

TEST_F(ServiceIndex, FindsNothingWhileNoNetworkIsCounted) {
  channel_st *service = file_service({.service_id = 7});
  const channel::identity id = channel::identity_of(*service);
  list.network_num = 0;

  channel::service_index index;

  EXPECT_EQ(index.resolve(id), nullptr);
  EXPECT_EQ(writes_at(5, [&] { return index.resolve(id); }), std::vector<std::string>{});
  list.network_num = 1;
}

// Among them services that stood in front of others of their id.
TEST_F(ServiceIndex, GivesTheFindersAnswerAfterServicesWereDoomed) {
  for (int round = 0; round < rounds(1000); ++round) {
    reset_channel_list();
    some.build_hierarchy();
    channel::doomed_services doomed;
    channel::service_index index;
    index.resolve(some.some_identity());
    for (const auto [network, transponder, service] : channel::all_services_of(list.network_list)) {
      if (some.pick(3) == 0) {
        doomed.add(service);
        channel::count_down(transponder.rch_num);
      }
    }
    index.forget_doomed();
    for (int query = 0; query < 200; ++query) {
      const channel::identity id = some.some_identity();
      ASSERT_EQ(index.resolve(id), walk(id)) << "round " << round << ", query " << query;
    }
  }
}

TEST_F(ServiceIndex, FindsEveryServiceOfTheFullList) {
  fill_everything();
  channel::service_index index;

  for (const virtual_channel_st &entry : list.vch) {
    ASSERT_EQ(index.resolve(entry), entry.rch);
  }
}

}  // namespace
