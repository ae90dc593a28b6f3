// Builds the store of a test in a few readable lines.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <vector>

#include "full_list.h"

namespace test_support {

// Files n services (ids 1..n on one transponder unless data says otherwise) and appends each to a view, numbered
// from 1.
std::vector<channel_st *> fill_view(std::int8_t view_type, int n, service_data data = {});

// Positions 0..count-1 of a view by their service ids.
std::vector<int> service_ids(std::int8_t view_type);
std::vector<int> majors(std::int8_t view_type);

// True when every slot of a view from its count to its capacity is zero.
bool slots_behind_count_are_zero(std::int8_t view_type, int capacity);

// Starts and ends with an initialised, empty store, silent log, view ALL, empty history, work view and limited switch.
class store_test : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  channel_list_st &list = *get_channel_list();
};

}  // namespace test_support
