// Bouquets: order, numbers, favourites and locks between a folder of Enigma2 and a line-up.
#include "chlist/exchange/enigma2/bouquets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "tool/exchange/lamedb_folder.h"
#include "tool/exchange/random_line_up.h"

namespace {

using namespace tool_test::enigma2;
using chlist::channel_number;
using chlist::favourite_group;

// Services 1 to 5, of which 4 and 5 are radio.
line_up five() {
  line_up list = list_of({plain_service(1), plain_service(2), plain_service(3), plain_service(4), plain_service(5)});
  list.services[3].fields.service_type = SERVICE_TYPE_RADIO;
  list.services[4].fields.service_type = SERVICE_TYPE_RADIO;
  for (int i = 0; i < 5; ++i) {
    list.services[static_cast<std::size_t>(i)].number = channel_number{i + 1};
  }
  return list;
}

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

// "A1=1 A2=2 A3"
std::string order_of(const line_up &list) {
  std::string text;
  for (const line_up_service &service : list.services) {
    text += (text.empty() ? "" : " ") + service.name;
    text += service.number ? "=" + std::to_string(service.number->major) : "";
  }
  return text;
}

// "Name: A1 A2"
std::string favourites_of(const line_up &list, const favourite_group &group) {
  std::string text = group.name + ":";
  for (const favourite_group::entry &entry : group.entries) {
    text += " " + list.services.at(entry.service).name;
  }
  return text;
}

texts favourites_of(const line_up &list) {
  texts groups;
  for (const favourite_group &group : list.favourites) {
    groups.push_back(favourites_of(list, group));
  }
  return groups;
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
  loss_counts lost;

  const line_up read = read_folder(tool_test::folder_of(chlist::write_lamedb(list, 4, lost)));

  EXPECT_EQ(order_of(read), "A1=1 A2=100 A3=101 A4=32767 A5");
  EXPECT_FALSE(read.services[4].is_listed);
  EXPECT_EQ(favourites_of(read), (texts{"Films: A2 A5", ":", "Music: A4"}));
  EXPECT_EQ(lost.rows().size(), 1U);
}

TEST(BouquetsWriter, NumbersThatDoNotRiseAreCountedAndRise) {
  line_up list = five();
  list.services[1].number = channel_number{1};
  list.services[2].number = channel_number{7, 1};
  list.services[3].number = channel_number{-3};
  list.services[4].number = channel_number{32768};
  loss_counts lost;

  const line_up read = read_folder(tool_test::folder_of(chlist::write_lamedb(list, 4, lost)));

  EXPECT_EQ(order_of(read), "A1=1 A2=2 A3=7 A4=8 A5=9");
  EXPECT_EQ(count_of(lost, "numbers that do not rise, or have a minor part"), 4U);
}

TEST(BouquetsWriter, LossesOfFavouritesAreCounted) {
  line_up list = five();
  list.services[0].is_listed = false;
  list.favourites = {{"Radio", {{4, {5}}}}, {"a\nb", {{0, {1}}, {1, {3}}, {2, {3}}}}};
  loss_counts lost;

  const line_up read = read_folder(tool_test::folder_of(chlist::write_lamedb(list, 4, lost)));

  EXPECT_EQ(favourites_of(read), (texts{"a b: A1 A2 A3", "Radio: A5"}));
  EXPECT_EQ(count_of(lost, "favourite group names with line ends"), 1U);
  EXPECT_EQ(count_of(lost, "places of favourite groups among those of radio alone"), 1U);
  EXPECT_EQ(count_of(lost, "numbers of favourites"), 2U);
  EXPECT_EQ(count_of(lost, "numbers of services outside the ALL view"), 1U);
}

TEST(BouquetsWriter, AListWithoutEntriesOfTheAllViewComesBackSo) {
  line_up list = list_of({plain_service(1)});
  list.services[0].is_listed = false;

  EXPECT_FALSE(read_folder(written_folder(list)).services.at(0).is_listed);
}

std::string one_line(std::string text, bool is_quoted) {
  std::ranges::replace(text, '\n', ' ');
  std::ranges::replace(text, '\r', ' ');
  if (is_quoted) {
    std::ranges::replace(text, '"', '\'');
  }
  return text;
}

std::string provider_of(const line_up_service &service) {
  std::string text = one_line(service.provider, false);
  std::ranges::replace(text, ',', ' ');
  return text;
}

void expect_same(const line_up_service &read, const line_up_service &written, int version) {
  EXPECT_EQ(read.name, one_line(written.name, version == 5));
  EXPECT_EQ(read.provider, provider_of(written));
  EXPECT_EQ(read.is_listed, written.is_listed);
  EXPECT_EQ(read.fields.service_id, written.fields.service_id);
  EXPECT_EQ(read.fields.network_id, written.fields.network_id);
  EXPECT_EQ(read.fields.ts_id, written.fields.ts_id);
  EXPECT_EQ(read.fields.frequency, written.fields.frequency);
  EXPECT_EQ(read.fields.polarisation, read.source.starts_with('S') ? written.fields.polarisation : 0);
  EXPECT_EQ(read.fields.video_pid, written.fields.video_pid);
  EXPECT_EQ(read.fields.audio_pid, written.fields.audio_pid);
  EXPECT_EQ(read.fields.pcr_pid, written.fields.pcr_pid);
  EXPECT_EQ(read.fields.flag, written.fields.flag);
}

// The services of the ALL view first, as a line-up has them.
line_up random_list(unsigned seed) {
  line_up list = tool_test::random_line_up(seed).make(static_cast<int>(seed % 40), 0);
  std::ranges::stable_partition(list.services, &line_up_service::is_listed);
  return list;
}

TEST(LamedbRoundTrip, RandomLineUpsComeBackButForTheirLosses) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    const int version = 3 + static_cast<int>(seed % 3);
    const line_up list = random_list(seed);

    const line_up read = read_folder(written_folder(list, version));

    ASSERT_EQ(skipped_in(read), texts{}) << seed;
    ASSERT_EQ(read.services.size(), list.services.size()) << seed;
    for (std::size_t i = 0; i < read.services.size(); ++i) {
      expect_same(read.services[i], list.services[i], version);
    }
    // What was read once is held whole.
    loss_counts lost;
    const folder again = tool_test::folder_of(chlist::write_lamedb(read, version, lost));
    EXPECT_EQ(written_folder(read_folder(again), version), again) << seed;
    EXPECT_LE(lost.rows().size(), 1U) << seed << ": " << lost.rows().back().what;
  }
}

TEST(LamedbRoundTrip, AFullListTakesLittleTime) {
  line_up list = tool_test::random_line_up(1).make(5000, 20);
  std::ranges::for_each(list.services, [](line_up_service &service) { service.is_listed = true; });
  const std::clock_t begin = std::clock();

  const line_up read = read_folder(written_folder(list));

  EXPECT_EQ(read.services.size(), 5000U);
  EXPECT_LT(std::clock() - begin, 2 * CLOCKS_PER_SEC);
}

}  // namespace
