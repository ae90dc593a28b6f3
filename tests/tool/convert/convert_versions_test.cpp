// Files of versions 7, 8 and 9: what `chlist convert` makes of each, what it carries, what it has no place for and what
// it finds.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "chlist/json/json.h"
#include "tool/convert/convert_host.h"

namespace {

using namespace convert_test;

class ConvertVersion : public Convert, public ::testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(Earlier, ConvertVersion, ::testing::Values(7, 8, 9));

TEST_P(ConvertVersion, GivesAListOfTodayWithServicesViewsAndGroups) {
  const program_result result = convert(GetParam(), plain_list());

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.err, "");
  ASSERT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1, 2}));
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{1}));
  EXPECT_EQ(majors(VIEW_RADIO), (std::vector<int>{2}));
  EXPECT_EQ(service_ids(VIEW_FAVOURITE), (std::vector<int>{1}));
  EXPECT_STREQ(list.favorite_group[0].name, "Films");
  ASSERT_NE(list.vch[1].rch, nullptr);
  EXPECT_STREQ(list.vch[1].rch->name[0].text, "Music");
}

TEST_P(ConvertVersion, SaysWhatWasCarried) {
  const program_result result = convert(GetParam(), plain_list());

  const std::string version = std::to_string(GetParam());
  EXPECT_EQ(result.out, "new.dat: converted from version " + version +
                            ", 2 services\n"
                            "Carried:\n"
                            "  networks                                             1\n"
                            "  transponders                                         1\n"
                            "  services                                             2\n"
                            "  entries: ALL                                         2\n"
                            "  entries: TV                                          1\n"
                            "  entries: radio                                       1\n"
                            "  entries: favourites 1 \"Films\"                        1\n"
                            "  favourite groups                                     1\n");
}

TEST_P(ConvertVersion, IsReadFromTheFile) {
  const json report = converted_json(GetParam(), plain_list());

  EXPECT_EQ(report["version"], GetParam());
  EXPECT_EQ(report["services"], 2);
}

TEST_P(ConvertVersion, LeavesTheInputAsItIs) {
  write_old(GetParam(), plain_list());
  const std::string before = read_file(path("old.dat"));

  EXPECT_EQ(run({"convert", "old.dat", "new.dat"}).exit_code, 0);

  EXPECT_EQ(read_file(path("old.dat")), before);
  EXPECT_EQ(files(), (std::vector<std::string>{"new.dat", "old.dat"}));
}

TEST_P(ConvertVersion, RefusesAFileThatIsOneByteShort) {
  write_old(GetParam(), plain_list());
  fs::resize_file(path("old.dat"), fs::file_size(path("old.dat")) - 1);

  expect_refused({"convert", "old.dat", "new.dat"},
                 "old.dat: ends too early for a channel file of version " + std::to_string(GetParam()));
}

TEST_P(ConvertVersion, DropsAndNamesAServiceThatOccursTwice) {
  channel_file file = plain_list();
  file.service({.service_id = 2, .name = "Copy"});

  const program_result result = convert(GetParam(), file);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(
      result.err,
      "chlist: convert: old.dat: dropped, occurs twice: \"Copy\" (net 1, network 1, ts 100, 11000000 H, service 2)\n");
  EXPECT_TRUE(has_line(result.out, "  duplicate services                                   1")) << result.out;
  ASSERT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
  EXPECT_STREQ(list.vch[1].rch->name[0].text, "Music");
}

TEST_P(ConvertVersion, KeepsAndNamesAnEntryThatResolvesToNothing) {
  channel_file file = plain_list();
  file.entry(VIEW_USER, {.frequency = 12'000'000, .service_id = 9, .polarisation = 1}, 77);

  const program_result result = convert(GetParam(), file);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: convert: old.dat: resolves to no service: the USER view, position 1: number 77 "
                        "(net 1, network 1, ts 100, 12000000 V, service 9)\n");
  ASSERT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(majors(VIEW_USER), (std::vector<int>{77}));
}

