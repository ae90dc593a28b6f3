// Bouquets and the blacklist of an Enigma2 folder: the order, numbers, favourites and locks that they give a line-up,
// and lines that cannot be read.
#include "chlist/exchange/enigma2/bouquets.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "tool/exchange/enigma2/bouquets_list.h"

namespace {

using namespace tool_test::enigma2;

std::string reference(int service) { return "1:0:1:" + std::to_string(service) + ":7DA:9E:C00000:0:0:0:"; }

std::string index_of(const texts &files) {
  std::string text = "#NAME Bouquets\n";
  for (const std::string &file : files) {
    text += "#SERVICE: 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"" + file + "\" ORDER BY bouquet\n";
  }
  return text;
}

// A receiver's folder with these user bouquets.
folder receiver(const folder &television, const folder &radio = {}) {
  folder files{{"lamedb", written_folder(five())["lamedb"]}};
  const auto add = [&](const folder &bouquets, const std::string &index) {
    texts names;
    for (const auto &[name, text] : bouquets) {
      names.push_back(name);
      files[name] = text;
    }
    files[index] = index_of(names);
  };
  add(television, "bouquets.tv");
  add(radio, "bouquets.radio");
  return files;
}

TEST(BouquetsReader, WithoutBouquetsTheOrderIsThatOfTheLamedb) {
  const line_up list = read_folder({{"lamedb", written_folder(five())["lamedb"]}});

  EXPECT_EQ(order_of(list), "A1 A2 A3 A4 A5");
  EXPECT_TRUE(list.services[0].is_listed);
  EXPECT_TRUE(list.favourites.empty());
}

TEST(BouquetsReader, BouquetsOfAReceiverGiveOrderNumbersAndFavourites) {
  const line_up list = read_folder(
      receiver({{"userbouquet.1.tv", "#NAME First\n#SERVICE " + reference(3) + "\n#SERVICE: " + reference(1) + "\n"},
                {"userbouquet.2.tv", "#NAME Second\r\n#SERVICE " + reference(1) + "\r\n#DESCRIPTION A1\r\n"}},
               {{"userbouquet.3.radio", "#NAME Radio\n#SERVICE " + reference(5) + "\n"}}));

  EXPECT_EQ(skipped_in(list), texts{});
  EXPECT_EQ(order_of(list), "A3=1 A1=2 A5=4 A2 A4");
  EXPECT_EQ(favourites_of(list), (texts{"First: A3 A1", "Second: A1", "Radio: A5"}));
  EXPECT_TRUE(std::ranges::all_of(list.services, &line_up_service::is_listed));
  EXPECT_EQ(list.favourites[0].entries[0].number, channel_number{});
}

TEST(BouquetsReader, WhatIsNoServiceIsCountedAndTakesItsNumber) {
  const struct {
    const char *line;
    const char *what;
    int number;
  } cases[] = {
      {"1:64:1:0:0:0:0:0:0:0::Marker", "markers", 1},
      {"1:320:1:0:0:0:0:0:0:0::Numbered", "", 2},
      {"1:832:D:0:0:0:0:0:0:0:", "", 2},
      {"1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.2.tv\" ORDER BY bouquet", "bouquets within bouquets", 1},
      {"1:134:1:0:0:0:0:0:0:0:FROM BOUQUET \"alternatives.x.tv\" ORDER BY bouquet",
       "streams, alternatives and other things that are no DVB service", 2},
      {"4097:0:1:1:7DA:9E:C00000:0:0:0:http%3a//example:Stream",
       "streams, alternatives and other things that are no DVB service", 2},
  };

  for (const auto &each : cases) {
    loss_counts lost;
    const line_up list =
        read_folder(receiver({{"userbouquet.1.tv", "#NAME A\n#SERVICE " + std::string(each.line) +
                                                       "\n#DESCRIPTION Text\n#SERVICE " + reference(1) + "\n"}}),
                    lost);

    EXPECT_EQ(skipped_in(list), texts{}) << each.line;
    EXPECT_EQ(list.services[0].number, channel_number{each.number}) << each.line;
    EXPECT_EQ(count_of(lost, each.what), std::string_view(each.what).empty() ? 0U : 1U) << each.line;
    EXPECT_EQ(count_of(lost, "names given in bouquets"), 0U) << each.line;
  }
}

TEST(BouquetsReader, NamesGivenToServicesAreCounted) {
  loss_counts lost;

  read_folder(
      receiver({{"userbouquet.1.tv", "#NAME A\n#SERVICE " + reference(1) + ":Given\n#SERVICE " + reference(2) +
                                         "\n#DESCRIPTION Other\n#SERVICE " + reference(3) + "\n#DESCRIPTION A3\n"}}),
      lost);

  EXPECT_EQ(count_of(lost, "names given in bouquets"), 2U);
}

TEST(BouquetsReader, LinesThatCannotBeReadAreSkippedByFileAndLine) {
  const struct {
    const char *line;
    const char *reason;
  } cases[] = {
      {"garbage", "2: userbouquet.1.tv: is no line of a bouquet"},
      {"#SERVICE 1:0:1", "2: userbouquet.1.tv: reference '1:0:1' has fewer than 10 fields"},
      {"#SERVICE 1:0:1:10000:0:0:0:0:0:0:", "2: userbouquet.1.tv: SID '10000' is not within 0..65535"},
      {"#SERVICE 1:0:x:1:0:0:0:0:0:0:", "2: userbouquet.1.tv: service type 'x' is not a number"},
      {"#SERVICE x:0:1:1:0:0:0:0:0:0:", "2: userbouquet.1.tv: kind 'x' is not a number"},
      {"#SERVICE 1:99999999999:1:1:0:0:0:0:0:0:",
       "2: userbouquet.1.tv: flags '99999999999' is not within 0..4294967295"},
      {"#SERVICE 1:0:1:99:7DA:9E:C00000:0:0:0:", "2: userbouquet.1.tv: its service is not in the lamedb"},
  };

  for (const auto &each : cases) {
    const line_up list = read_folder(
        receiver({{"userbouquet.1.tv", "#NAME A\n" + std::string(each.line) + "\n#SERVICE " + reference(1) + "\n"}}));

    EXPECT_EQ(skipped_in(list), texts{each.reason});
    EXPECT_EQ(favourites_of(list), texts{"A: A1"});
  }
}

TEST(BouquetsReader, BouquetsOutsideTheFolderAreRefused) {
  folder files = receiver({});
  files["bouquets.tv"] = index_of({"../secret", "missing.tv", ""}) + "#SERVICE 1:7:1:0:0:0:0:0:0:0:\n";

  EXPECT_EQ(
      skipped_in(read_folder(files)),
      (texts{"2: bouquets.tv: names no bouquet of this folder", "3: bouquets.tv: 'missing.tv' is not in the folder",
             "4: bouquets.tv: names no bouquet of this folder", "5: bouquets.tv: names no bouquet of this folder"}));
}

TEST(BouquetsReader, ABouquetThatIsNamedTwiceIsReadOnceAndTakesItsNumbersTwice) {
  const folder bouquets = {{"1.tv", "#NAME A\n#SERVICE " + reference(1) + "\n#SERVICE " + reference(2) + "\n"},
                           {"2.tv", "#NAME B\n#SERVICE " + reference(3) + "\n"}};
  folder files = receiver(bouquets);
  files["bouquets.tv"] = index_of({"1.tv", "1.tv", "2.tv"});

  const line_up list = read_folder(files);

  EXPECT_EQ(skipped_in(list), texts{"3: bouquets.tv: names '1.tv' once more"});
  EXPECT_EQ(favourites_of(list), (texts{"A: A1 A2", "B: A3"}));
  EXPECT_EQ(order_of(list), "A1=1 A2=2 A3=5 A4 A5");
}

TEST(BouquetsReader, NoFileIsReadOnceForEachLineThatNamesIt) {
  folder files = receiver({{"1.tv", "#NAME A\n#SERVICE " + reference(1) + "\n"}});
  files["bouquets.tv"] = index_of(texts(50'000, "1.tv"));
  files["bouquets.radio"] = files["bouquets.tv"];
  std::map<std::string, int> reads;
  const auto file = [&](const std::string &name) {
    ++reads[name];
    const auto found = files.find(name);
    return found == files.end() ? std::nullopt : std::optional(found->second);
  };
  loss_counts lost;

  const line_up list = chlist::parse_lamedb_folder(files["lamedb"], file, lost);

  EXPECT_EQ(list.skipped.size(), 2 * 49'999U);
  EXPECT_EQ(reads["1.tv"], 2);
}

TEST(BouquetsReader, NumbersEndAtTheLargest) {
  std::string text = "#NAME A\n";
  for (int i = 1; i < 32767; ++i) {
    text += "#SERVICE 1:832:D:0:0:0:0:0:0:0:\n";
  }
  text += "#SERVICE " + reference(1) + "\n#SERVICE " + reference(2) + "\n";

  EXPECT_EQ(order_of(read_folder(receiver({{"userbouquet.1.tv", text}}))), "A1=32767 A2 A3 A4 A5");
}

TEST(BouquetsReader, TheBlacklistLocks) {
  folder files = receiver({});
  files["blacklist"] = reference(2) + "\r\n\n" + reference(99) + "\n1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"x\"\nx\n";
  loss_counts lost;

  const line_up list = read_folder(files, lost);

  EXPECT_FALSE(list.services[0].has_flag(CHANNEL_FLAG_LOCKED));
  EXPECT_TRUE(list.services[1].has_flag(CHANNEL_FLAG_LOCKED));
  EXPECT_EQ(skipped_in(list), (texts{"3: blacklist: its service is not in the lamedb",
                                     "5: blacklist: reference 'x' has fewer than 10 fields"}));
  EXPECT_EQ(count_of(lost, "locks of what is no DVB service"), 1U);
}

}  // namespace
