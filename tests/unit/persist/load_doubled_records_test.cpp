// Files that hold a record twice, or transponders within each other's tolerance: entries are linked to the first in
// list order, as every lookup finds it.
#include <algorithm>
#include <array>

#include "support/channel_file.h"
#include "support/hierarchy_walk.h"

namespace {

using test_support::channel_file;
using test_support::networks;
using test_support::services;
using test_support::transponders;

class DoubledRecords : public test_support::file_test {
 protected:
  // The service that the first entry of the ALL view was linked to, which is the one that a lookup finds.
  static channel_st *linked() {
    const virtual_channel_st &entry = *get_virtual_channel_st(VIEW_ALL);
    EXPECT_EQ(entry.rch, get_channel_st(entry.net_index, entry.network_id, entry.ts_id, entry.frequency,
                                        entry.service_id, entry.polarisation));
    return entry.rch;
  }

  static channel_st *first_service(std::size_t network, std::size_t transponder) {
    return services(*transponders(*networks().at(network)).at(transponder)).at(0);
  }
};

TEST_F(DoubledRecords, OfOneServiceIdLinkTheFirst) {
  load(channel_file().service({}).service({}).entry(VIEW_ALL, {}, 1).data);

  EXPECT_EQ(linked(), first_service(0, 0));
}

TEST_F(DoubledRecords, OfANetworkLinkTheFirstAloneWhateverItLacks) {
  channel_file file;
  file.network(1, 1, "First").transponder(100, 11'000'000, 0).service({.service_id = 1});
  file.network(1, 1, "Second").transponder(100, 11'000'000, 0).service({.service_id = 1}).service({.service_id = 2});
  for (const std::int64_t frequency : {std::int64_t{0}, std::int64_t{11'000'000}}) {
    reset_channel_list();
    load(channel_file(file)
             .entry(VIEW_ALL, {.frequency = frequency, .service_id = 1}, 1)
             .entry(VIEW_ALL, {.frequency = frequency, .service_id = 2}, 2)
             .data);

    EXPECT_EQ(linked(), first_service(0, 0)) << frequency;
    EXPECT_EQ(list.vch[1].rch, nullptr) << frequency;
  }
}

// 11,000,000 is a multiple of the tolerance: neighbours stand in its own bucket of frequencies and in those beside it.
TEST_F(DoubledRecords, OfATransponderLinkTheFirstInListOrder) {
  std::array<std::uint32_t, 5> frequencies = {10'997'501, 10'999'999, 11'000'000, 11'000'001, 11'002'499};
  do {
    reset_channel_list();
    channel_file file;
    file.network(1, 1, "One");
    for (const std::uint32_t frequency : frequencies) {
      file.transponder(100, frequency, 0).service({.frequency = frequency});
    }
    load(file.entry(VIEW_ALL, {}, 1).data);

    ASSERT_EQ(linked(), first_service(0, 0)) << frequencies[0];
  } while (std::ranges::next_permutation(frequencies).found);
}

TEST_F(DoubledRecords, OfATransponderLookIntoTheFirstAlone) {
  channel_file file;
  file.network(1, 1, "One").transponder(100, 11'000'000, 0).service({.service_id = 1});
  file.transponder(100, 11'000'000, 0).service({.service_id = 1}).service({.service_id = 2});
  load(file.entry(VIEW_ALL, {.service_id = 1}, 1).entry(VIEW_ALL, {.service_id = 2}, 2).data);

  EXPECT_EQ(linked(), first_service(0, 0));
  EXPECT_EQ(list.vch[1].rch, nullptr);
}

TEST_F(DoubledRecords, OfATransponderPassOverThoseThatDoNotMatch) {
  channel_file file;
  file.network(1, 1, "One");
  for (const std::uint32_t frequency : {10'997'500U, 11'002'500U, 10'997'501U, 11'002'499U}) {
    file.transponder(100, frequency, 0).service({.frequency = frequency});
  }
  load(file.entry(VIEW_ALL, {}, 1).data);

  EXPECT_EQ(linked(), first_service(0, 2));
}

}  // namespace
