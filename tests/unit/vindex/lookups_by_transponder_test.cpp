// Lookups of view entries by their transponder: what is compared, and how closely.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include "lookup_on_transponder.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class LookupsByTransponder : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    fill_unfiled(VIEW_ALL, 1);
  }
};

TEST_F(LookupsByTransponder, ATransponderIsKnownByTagNetworkIndexFrequencyAndPolarisation) {
  virtual_channel_st *entry = &list.vch[0];
  EXPECT_EQ(on_transponder({}, VIEW_ALL), entry);
  EXPECT_EQ(on_transponder({.network_id = 9, .ts_id = 9, .service_id = 9}, VIEW_ALL), entry);
  EXPECT_EQ(on_transponder({.tag = 1}, VIEW_ALL), nullptr);
  EXPECT_EQ(on_transponder({.net_index = 2}, VIEW_ALL), nullptr);
  EXPECT_EQ(on_transponder({.polarisation = 1}, VIEW_ALL), nullptr);
  EXPECT_EQ(on_transponder({.frequency = 11'002'499}, VIEW_ALL), entry);
  EXPECT_EQ(on_transponder({.frequency = 10'997'501}, VIEW_ALL), entry);
  EXPECT_EQ(on_transponder({.frequency = 11'002'500}, VIEW_ALL), nullptr);
  EXPECT_EQ(on_transponder({.frequency = 10'997'500}, VIEW_ALL), nullptr);
}

TEST_F(LookupsByTransponder, FrequencyZeroIsNoWildcardForATransponder) {
  EXPECT_EQ(on_transponder({.frequency = 0}, VIEW_ALL), nullptr);

  list.vch[0].frequency = 2499;
  EXPECT_EQ(on_transponder({.frequency = 0}, VIEW_ALL), &list.vch[0]);
}

}  // namespace
