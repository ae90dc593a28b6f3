// The numbers of added entries: the service id without its two top bits, or the length of each view when that is 0.
#include "merge_test.h"

#include <array>

namespace {

using test_support::append_entry;
using test_support::channel_file;
using test_support::entry_of;
using test_support::file_service;
using test_support::lines;
using test_support::majors;
using test_support::service_data;
using numbers = std::vector<int>;

class MergeNumbering : public test_support::merge_test {
 protected:
  static constexpr std::uint16_t top_bits[] = {0, 0x4000, 0x8000, 0xC000};

  // The views before the merge: three entries in ALL, two in TV, one in radio.
  static void list_something() {
    channel_st *service = file_service({.service_id = 0x3000});
    for (const std::int8_t view : std::to_array<std::int8_t>({0, 0, 0, 1, 1, 2})) {
      append_entry(view, entry_of(*service, 900));
    }
  }

  // What stands last in a view after a service is merged into it.
  int last_number(std::int8_t view, const service_data &data) {
    merge(channel_file().service(data));
    const numbers all = majors(view);
    return all.empty() ? -1 : all.back();
  }

  void expect_numbers(const service_data &data, std::int8_t view, int in_all, int in_view) {
    reset_channel_list();
    list_something();
    merge(channel_file().service({.service_id = 0x3000}).service(data));
    EXPECT_EQ(majors(VIEW_ALL), (numbers{900, 900, 900, in_all})) << data.service_id;
    EXPECT_EQ(majors(view).back(), in_view) << data.service_id;
  }
};

TEST_F(MergeNumbering, TakesTheServiceIdWithoutItsTopBits) {
  for (const std::uint16_t top : top_bits) {
    for (const std::uint16_t number : std::to_array<std::uint16_t>({1, 5, 0x3FFE, 0x3FFF})) {
      const auto id = static_cast<std::uint16_t>(top | number);
      expect_numbers({.service_id = id}, VIEW_TV, number, number);
      expect_numbers({.service_id = id, .service_type = 2}, VIEW_RADIO, number, number);
    }
  }
}

TEST_F(MergeNumbering, TakesTheLengthOfEachViewForZero) {
  for (const std::uint16_t top : top_bits) {
    expect_numbers({.service_id = top}, VIEW_TV, 4, 3);
    expect_numbers({.service_id = top, .service_type = 0x80}, VIEW_TV, 4, 3);
    expect_numbers({.service_id = top, .service_type = 0x81}, VIEW_TV, 4, 3);
    expect_numbers({.service_id = top, .service_type = 2}, VIEW_RADIO, 4, 2);
    expect_numbers({.service_id = top, .service_type = 3, .source_type = 9}, VIEW_ALL, 4, 4);
  }
}

TEST_F(MergeNumbering, BeginsAtOneInEmptyViews) {
  EXPECT_EQ(last_number(VIEW_ALL, {.service_id = 0}), 1);
  EXPECT_EQ(majors(VIEW_TV), numbers{1});
}

TEST_F(MergeNumbering, CountsWhatTheSameMergeAppended) {
  channel_file file;
  file.service({.service_id = 0}).service({.service_id = 0x4000}).service({.service_id = 9});

  merge(file.service({.service_id = 0x8000}));

  EXPECT_EQ(majors(VIEW_ALL), (numbers{1, 2, 9, 4}));
}

// Entries are counted before what the new list lacks is deleted.
TEST_F(MergeNumbering, CountsEntriesThatAreAboutToGo) {
  list_something();

  merge(channel_file().service({.service_id = 0}));

  EXPECT_EQ(majors(VIEW_ALL), numbers{4});
  EXPECT_EQ(majors(VIEW_TV), numbers{3});
}

TEST_F(MergeNumbering, TellsTheEntrysNumberOfRadio) {
  list_something();

  const lines all = test_support::writes_at_levels(
      -1, 5, [&] { merge(channel_file().service({.service_id = 0x4000, .service_type = 2, .source_type = 9})); });

  EXPECT_EQ(all, lines{"\t\tradio_channel_number 2, type 902\n\n"});
}

TEST_F(MergeNumbering, ListsFourNumbersInPromotion) {
  for (const int number : {200, 202, 606, 607}) {
    for (const std::uint16_t top : top_bits) {
      reset_channel_list();
      const auto id = static_cast<std::uint16_t>(top | number);
      EXPECT_EQ(last_number(VIEW_PROMOTION, {.service_id = id, .service_type = 0}), number);
      EXPECT_EQ(list.promo_vch[0].service_id, id);
    }
  }
}

TEST_F(MergeNumbering, ListsNoNeighbourInPromotion) {
  for (const int number : {0, 1, 199, 201, 203, 605, 608, 200 + 0x2000, 0x3FFF, 200 << 8, 202 + 0x100}) {
    for (const std::uint16_t top : top_bits) {
      reset_channel_list();
      merge(channel_file().service({.service_id = static_cast<std::uint16_t>(top | (number & 0x3FFF))}));
      EXPECT_EQ(list.promo_vnumber, 0) << number;
      EXPECT_EQ(list.vnumber, 1);
    }
  }
}

TEST_F(MergeNumbering, TellsTheNumberOfPromotionWithoutTopBits) {
  const lines all = test_support::writes_at_levels(
      -1, 5, [&] { merge(channel_file().service({.service_id = 0xC000 | 607, .source_type = 0x12})); });

  EXPECT_EQ(all, lines{"\t\tprom_channel_number 607, type 1201\n\n"});
}

}  // namespace
