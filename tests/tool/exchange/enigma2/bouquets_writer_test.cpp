// Bouquets that are written: order, numbers, favourites and locks of a line-up, what comes back and what is lost.
#include "chlist/exchange/enigma2/bouquets.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <optional>

#include "tool/exchange/enigma2/bouquets_list.h"
#include "tool/exchange/line_ups.h"

namespace {

using namespace tool_test::enigma2;

TEST(BouquetsWriter, TheAllViewIsTheFirstBouquetAndGroupsFollow) {
  line_up list = five();
  list.favourites = {{"Films", {{1, {}}, {3, {}}}}, {"Music", {{4, {}}}}};
  list.services[2].set_flag(CHANNEL_FLAG_LOCKED, true);

  const folder files = written_folder(list);

  EXPECT_EQ(files.at("bouquets.tv"),
            "#NAME Bouquets (TV)\n"
            "#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.all_channels.tv\" ORDER BY bouquet\n"
            "#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.favourites_01.tv\" ORDER BY bouquet\n");
  EXPECT_EQ(files.at("bouquets.radio"),
            "#NAME Bouquets (Radio)\n"
            "#SERVICE 1:7:2:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.favourites_02.radio\" ORDER BY bouquet\n");
  EXPECT_EQ(files.at("userbouquet.favourites_01.tv"),
            "#NAME Films\n#SERVICE 1:0:1:2:7DA:9E:C00000:0:0:0:\n#SERVICE 1:0:2:4:7DA:9E:C00000:0:0:0:\n");
  EXPECT_EQ(files.at("userbouquet.favourites_02.radio"), "#NAME Music\n#SERVICE 1:0:2:5:7DA:9E:C00000:0:0:0:\n");
  EXPECT_EQ(files.at("blacklist"), "1:0:1:3:7DA:9E:C00000:0:0:0:\n");
  EXPECT_EQ(files.size(), 7U);
}

TEST(BouquetsWriter, OrderNumbersAndFavouritesComeBack) {
  line_up list = five();
  list.services[1].number = channel_number{100};
  list.services[2].number = channel_number{101};
  list.services[3].number = channel_number{32767};
  list.services[4].number = std::nullopt;
  list.services[4].is_listed = false;
  list.favourites = {{"Films", {{1, {100}}, {4, {}}}}, {"", {}}, {"Music", {{3, {}}}}};

  const line_up read = read_folder(written_folder(list));

  EXPECT_EQ(order_of(read), "A1=1 A2=100 A3=101 A4=32767 A5");
  EXPECT_FALSE(read.services[4].is_listed);
  EXPECT_EQ(favourites_of(read), (texts{"Films: A2 A5", ":", "Music: A4"}));
}

TEST(BouquetsWriter, NumbersThatDoNotRiseAreCountedAndRise) {
  line_up list = five();
  list.services[1].number = channel_number{1};
  list.services[2].number = channel_number{7, 1};
  list.services[3].number = channel_number{-3};
  list.services[4].number = channel_number{32768};

  const line_up read = read_folder(written_folder(list));

  EXPECT_EQ(order_of(read), "A1=1 A2=2 A3=7 A4=8 A5=9");
  EXPECT_EQ(tool_test::losses(tool_test::export_of(list, "lamedb4").lost),
            (texts{"symbol rate and modulation: 4", "number: 2", "minor: 1"}));
}

TEST(BouquetsWriter, LossesOfFavouritesAreCounted) {
  line_up list = five();
  list.services[0].is_listed = false;
  list.favourites = {{"Radio", {{4, {5}}}}, {"a\nb", {{0, {1}}, {1, {3}}, {2, {3}}}}};

  const line_up read = read_folder(written_folder(list));

  EXPECT_EQ(favourites_of(read), (texts{"a b: A1 A2 A3", "Radio: A5"}));
  EXPECT_EQ(tool_test::losses(tool_test::export_of(list, "lamedb4").lost),
            (texts{"symbol rate and modulation: 5", "number: 2", "id of a favourite group: 2",
                   "position of a favourite group: 2"}));
}

TEST(BouquetsWriter, AListWithoutEntriesOfTheAllViewComesBackSo) {
  line_up list = list_of({plain_service(1)});
  list.services[0].is_listed = false;

  EXPECT_FALSE(read_folder(written_folder(list)).services.at(0).is_listed);
}

}  // namespace
