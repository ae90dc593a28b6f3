// Transponders that a merge leaves without services: those of which the scan tells go, all others stay.
#include <channel/store.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "chlist/json/json.h"
#include "tool/merge/merge_host.h"

namespace {

using namespace merge_test;

constexpr std::uint32_t news_frequency = 11'000'000;
constexpr std::uint32_t films_frequency = 12'000'000;

const service_data far_films = {.ts_id = 200, .frequency = films_frequency, .service_id = 2, .name = "Films"};

using frequencies = std::vector<std::int64_t>;

class EmptiedTransponders : public MergeTool {
 protected:
  // News and films, each on a transponder.
  void SetUp() override {
    MergeTool::SetUp();
    write_list(channel_file().service(news).service(far_films).entry(VIEW_ALL, news, 1).entry(VIEW_ALL, far_films, 2));
  }

  static frequencies removed_in(const json &report) {
    frequencies removed;
    for (const json &transponder : report["removed_transponders"].elements()) {
      removed.push_back(transponder["frequency"].as_integer());
    }
    return removed;
  }

  [[nodiscard]] frequencies merged_frequencies() const {
    frequencies found;
    const json info = json::parse(run({"info", "out.dat", "--json"}).out);
    for (const json &network : info["network_list"].elements()) {
      for (const json &transponder : network["transponder_list"].elements()) {
        found.push_back(transponder["frequency"].as_integer());
      }
    }
    return found;
  }
};

TEST_F(EmptiedTransponders, GoWithTheirLastService) {
  write_scan(scan_of({news}));

  EXPECT_EQ(merged_json()["removed_transponders"],
            json::parse(R"([{"net_index": 1, "network_id": 1, "ts_id": 200, "frequency": 12000000,
                             "polarisation": "H"}])"));

  EXPECT_EQ(merged_frequencies(), frequencies{news_frequency});
}

// A host that knows nothing but the transport stream id is given the first transponder that has it.
TEST_F(EmptiedTransponders, DoNotStandInFrontOfWhereTheirServicesMoved) {
  service_data moved = far_films;
  moved.frequency = 12'500'000;
  write_scan(scan_of({news, moved}));

  EXPECT_EQ(removed_in(merged_json()), frequencies{films_frequency});

  ASSERT_EQ(load_named("out.dat"), CHANNEL_LIST_VERSION);
  const tp_ch_st *found = get_tp_ch_info_by_network_ch(get_network_ch_info(1, 1), 200, 0, 0);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->frequency, moved.frequency);
  EXPECT_EQ(found->rch_num, 1);
}

TEST_F(EmptiedTransponders, AreTold) {
  write_scan(scan_of({news}));

  const std::string out = merge().out;

  EXPECT_TRUE(has_line(out, "Left without services, and removed: 1 transponder")) << out;
  EXPECT_TRUE(has_line(out, "net  network   ts  frequency  pol")) << out;
  EXPECT_TRUE(has_line(out, "  1        1  200   12000000  H")) << out;
}

TEST_F(EmptiedTransponders, OfASourceThatTheScanLacksStay) {
  service_data elsewhere = far_films;
  elsewhere.net_index = 2;
  channel_file own;
  own.network(1, 1, "S19.2E").service(news).network(2, 1, "S13.0E").service(elsewhere);
  write_list(own.entry(VIEW_ALL, news, 1).entry(VIEW_ALL, elsewhere, 2));
  write_scan(channel_file().network(1, 1, "S19.2E").service(news));

  const json report = merged_json();

  EXPECT_EQ(report["removed"].size(), 1U);
  EXPECT_EQ(removed_in(report), frequencies{});
  EXPECT_EQ(merged_frequencies(), (frequencies{news_frequency, films_frequency}));
}

TEST_F(EmptiedTransponders, ThatHadNoServicesBeforeStay) {
  constexpr std::uint32_t idle_frequency = 13'000'000;
  channel_file own;
  own.service(news).service(far_films).transponder(300, idle_frequency, 0);
  write_list(own.entry(VIEW_ALL, news, 1).entry(VIEW_ALL, far_films, 2));
  write_scan(scan_of({news}));

  EXPECT_EQ(removed_in(merged_json()), frequencies{films_frequency});

  EXPECT_EQ(merged_frequencies(), (frequencies{news_frequency, idle_frequency}));
}

TEST_F(EmptiedTransponders, AreNoneWhereMissingServicesAreKept) {
  write_scan(scan_of({news}));

  EXPECT_EQ(removed_in(merged_json({"--keep-missing"})), frequencies{});

  EXPECT_EQ(merged_frequencies(), (frequencies{news_frequency, films_frequency}));
}

TEST_F(EmptiedTransponders, ToWhichAServiceComesStay) {
  service_data other = far_films;
  other.service_id = 9;
  other.name = "Other";
  write_scan(scan_of({news, other}));

  const json report = merged_json();

  EXPECT_EQ(report["removed"].size(), 1U);
  EXPECT_EQ(removed_in(report), frequencies{});
  EXPECT_EQ(merged_frequencies(), (frequencies{news_frequency, films_frequency}));
}

}  // namespace
