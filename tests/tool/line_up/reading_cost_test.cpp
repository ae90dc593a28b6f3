// What it costs to read a file and to hold two of them against each other: about what their records are.
#include <gtest/gtest.h>

#include <cstdint>
#include <span>
#include <string>

#include "chlist/compare/difference.h"
#include "chlist/files/file_records.h"
#include "chlist/line_up/list_line_up.h"
#include "support/channel_file.h"
#include "support/cpu_time.h"

namespace {

using test_support::bytes;
using test_support::least_cpu_time;
using test_support::service_data;

constexpr std::uint32_t some = 5'000;
constexpr std::uint32_t many = 20'000;
// A walk in a walk would cost 16 times as much.
constexpr double most_growth = 8;

// Twenty services on each transponder, of which ALL shows as many as it can.
bytes file_of(std::uint32_t services) {
  test_support::channel_file file;
  for (std::uint32_t i = 0; i < services; ++i) {
    const std::uint32_t transponder = i / 20;
    const service_data service = {.ts_id = static_cast<std::uint16_t>(transponder),
                                  .frequency = 10'700'000 + transponder * 5'000,
                                  .service_id = static_cast<std::uint16_t>(i),
                                  .name = "Service " + std::to_string(i)};
    file.service(service);
    if (i < MAX_CHANNEL) {
      file.entry(VIEW_ALL, service, static_cast<int>(i) + 1);
    }
  }
  return file.data;
}

chlist::line_up line_up_in(const bytes &file) {
  const chlist::file_records records(std::as_bytes(std::span(file)));
  return chlist::line_up_of(records.list());
}

double cost_of_reading(std::uint32_t services) {
  const bytes file = file_of(services);
  return least_cpu_time([] {}, [&] { ASSERT_EQ(line_up_in(file).services.size(), services); });
}

double cost_of_comparing(std::uint32_t services) {
  const chlist::line_up list = line_up_in(file_of(services));
  return least_cpu_time([] {}, [&] { ASSERT_TRUE(chlist::differences(list, list).empty()); });
}

TEST(ReadingCost, GrowsAsTheFileDoes) { EXPECT_LT(cost_of_reading(many), most_growth * cost_of_reading(some)); }

TEST(ComparingCost, GrowsAsTheFilesDo) { EXPECT_LT(cost_of_comparing(many), most_growth * cost_of_comparing(some)); }

}  // namespace
