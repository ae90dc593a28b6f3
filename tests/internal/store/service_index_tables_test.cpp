// What the index finds comes from its own tables: it finds it while the hierarchy is out of sight, where a walk, to
// which every miss falls back, finds nothing.
#include <gtest/gtest.h>

#include <vector>

#include "channel/store/hierarchy.h"
#include "channel/store/service_index.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;

// Takes the hierarchy out of sight; its records and their count stay.
class hidden_hierarchy {
 public:
  hidden_hierarchy() : head_(get_channel_list()->network_list) {
    channel::clear_link(get_channel_list()->network_list);
  }
  ~hidden_hierarchy() { get_channel_list()->network_list = head_; }
  hidden_hierarchy(const hidden_hierarchy &) = delete;
  hidden_hierarchy &operator=(const hidden_hierarchy &) = delete;

 private:
  list_head head_;
};

class IndexTables : public store_test {
 protected:
  // Two networks that differ in one half of their identity, transponders a tolerance apart, in other polarisations and
  // on another transport stream, two services on each. 11,000,000 begins a range of frequencies as wide as the
  // tolerance.
  void SetUp() override {
    store_test::SetUp();
    for (const int network : {40, 41}) {
      for (const std::uint32_t frequency : {11'000'000U, 11'002'500U, 10'997'500U}) {
        file_pair(network, frequency, 1);
        file_pair(network, frequency, 4);
      }
    }
  }

  std::vector<channel_st *> services_;

 private:
  void file_pair(int network, std::uint32_t frequency, std::uint8_t polarisation) {
    const auto ts_id = static_cast<std::uint16_t>(500 + services_.size());
    for (const std::uint16_t service_id : {std::uint16_t{7}, std::uint16_t{8}}) {
      services_.push_back(file_service({.net_index = 3,
                                        .network_id = static_cast<std::uint16_t>(network),
                                        .ts_id = ts_id,
                                        .frequency = frequency,
                                        .service_id = service_id,
                                        .polarisation = polarisation}));
    }
  }
};

TEST_F(IndexTables, HoldEveryServiceByFrequency) {
  channel::service_index index;
  const hidden_hierarchy hidden;
  for (channel_st *service : services_) {
    EXPECT_EQ(index.resolve(channel::identity_of(*service)), service) << service->frequency;
  }
}

TEST_F(IndexTables, HoldTheFirstInListOrderWithinTheTolerance) {
  channel::service_index index;
  const channel::identity first = channel::identity_of(*services_.front());
  const hidden_hierarchy hidden;
  for (const int distance : {-2499, -1, 0, 1, 2499}) {
    channel::identity near = first;
    near.frequency = static_cast<std::uint32_t>(11'000'000 + distance);
    EXPECT_EQ(index.resolve(near), services_.front()) << distance;
  }
}

TEST_F(IndexTables, HoldEveryServiceByTransportStreamOnceOneWasAskedFor) {
  channel::service_index index;
  EXPECT_EQ(index.resolve(channel::identity{3, 40, 999, 0, 7, 0}), nullptr);
  const hidden_hierarchy hidden;
  for (channel_st *service : services_) {
    channel::identity id = channel::identity_of(*service);
    id.frequency = 0;
    EXPECT_EQ(index.resolve(id), service) << service->ts_id;
  }
}

TEST_F(IndexTables, HoldNothingElse) {
  channel::service_index index;
  const channel::identity first = channel::identity_of(*services_.front());
  const channel::identity strangers[] = {
      {4, first.network_id, first.ts_id, first.frequency, first.service_id, first.polarisation},
      {first.net_index, 42, first.ts_id, first.frequency, first.service_id, first.polarisation},
      {first.net_index, first.network_id, first.ts_id, 11'005'000, first.service_id, first.polarisation},
      {first.net_index, first.network_id, first.ts_id, first.frequency, 9, first.polarisation},
      {first.net_index, first.network_id, first.ts_id, first.frequency, first.service_id, 3}};
  const hidden_hierarchy hidden;
  for (const channel::identity &stranger : strangers) {
    EXPECT_EQ(index.resolve(stranger), nullptr);
  }
}

}  // namespace
