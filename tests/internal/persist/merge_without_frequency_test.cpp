// New services without a frequency are looked for by their transport stream id, among those that the merge has filed
// before them as well.
#include "merge_test.h"

namespace {

using test_support::channel_file;
using test_support::file_service;
using test_support::service_data;

class MergeWithoutFrequency : public test_support::merge_test {};

// On the network that the list has, there are more services to look among than there were when the merge began.
TEST_F(MergeWithoutFrequency, AddsAServiceBehindManyNewOnes) {
  constexpr std::uint16_t many = 20;
  file_service({.service_id = 1});
  channel_file scan;
  for (std::uint16_t id = 1; id <= many; ++id) {
    scan.service({.service_id = id});
  }
  scan.service({.ts_id = 7, .frequency = 0, .service_id = 1});

  EXPECT_EQ(merge(scan), many);

  EXPECT_NE(find({.ts_id = 7, .frequency = 0, .service_id = 1}), nullptr);
}

TEST_F(MergeWithoutFrequency, FindsTheServiceOfTheFirstTransponderThoughItIsNew) {
  const service_data on_the_first = {.ts_id = 7, .frequency = 11'000'000, .service_id = 5};
  const service_data on_the_second = {.ts_id = 7, .frequency = 12'000'000, .service_id = 5};
  service_data stays = on_the_first;
  stays.service_id = 1;
  file_service(stays);
  file_service(on_the_second);
  channel_file scan;
  scan.service(stays).service({.ts_id = 9, .frequency = 0, .service_id = 2}).service(on_the_first);
  scan.service({.ts_id = 7, .frequency = 0, .service_id = 5});

  EXPECT_EQ(merge(scan), 3) << "two added, one deleted";

  EXPECT_NE(find(on_the_first), nullptr);
  EXPECT_EQ(find(on_the_second), nullptr);
}

}  // namespace
