// The hierarchy as vectors in list order, for tests to compare, and the invariant of its counts. Free of the library's
// internals, so that a fault there cannot hide itself.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace test_support {

template <class Record>
std::vector<Record *> records_below(const list_head &head) {
  std::vector<Record *> found;
  for (list_head *node = head.next; node != nullptr && node != &head; node = node->next) {
    EXPECT_EQ(node->next->prev, node) << "a node's neighbours do not know it";
    found.push_back(reinterpret_cast<Record *>(node));
  }
  return found;
}

inline std::vector<network_ch_st *> networks() {
  return records_below<network_ch_st>(get_channel_list()->network_list);
}

inline std::vector<tp_ch_st *> transponders(const network_ch_st &network) {
  return records_below<tp_ch_st>(network.tp_list);
}

inline std::vector<channel_st *> services(const tp_ch_st &transponder) {
  return records_below<channel_st>(transponder.rch_list);
}

// Frees a network and what hangs from it, record by record, as its owner does.
inline void free_network(network_ch_st *network) {
  for (tp_ch_st *transponder : transponders(*network)) {
    for (channel_st *service : services(*transponder)) {
      std::free(service);
    }
    std::free(transponder);
  }
  std::free(network);
}

// Every count in the hierarchy is the length of its list.
inline ::testing::AssertionResult counts_match_lists() {
  if (networks().size() != get_channel_list()->network_num) {
    return ::testing::AssertionFailure() << networks().size() << " networks are counted as "
                                         << get_channel_list()->network_num;
  }
  for (const network_ch_st *network : networks()) {
    if (transponders(*network).size() != network->tp_num) {
      return ::testing::AssertionFailure()
             << transponders(*network).size() << " transponders are counted as " << network->tp_num;
    }
    for (const tp_ch_st *transponder : transponders(*network)) {
      if (services(*transponder).size() != transponder->rch_num) {
        return ::testing::AssertionFailure()
               << services(*transponder).size() << " channels are counted as " << transponder->rch_num;
      }
    }
  }
  return ::testing::AssertionSuccess();
}

// True when a link points to itself in both words.
inline bool points_to_itself(const list_head &link) { return link.next == &link && link.prev == &link; }

}  // namespace test_support