TEST_P(ConvertVersion, CountsOutsideTheirArraysAreFindings) {
  channel_file file = plain_list();
  constexpr std::uint16_t minus_one = 0xFFFF;
  file.set(list_field::tv_vnumber, 2, minus_one)
      .set(test_support::view_place(VIEW_FAVOURITE + 1).count, 2, minus_one)
      .set(test_support::group_place(GROUP_GENRE).count, 2, MAX_GENRE + 1);

  const program_result result = convert(GetParam(), file);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: convert: old.dat: TV: counts -1, taken as 0\n"
                        "chlist: convert: old.dat: favourites 2: counts -1, taken as 0\n"
                        "chlist: convert: old.dat: genres: counts 51, taken as 50\n");
}

TEST_P(ConvertVersion, EmptyNetworksAndTranspondersAreNotCarried) {
  channel_file file = plain_list();
  file.transponder(200, 12'000'000, 1).network(2, 7, "Empty").transponder(300, 12'500'000, 0).network(3, 8, "Bare");

  const program_result result = convert(GetParam(), file);

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "  networks without services                            2")) << result.out;
  EXPECT_TRUE(has_line(result.out, "  transponders without services                        2")) << result.out;
  EXPECT_TRUE(has_line(result.out, "  transponders                                         1")) << result.out;
}

// What is lost in one list.
std::vector<std::string> lost_in(const json &report) {
  std::vector<std::string> lost;
  for (const json &loss : report["not_carried"].elements()) {
    lost.push_back(loss["what"].as_string());
  }
  return lost;
}

TEST_P(ConvertVersion, SettingsWithoutAPlaceAreNotCarried) {
  channel_file file = plain_list();
  file.set(list_field::ch_type, 1, 10).set(list_field::bouquet_id, 2, 5);

  EXPECT_EQ(lost_in(converted_json(GetParam(), file)), (std::vector<std::string>{"ch_type", "bouquet_id"}));
}

TEST_P(ConvertVersion, PositionsOfFavouritesAreNotCarried) {
  channel_file file = plain_list();
  file.entry(VIEW_FAVOURITE, music, 2, 1);

  const json report = converted_json(GetParam(), file);

  EXPECT_EQ(lost_in(report), (std::vector<std::string>{"favourite_positions"}));
  EXPECT_EQ(report["not_carried"][0]["count"], 1);
}

TEST_P(ConvertVersion, AProviderThatIsNotTheGenreIsNotCarried) {
  channel_file file = plain_list();
  file.set_last(record_kind::service, service_field::genre_id, 2, 3)
      .set_last(record_kind::service, service_field::provider_id, 2, 5);

  const json report = converted_json(GetParam(), file);

  EXPECT_EQ(lost_in(report), (std::vector<std::string>{"provider_ids"}));
  ASSERT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(list.vch[1].rch->provider_id, 3);
}

TEST_P(ConvertVersion, TagsAreThoseOfTheNetworkIndex) {
  channel_file file = plain_list();
  file.set(test_support::view_place(VIEW_TV).array + entry_field::vch_tag, 1, 1);

  EXPECT_EQ(lost_in(converted_json(GetParam(), file)), (std::vector<std::string>{"entry_tags"}));
}

TEST_F(Convert, TheTunerIsCarriedFromVersionNineAlone) {
  channel_file file = plain_list();
  file.set(list_field::use_tuner, 1, 1);

  EXPECT_EQ(lost_in(converted_json(9, file)), (std::vector<std::string>{}));
  EXPECT_EQ(lost_in(converted_json(8, file)), (std::vector<std::string>{"use_tuner"}));
  EXPECT_EQ(lost_in(converted_json(7, file)), (std::vector<std::string>{"use_tuner"}));
}

TEST_F(Convert, UserOrderKeysOfVersionNineAreNotCarried) {
  channel_file file = plain_list();
  file.set_last(record_kind::service, service_field::user_order_key, 2, 4);

  EXPECT_EQ(lost_in(converted_json(9, file)), (std::vector<std::string>{"user_order_keys"}));
}

}  // namespace
