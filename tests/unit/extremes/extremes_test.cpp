// Every exported function with every argument at its extremes, on an empty list, a small one, a full one, and one that
// was destroyed and not initialised again: nothing is read or written outside its place, which a sanitizer sees, and
// the invariants of the list hold.
#include <base/verbosity.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>

#include "exported_calls.h"
#include "support/full_list.h"
#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/temp_dir.h"

namespace extremes {

const std::vector<exported_call> &exported_calls() {
  static const std::vector<exported_call> all = [] {
    std::vector<exported_call> joined = store_calls();
    for (const auto &more : {view_calls(), group_calls()}) {
      joined.insert(joined.end(), more.begin(), more.end());
    }
    return joined;
  }();
  return all;
}

namespace {

using test_support::service_data;

constexpr std::array every_base = {base::one, base::zero, base::lowest, base::highest};

// The identity that the base value 1 names.
service_data service_of_ones(std::uint16_t service_id) {
  service_data data;
  data.ts_id = 1;
  data.frequency = 1;
  data.polarisation = 1;
  data.service_id = service_id;
  data.service_type = service_id % 2 == 1 ? SERVICE_TYPE_TV : SERVICE_TYPE_RADIO;
  return data;
}

group_st group_named(const char *name) {
  group_st group = {};
  group.name_len = static_cast<std::int16_t>(std::strlen(name));
  std::memcpy(group.name, name, std::strlen(name));
  return group;
}

void fill_history(int count) {
  const virtual_channel_st *entries = get_channel_list_vch();
  for (int i = 0; i < count; ++i) {
    const virtual_channel_st &seen = entries[i];
    add_return_channel(seen.vch_tag, seen.net_index, seen.network_id, seen.ts_id, seen.frequency, seen.service_id,
                       seen.polarisation);
  }
}

void make_nothing() {}

// A name that fills its field, without a terminator, and claims to be longer still.
group_st group_with_endless_name() {
  group_st group = {};
  group.name_len = 127;
  std::memset(group.name, 'x', sizeof group.name);
  return group;
}

void make_small() {
  for (const group_st &group : {group_named("Ant"), group_named("Bee"), group_with_endless_name()}) {
    add_provider_info(group);
    add_fav_group_info(group);
  }
  for (std::uint16_t id = 1; id <= 6; ++id) {
    channel_st &service = *test_support::file_service(service_of_ones(id));
    service.provider_id = 1;
    service.genre_id = 1;
    for (const int type : {0, 1, 2, 3, 4, 5, 10, 11}) {
      test_support::append_entry(static_cast<std::int8_t>(type),
                                 test_support::entry_of(service, static_cast<std::int16_t>(id), 1, 1));
    }
  }
  change_vindex_type(VIEW_TV);
  fill_history(3);
}

// The first transponder's services take the identity that the base value 1 names.
void make_full() {
  test_support::fill_everything();
  tp_ch_st &first = *value_at<tp_ch_st *>(base::one);
  first.ts_id = 1;
  first.frequency = 1;
  first.polarisation = 1;
  for (std::uint16_t id = 1; id <= first.rch_num; ++id) {
    channel_st &service = *get_rch_ch_info_by_tp_ch(&first, id);
    service.ts_id = 1;
    service.frequency = 1;
    service.polarisation = 1;
  }
  for (int type = VIEW_ALL; type <= VIEW_FAVOURITE_LAST; ++type) {
    virtual_channel_st *entries = type > VIEW_PROMOTION && type < VIEW_FAVOURITE
                                      ? nullptr
                                      : get_virtual_channel_st(static_cast<std::int8_t>(type));
    for (int i = 0; entries != nullptr && i < *get_virtual_channel_vnumber(static_cast<std::int8_t>(type)); ++i) {
      entries[i].ts_id = entries[i].rch->ts_id;
      entries[i].frequency = static_cast<std::uint32_t>(entries[i].rch->frequency);
      entries[i].polarisation = entries[i].rch->polarisation;
    }
  }
  change_vindex_type(VIEW_TV);
  fill_history(MAX_RETURN_CHANNEL);
}

void make_destroyed() {
  make_small();
  destroy_channel_list();
}

std::string bytes_of_list() { return {reinterpret_cast<const char *>(get_channel_list()), sizeof(channel_list_st)}; }

void call_and_check(const exported_call &called, bases tried) {
  const std::string before = bytes_of_list();
  {
    const test_support::fd_capture printed(STDOUT_FILENO);

    called.run(tried);
  }
  EXPECT_EQ(test_support::broken_invariant(called.kept), "");
  if (called.has == effect::none) {
    EXPECT_TRUE(bytes_of_list() == before) << "the channel list has changed";
  }
}

class extremes_test : public test_support::store_test, public ::testing::WithParamInterface<exported_call> {
 protected:
  void SetUp() override {
    store_test::SetUp();
    set_target_dir(dir_.path().c_str());
  }

  // Standard error stays open: it is where a sanitizer reports.
  static void call_on(void (*make)(), bases tried) {
    std::fill(std::begin(verbosity_map), std::end(verbosity_map), -1);
    make();
    call_and_check(GetParam(), tried);
  }

  static void call_logged_on(void (*make)(), bases tried) {
    make();
    const test_support::log_capture log(5);
    call_and_check(GetParam(), tried);
    for (const std::string &write : log.writes_with("uncoloured")) {
      ADD_FAILURE() << write;
    }
  }

 private:
  test_support::temp_dir dir_;
};

TEST_P(extremes_test, OnAnEmptyList) { call_on(make_nothing, every_base); }

TEST_P(extremes_test, OnASmallList) { call_on(make_small, every_base); }

TEST_P(extremes_test, OnASmallListWithEveryLogLineOn) { call_logged_on(make_small, every_base); }

TEST_P(extremes_test, OnAFullList) { call_on(make_full, std::span(every_base).first(1)); }

TEST_P(extremes_test, OnADestroyedList) { call_on(make_destroyed, every_base); }

// The file of a new channel list stands at a fixed place: the suite's name keeps it apart from the merge's own tests.
bool reads_new_list(const exported_call &call) { return call.name == "check_load_channel"; }

std::vector<exported_call> calls_that(bool read_new_list) {
  std::vector<exported_call> chosen;
  std::ranges::copy_if(exported_calls(), std::back_inserter(chosen),
                       [=](const exported_call &each) { return reads_new_list(each) == read_new_list; });
  return chosen;
}

const auto name_of_call = [](const ::testing::TestParamInfo<exported_call> &tested) { return tested.param.name; };

INSTANTIATE_TEST_SUITE_P(Every, extremes_test, ::testing::ValuesIn(calls_that(false)), name_of_call);
INSTANTIATE_TEST_SUITE_P(CheckLoad, extremes_test, ::testing::ValuesIn(calls_that(true)), name_of_call);

// One symbol a line; lines that begin with # are headings. SID_TYPE is a variable.
std::set<std::string> exported_functions() {
  std::ifstream list(CHANNEL_TESTS_DIR "/../channel/exports.txt");
  std::set<std::string> names;
  for (std::string line; std::getline(list, line);) {
    if (!line.empty() && line[0] != '#' && line != "SID_TYPE") {
      names.insert(line);
    }
  }
  return names;
}

TEST(extremes_table_test, NamesEveryExportedFunctionOnce) {
  std::set<std::string> tabled;
  for (const exported_call &each : exported_calls()) {
    EXPECT_TRUE(tabled.insert(each.name).second) << each.name << " stands twice in the table";
  }
  EXPECT_EQ(tabled, exported_functions());
}

}  // namespace
}  // namespace extremes
