// A list repaired from a file of an earlier version, once for each of the versions.
#pragma once

#include "channel_file.h"
#include "hierarchy_walk.h"
#include "old_channel_file.h"

namespace test_support {

class repair_test : public file_test, public ::testing::WithParamInterface<old_version> {
 protected:
  [[nodiscard]] bytes in_version(const channel_file &file) const {
    return test_support::in_version(GetParam(), file).data;
  }
  // Repairs the list from a file in the directory of the test; what an earlier repair made is released first.
  int repair(const bytes &contents) {
    reset_channel_list();
    write_file(path(), contents);
    return repair_channel(GetParam().number, path().c_str());
  }
  int repair(const channel_file &file) { return repair(in_version(file)); }

  static std::vector<channel_st *> every_service() {
    std::vector<channel_st *> found;
    for (const network_ch_st *network : networks()) {
      for (const tp_ch_st *transponder : transponders(*network)) {
        const std::vector<channel_st *> its_own = services(*transponder);
        found.insert(found.end(), its_own.begin(), its_own.end());
      }
    }
    return found;
  }
};

}  // namespace test_support

#define REPAIRED_FROM_EVERY_VERSION(suite)                                                      \
  INSTANTIATE_TEST_SUITE_P(FromEvery, suite, ::testing::ValuesIn(test_support::old_versions()), \
                           test_support::name_of_version)
