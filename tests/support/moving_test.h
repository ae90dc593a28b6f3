// Views to move entries in, and every choice of what to move.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/log_capture.h"
#include "support/move_model.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace test_support {

using positions = std::vector<std::int16_t>;

inline int move_to(int destination, const positions &sources) {
  return move_channel(static_cast<std::int16_t>(destination), static_cast<std::int16_t>(sources.size()),
                      sources.data());
}

// What a move says at level 2 for each step that has nothing to report.
inline const std::string empty_trace = "ChannelAPI move_channel:# \n";

// 1..n.
inline std::vector<int> first_ids(int n) {
  std::vector<int> ids;
  for (int id = 1; id <= n; ++id) {
    ids.push_back(id);
  }
  return ids;
}

// Every ordered choice of distinct positions below n, the empty one included.
template <class Action>
void for_each_choice(int n, const Action &action, positions chosen = {}) {
  action(std::as_const(chosen));
  for (int position = 0; position < n; ++position) {
    if (std::count(chosen.begin(), chosen.end(), position) == 0) {
      chosen.push_back(static_cast<std::int16_t>(position));
      for_each_choice(n, action, chosen);
      chosen.pop_back();
    }
  }
}

// Distinct positions below n, in any order.
inline positions random_choice(std::mt19937 &random, int n, int length) {
  positions all;
  for (int position = 0; position < n; ++position) {
    all.push_back(static_cast<std::int16_t>(position));
  }
  std::shuffle(all.begin(), all.end(), random);
  all.resize(static_cast<std::size_t>(length));
  return all;
}

inline int random_below(std::mt19937 &random, int n) { return std::uniform_int_distribution<int>(0, n - 1)(random); }

class moving_test : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    service_ = file_service({.network_id = 9, .service_id = 9999});
  }

  // Makes a view hold services by their ids, linked, numbered from numbers + id.
  void fill(std::int8_t view, const std::vector<int> &ids, int numbers = 0) const {
    init_vindex(view);
    for (const int id : ids) {
      virtual_channel_st entry = unfiled_entry(id);
      entry.major_ch_num = static_cast<std::int16_t>(numbers + id);
      entry.favorite_id = static_cast<std::uint8_t>(*get_virtual_channel_vnumber(view));
      entry.rch = service_;
      append_entry(view, entry);
    }
  }

  // Makes a filled view current. The group list is in use, or not, whatever the view is.
  void show(std::int8_t view, int use_group_list = GROUP_ALL, int service_type = VIEW_TV) {
    change_vindex_type(view);
    ASSERT_EQ(get_vindex_type(), view);
    list.use_group_list = static_cast<std::int8_t>(use_group_list);
    list.service_type = static_cast<std::int8_t>(service_type);
  }

  // Moves in the library and in the model, which must agree on every slot they look at.
  static ::testing::AssertionResult moves_like_the_model(int destination, const positions &sources,
                                                         int window = MAX_CHANNEL) {
    move_model model(window);
    model.move(destination, sources);
    if (move_to(destination, sources) != 1) {
      return ::testing::AssertionFailure() << "the move was refused";
    }
    ::testing::AssertionResult agreement = model.agrees();
    if (!agreement) {
      agreement << "; moved to " << destination << ":";
      for (const int source : sources) {
        agreement << ' ' << source;
      }
    }
    return agreement;
  }

  channel_st *service_ = nullptr;
};

}  // namespace test_support
