// The matches of a pass that releases many channels against a walk for each, and the pass against releases one by one.
#include "channel/store/transponder_matches.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "channel/identity.h"
#include "channel/store/service_index.h"
#include "support/hierarchy_walk.h"
#include "support/random_store.h"
#include "support/rounds.h"

namespace {

using namespace test_support;

std::vector<const tp_ch_st *> walk(const channel_st &service) {
  std::vector<const tp_ch_st *> matches;
  for (const network_ch_st *network : networks()) {
    if (channel::is_network(*network, service.net_index, service.network_id)) {
      for (const tp_ch_st *transponder : transponders(*network)) {
        if (channel::is_transponder_of(*transponder, service)) {
          matches.push_back(transponder);
          break;
        }
      }
    }
  }
  return matches;
}

class TransponderMatches : public store_test {
 protected:
  // A service whose frequency may have more than 32 bits.
  channel_st some_service() {
    channel_st *made = some.make_service();
    const channel_st service = *made;
    std::free(made);
    return service;
  }

  random_store some{16};
};

TEST_F(TransponderMatches, AreThoseOfAWalk) {
  std::size_t matched = 0;
  for (int round = 0; round < test_support::rounds(2'000); ++round) {
    reset_channel_list();
    some.build_hierarchy();
    const channel::transponder_matches matches;
    for (int query = 0; query < 100; ++query) {
      channel_st service = some_service();
      service.frequency += some.pick(4) == 0 ? std::int64_t{some.pick(3) - 1} << 32 : some.pick(5'001) - 2'500;
      std::vector<const tp_ch_st *> found;
      matches.for_each(service, [&found](const tp_ch_st &transponder) { found.push_back(&transponder); });
      std::vector<const tp_ch_st *> expected = walk(service);
      std::sort(found.begin(), found.end());
      std::sort(expected.begin(), expected.end());
      ASSERT_EQ(found, expected) << "round " << round << ", query " << query;
      matched += found.size();
    }
  }
  EXPECT_GT(matched, unsigned{test_support::rounds(3'000)});
}

// Shows every third service of a random hierarchy in the ALL view, some of them twice.
void show_some(random_store &some) {
  for (const network_ch_st *network : networks()) {
    for (const tp_ch_st *transponder : transponders(*network)) {
      for (channel_st *service : services(*transponder)) {
        for (int entries = some.pick(6) - 3; entries > 0; --entries) {
          append_entry(VIEW_ALL, entry_of(*service, 1));
        }
      }
    }
  }
}

template <class Removal>
std::vector<std::string> left_after(unsigned seed, const Removal &remove) {
  reset_channel_list();
  random_store some(seed);
  some.build_hierarchy();
  show_some(some);
  remove();
  std::vector<std::string> left = hierarchy_listing();
  const std::vector<std::string> entries = entry_listing();
  left.insert(left.end(), entries.begin(), entries.end());
  return left;
}

TEST_F(TransponderMatches, LeaveWhatReleasesOneByOneLeave) {
  for (unsigned seed = 0; seed < unsigned{test_support::rounds(500)}; ++seed) {
    const auto removed = left_after(seed, [] { remove_service_by_group_list_id(GROUP_FTACAS, 0, VIEW_ALL); });

    const auto released = left_after(seed, [this] {
      std::vector<channel_st *> shown;
      for (int i = 0; i < list.vnumber; ++i) {
        shown.push_back(list.vch[i].rch);
      }
      std::sort(shown.begin(), shown.end());
      shown.erase(std::unique(shown.begin(), shown.end()), shown.end());
      std::for_each(shown.begin(), shown.end(), release_rch_info);
      remove_invalid_virtual_channel();
    });

    EXPECT_EQ(removed, released) << "seed " << seed;
  }
}

}  // namespace
