// Genres and countries from files of their own: they fill tables that the channel file left empty, and no others.
#include <filesystem>

#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

namespace list_field = test_support::list_field;
using test_support::channel_file;
using test_support::file_test;
using test_support::log_capture;
using test_support::no_countries;
using test_support::no_genres;
using test_support::side_file;
using test_support::write_file;
using lines = std::vector<std::string>;

class LoadedGroups : public file_test {
 protected:
  void write_genres(int count) { write_file(path("genre.dat"), side_file(50, count, "Genre")); }
  void write_countries(int count) { write_file(path("country.dat"), side_file(200, count, "Country")); }

  static channel_file file_with_tables() {
    return channel_file().group(GROUP_GENRE, 1, "Of the list").group(GROUP_COUNTRY, 2, "Of the list");
  }
};

TEST_F(LoadedGroups, FillEmptyTables) {
  write_genres(50);
  write_countries(1);
  const log_capture log(0);

  EXPECT_EQ(load(channel_file().data), 10);

  EXPECT_EQ(list.genre_num, 50);
  EXPECT_STREQ(find_genre_id(149)->name, "Genre 49");
  EXPECT_EQ(list.country_num, 1);
  EXPECT_STREQ(find_country_id(100)->name, "Country 0");
  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(LoadedGroups, DoNotReplaceTheTablesOfTheFile) {
  write_genres(2);
  write_countries(2);

  load(file_with_tables().data);

  EXPECT_EQ(list.genre_num, 1);
  EXPECT_STREQ(list.genre[0].name, "Of the list");
  EXPECT_EQ(list.country_num, 1);
  EXPECT_STREQ(list.country[0].name, "Of the list");
}

TEST_F(LoadedGroups, FillTheOneTableThatIsEmpty) {
  write_genres(2);
  write_countries(2);

  load(channel_file().group(GROUP_GENRE, 1, "Of the list").data);
  EXPECT_EQ(list.genre_num, 1);
  EXPECT_EQ(list.country_num, 2);

  load(channel_file().group(GROUP_COUNTRY, 1, "Of the list").data);
  EXPECT_EQ(list.genre_num, 2);
  EXPECT_EQ(list.country_num, 1);
}

TEST_F(LoadedGroups, AreReportedWhenTheirFilesAreMissing) {
  const log_capture log(0);

  EXPECT_EQ(load(channel_file().data), 10);

  EXPECT_EQ(log.writes(), (lines{no_genres, no_countries}));
}

TEST_F(LoadedGroups, AreNotLookedForWhenTheTablesAreFilled) {
  const log_capture log(0);

  load(file_with_tables().data);

  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(LoadedGroups, ComeAlsoWithoutAChannelFile) {
  write_genres(3);
  write_countries(4);

  EXPECT_EQ(load_named("missing.dat"), 1);
  EXPECT_EQ(list.genre_num, 3);
  EXPECT_EQ(list.country_num, 4);
}

TEST_F(LoadedGroups, ComeAlsoWithAShortChannelFile) {
  write_genres(3);
  write_countries(4);

  EXPECT_EQ(load(file_with_tables().set(list_field::network_num, 2, 1).data), -1);
  EXPECT_EQ(list.genre_num, 3);
  EXPECT_STREQ(list.genre[0].name, "Genre 0");
  EXPECT_EQ(list.country_num, 4);
}

TEST_F(LoadedGroups, StayEmptyWhenAFileIsOneByteShort) {
  write_file(path("country.dat"), side_file(200, 9, "Country").substr(0, 20'801));
  write_file(path("genre.dat"), side_file(50, 9, "Genre").substr(0, 5'201));
  const log_capture log(0);

  EXPECT_EQ(load(channel_file().data), 10);

  EXPECT_EQ(list.genre_num, 0);
  EXPECT_EQ(list.genre[0].id, 0);
  EXPECT_EQ(list.country_num, 0);
  EXPECT_EQ(list.country[0].id, 0);
  EXPECT_EQ(
      log.writes(),
      (lines{"ERROR: load_group_list:# Fail to read the genre to '" + path("genre.dat") + "' size 5200 \n",
             "ERROR: load_group_list:# Fail to read the country to '" + path("country.dat") + "' size 20800 \n"}));
}

TEST_F(LoadedGroups, StayEmptyWhenAFileHoldsNoWholeCount) {
  write_file(path("genre.dat"), "\x01");
  write_file(path("country.dat"), "");
  const log_capture log(0);

  EXPECT_EQ(load(channel_file().data), 10);

  EXPECT_EQ(list.genre_num, 0);
  EXPECT_EQ(log.writes().at(0),
            "ERROR: load_group_list:# Fail to read the genre to '" + path("genre.dat") + "' size 2 \n");
  EXPECT_EQ(log.writes_with("country").at(0),
            "ERROR: load_group_list:# Fail to read the country to '" + path("country.dat") + "' size 2 \n");
}

TEST_F(LoadedGroups, IgnoreBytesBehindTheTable) {
  write_file(path("genre.dat"), side_file(50, 3, "Genre") + "more");

  load(channel_file().data);

  EXPECT_EQ(list.genre_num, 3);
}

TEST_F(LoadedGroups, AreCountedWithinTheirTable) {
  struct {
    int count;
    int genres;
    int countries;
  } const cases[] = {{-1, 0, 0},     {0, 0, 0},      {50, 50, 50},    {51, 50, 51},
                     {200, 50, 200}, {201, 50, 200}, {32767, 50, 200}};
  for (const auto &[count, genres, countries] : cases) {
    write_file(path("genre.dat"), side_file(50, count, "Genre"));
    write_file(path("country.dat"), side_file(200, count, "Country"));
    const log_capture log(0);

    load(channel_file().data);

    EXPECT_EQ(list.genre_num, genres);
    EXPECT_EQ(list.country_num, countries);
    lines expected;
    for (const auto &[kind, taken] : {std::pair{2, genres}, std::pair{4, countries}}) {
      if (taken != count) {
        expected.push_back("ERROR: load_group_list:# group list " + std::to_string(kind) + " counts " +
                           std::to_string(count) + ", taken as " + std::to_string(taken) + "\n");
      }
    }
    EXPECT_EQ(log.writes(), expected) << count;
  }
}

// Genres are saved under a name that ends in a newline; that file is not the one that is loaded.
TEST_F(LoadedGroups, DoNotComeFromTheFileWithANewlineInItsName) {
  write_file(path("genre.dat\n"), side_file(50, 3, "Genre"));
  const log_capture log(0);

  load(channel_file().data);

  EXPECT_EQ(list.genre_num, 0);
  EXPECT_EQ(log.writes(), (lines{no_genres, no_countries}));
}

TEST_F(LoadedGroups, CarryTheBytesOfUnusedSlots) {
  auto file = side_file(50, 1, "Genre");
  file.at(file.size() - 1) = '\x7F';
  file.at(2) = '\x11';
  write_file(path("genre.dat"), file);

  load(channel_file().data);

  EXPECT_EQ(list.genre[49].name[97], '\x7F');
  EXPECT_EQ(list.genre[0].reserved_0, 0x11);
}

TEST_F(LoadedGroups, AreNotReadFromADirectory) {
  std::filesystem::create_directory(path("genre.dat"));
  write_countries(1);
  const log_capture log(0);

  EXPECT_EQ(load(channel_file().data), 10);

  EXPECT_EQ(list.genre_num, 0);
  EXPECT_EQ(list.country_num, 1);
  EXPECT_EQ(log.writes().at(0),
            "ERROR: load_group_list:# Fail to read the genre to '" + path("genre.dat") + "' size 2 \n");
}

}  // namespace
