// Every exported function with every argument at its extremes, on an empty list, a small one, a full one, and one that
// was destroyed and not initialised again: nothing is read or written outside its place, which a sanitizer sees, and
// the invariants of the list hold.
#include <base/verbosity.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <set>

#include "support/exported_calls.h"
#include "support/extreme_lists.h"
#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/temp_dir.h"

namespace extremes {
namespace {

constexpr std::array every_base = {base::one, base::zero, base::lowest, base::highest};

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
