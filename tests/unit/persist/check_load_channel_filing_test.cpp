// Where a merge files services without a frequency, which are known by their transport stream alone.
#include "support/hierarchy_walk.h"
#include "support/new_list_folder.h"

namespace {

using namespace test_support;

class CheckLoadFiling : public new_list_test {
 protected:
  // The hierarchy as text: a transponder's frequency, and the ids of its services behind it.
  static std::vector<std::string> hierarchy() {
    std::vector<std::string> found;
    for (const network_ch_st *network : networks()) {
      for (const tp_ch_st *transponder : transponders(*network)) {
        found.push_back(std::to_string(transponder->frequency) + ":");
        for (const channel_st *service : services(*transponder)) {
          found.back() += " " + std::to_string(service->service_id);
        }
      }
    }
    EXPECT_TRUE(counts_match_lists());
    return found;
  }
};

TEST_F(CheckLoadFiling, PutsThemOnTheFirstTransponderOfTheirStream) {
  file_service({.ts_id = 7, .frequency = 12'000'000, .service_id = 1});
  file_service({.ts_id = 7, .frequency = 13'000'000, .service_id = 2});
  channel_file file;
  file.service({.ts_id = 7, .frequency = 13'000'000, .service_id = 2});
  file.service({.ts_id = 7, .frequency = 0, .service_id = 3}).service({.ts_id = 7, .frequency = 0, .service_id = 1});
  file.service({.ts_id = 7, .frequency = 0, .service_id = 3}).service({.ts_id = 7, .frequency = 0, .service_id = 2});

  EXPECT_EQ(merge(file), 1);

  EXPECT_EQ(hierarchy(), (std::vector<std::string>{"12000000: 1 3", "13000000: 2"}));
}

TEST_F(CheckLoadFiling, MakesOneTransponderForAStreamThatIsNew) {
  channel_file file;
  for (const int id : {1, 2, 1}) {
    file.service({.ts_id = 8, .frequency = 0, .service_id = static_cast<std::uint16_t>(id)});
    file.service({.ts_id = 9, .frequency = 0, .service_id = static_cast<std::uint16_t>(10 + id)});
  }

  EXPECT_EQ(merge(file), 4);

  EXPECT_EQ(hierarchy(), (std::vector<std::string>{"0: 1 2", "0: 11 12"}));
}

// The first transponder gets the service after the second has had one of that id: the first counts all the same.
TEST_F(CheckLoadFiling, KnowsTheFirstInListOrderWheneverItWasFiled) {
  file_service({.ts_id = 7, .frequency = 12'000'000, .service_id = 1});
  file_service({.ts_id = 7, .frequency = 13'000'000, .service_id = 5});
  channel_file file;
  file.service({.ts_id = 7, .frequency = 0, .service_id = 1});
  file.service({.ts_id = 7, .frequency = 12'000'000, .service_id = 5});
  file.service({.ts_id = 7, .frequency = 0, .service_id = 5});

  EXPECT_EQ(merge(file), 2) << "one added, one deleted";

  EXPECT_EQ(hierarchy(), (std::vector<std::string>{"12000000: 1 5", "13000000:"}));
}

}  // namespace
