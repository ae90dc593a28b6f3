// Positions found through the sorted identities against a walk: the first that matches, while entries are cleared.
#include "channel/vindex/entry_positions.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

#include "channel/identity.h"
#include "channel/store/view.h"
#include "support/rounds.h"

namespace {

using channel::entry_positions;
using channel::tagged_identity;
using entry_list = std::vector<virtual_channel_st>;

class EntryPositions : public ::testing::Test {
 protected:
  int pick(int values) { return std::uniform_int_distribution<int>(0, values - 1)(random_); }

  std::uint32_t some_frequency() {
    static constexpr std::array<std::uint32_t, 12> edges = {
        0, 1, 2'499, 2'500, 2'501, 4'999, 5'000, 7'499, 7'500, UINT32_MAX - 1, UINT32_MAX - 2'499, UINT32_MAX};
    return edges.at(static_cast<std::size_t>(pick(edges.size())));
  }

  // Few values of each field, so that most entries have twins.
  virtual_channel_st some_entry() {
    virtual_channel_st entry = {};
    if (pick(8) != 0) {
      entry.vch_tag = static_cast<std::int8_t>(pick(3) - 1);
      entry.net_index = static_cast<std::uint8_t>(pick(2));
      entry.network_id = static_cast<std::uint16_t>(pick(2));
      entry.ts_id = static_cast<std::uint16_t>(pick(2));
      entry.service_id = static_cast<std::uint16_t>(pick(2));
      entry.polarisation = static_cast<std::uint8_t>(pick(2));
      entry.frequency = some_frequency();
    }
    return entry;
  }

  entry_list some_entries(int n) {
    entry_list made;
    std::generate_n(std::back_inserter(made), n, [this] { return some_entry(); });
    return made;
  }

 private:
  std::mt19937 random_{16};
};

int walk(const entry_list &searched, const tagged_identity &id) {
  const auto found = std::find_if(searched.begin(), searched.end(), [&id](const virtual_channel_st &entry) {
    return channel::same_entry_or_ids(entry, id);
  });
  return found != searched.end() ? static_cast<int>(found - searched.begin()) : -1;
}

TEST_F(EntryPositions, AreThoseOfAWalkWhileEntriesAreCleared) {
  for (int round = 0; round < test_support::rounds(400); ++round) {
    entry_list searched = some_entries(pick(70));
    auto count = static_cast<std::int16_t>(searched.size());
    entry_positions positions({searched.data(), &count, count});
    for (int query = 0; query < 200; ++query) {
      const tagged_identity id = channel::tagged_identity_of(some_entry());
      const int found = positions.find(id);
      ASSERT_EQ(found, walk(searched, id)) << "round " << round << ", query " << query;
      if (found >= 0 && pick(3) == 0) {
        positions.clear(searched[static_cast<std::size_t>(found)]);
      }
    }
  }
}

TEST_F(EntryPositions, StayWhenAnEntryOfAnotherArrayIsCleared) {
  entry_list searched = some_entries(20);
  entry_list others = some_entries(20);
  std::int16_t count = 10;
  entry_positions positions({searched.data(), &count, 20});
  const entry_list before = searched;

  positions.clear(others[3]);
  positions.clear(searched[10]);

  EXPECT_EQ(others[3].service_id, 0);
  for (int i = 0; i < 10; ++i) {
    const auto at = static_cast<std::size_t>(i);
    EXPECT_EQ(positions.find(channel::tagged_identity_of(before[at])),
              walk({before.begin(), before.begin() + 10}, channel::tagged_identity_of(before[at])));
  }
}

}  // namespace
