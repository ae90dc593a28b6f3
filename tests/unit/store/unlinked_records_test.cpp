// Records that a host allocated itself and never linked, or linked by half: releasing them follows no pointer of
// theirs that is missing.
#include <cstdlib>

#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class UnlinkedRecords : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    kept_ = file_service({});
  }

  // A zeroed record whose link is given one half, or none.
  template <class Record>
  static std::vector<Record *> unlinked() {
    std::vector<Record *> records;
    for (int i = 0; i < 3; ++i) {
      records.push_back(static_cast<Record *>(std::calloc(1, sizeof(Record))));
    }
    records[1]->list.next = &records[1]->list;
    records[2]->list.prev = &records[2]->list;
    return records;
  }

  void expect_untouched() const {
    EXPECT_TRUE(counts_match_lists());
    EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 1, 0), kept_);
  }

 private:
  channel_st *kept_ = nullptr;
};

TEST_F(UnlinkedRecords, OfChannelsAreReleased) {
  for (channel_st *service : unlinked<channel_st>()) {
    append_entry(VIEW_ALL, entry_of(*service, 1));

    release_rch_info(service);

    EXPECT_EQ(list.vch[list.vnumber - 1].rch, nullptr);
  }
  expect_untouched();
}

TEST_F(UnlinkedRecords, OfTranspondersAreReleased) {
  for (tp_ch_st *transponder : unlinked<tp_ch_st>()) {
    EXPECT_EQ(writes_at(2, [&] { return release_tp_ch_info(transponder), 0; }),
              lines{"ChannelAPI release_tp_ch_info:# \n"});
  }
  expect_untouched();
}

// Counted down all the same: the caller says that it was one of the list's.
TEST_F(UnlinkedRecords, OfNetworksAreReleased) {
  list.network_num = 4;
  for (network_ch_st *network : unlinked<network_ch_st>()) {
    release_network_ch_info(network);
  }
  EXPECT_EQ(list.network_num, 1);
  expect_untouched();
}

}  // namespace
