// Channel files that count outside their arrays, have texts without an end, or are noise.
#include <algorithm>

#include "support/channel_file.h"
#include "support/invariants.h"
#include "support/log_capture.h"

namespace {

namespace list_field = test_support::list_field;
namespace network_field = test_support::network_field;
namespace service_field = test_support::service_field;
using test_support::array_place;
using test_support::channel_file;
using test_support::file_test;
using test_support::log_capture;
using test_support::record_kind;
using test_support::service_data;
using test_support::write_file;
using lines = std::vector<std::string>;

class CountOutsideItsArray : public file_test {
 protected:
  // Zeroed entries resolve to the one service, whose identity is zero, so that nothing but the counts is reported.
  static channel_file quiet_file() {
    channel_file file;
    file.network(0, 0, "Zero").transponder(0, 0, 0);
    file.service({.net_index = 0, .network_id = 0, .ts_id = 0, .frequency = 0, .service_id = 0});
    return file.group(GROUP_GENRE, 1, "News").group(GROUP_COUNTRY, 1, "Malta");
  }

  // Loads with a count and expects what is taken for it, and a line when that is another number.
  void expect_count(const array_place &place, const std::string &what, int count, int taken,
                    const std::int16_t &field) {
    expect_count(place, what, count, count, taken, field);
  }
  // The same where a field counts something else than what stands in it.
  void expect_count(const array_place &place, const std::string &what, int stored, int count, int taken,
                    const std::int16_t &field) {
    reset_channel_list();
    const auto file = quiet_file().set(place.count, 2, static_cast<std::uint64_t>(stored));
    const log_capture log(0);
    EXPECT_EQ(load(file.data), 10);
    EXPECT_EQ(field, taken) << what;
    lines expected;
    if (count != taken) {
      expected.push_back("ERROR: load_channel_internal:# " + what + " counts " + std::to_string(count) + ", taken as " +
                         std::to_string(taken) + "\n");
    }
    EXPECT_EQ(log.writes_with("load_channel_internal"), expected);
  }

  void expect_bounds(const array_place &place, const std::string &what, const std::int16_t &field) {
    expect_count(place, what, -32768, 0, field);
    expect_count(place, what, -1, 0, field);
    expect_count(place, what, 0, 0, field);
    expect_count(place, what, 1, 1, field);
    expect_count(place, what, place.capacity - 1, place.capacity - 1, field);
    expect_count(place, what, place.capacity, place.capacity, field);
    expect_count(place, what, place.capacity + 1, place.capacity, field);
    expect_count(place, what, 32767, place.capacity, field);
  }
};

TEST_F(CountOutsideItsArray, IsBroughtIntoEveryView) {
  for (const array_place &view : test_support::view_places()) {
    expect_bounds(view, "view " + std::to_string(view.code),
                  *get_virtual_channel_vnumber(static_cast<std::int8_t>(view.code)));
  }
}

// The work view is not part of a file.
TEST_F(CountOutsideItsArray, StaysAsItIsInTheWorkView) {
  *get_virtual_channel_vnumber(VIEW_WORK) = MAX_CHANNEL + 1;
  const log_capture log(0);

  EXPECT_EQ(load(quiet_file().data), 10);

  EXPECT_EQ(log.writes(), lines{});
  EXPECT_EQ(*get_virtual_channel_vnumber(VIEW_WORK), MAX_CHANNEL + 1);
}

TEST_F(CountOutsideItsArray, IsBroughtIntoEveryGroupTable) {
  expect_bounds(test_support::group_place(GROUP_PROVIDER), "group list 3", list.provider_num);
  expect_bounds(test_support::group_place(GROUP_GENRE), "group list 2", list.genre_num);
  expect_bounds(test_support::group_place(GROUP_COUNTRY), "group list 4", list.country_num);
}

// Compatibility: favourite groups are counted in the low byte of their field, signed; what else stands in it goes with
// the load.
TEST_F(CountOutsideItsArray, OfFavouriteGroupsIsTheLowByteOfItsField) {
  const array_place &table = test_support::group_place(GROUP_FAV);
  const struct {
    int stored, count, taken;
  } cases[] = {
      {0, 0, 0},        {1, 1, 1},       {19, 19, 19},    {20, 20, 20},    {21, 21, 20},          {127, 127, 20},
      {128, -128, 0},   {255, -1, 0},    {-1, -1, 0},     {0x0100, 0, 0},  {0x0102, 2, 2},        {0x0114, 20, 20},
      {0x0115, 21, 20}, {0x7FFF, -1, 0}, {-0x8000, 0, 0}, {-0x7FFE, 2, 2}, {-0x8000 + 20, 20, 20}};
  for (const auto &each : cases) {
    expect_count(table, "group list 6", each.stored, each.count, each.taken, list.favorite_group_num);
  }
}

TEST_F(CountOutsideItsArray, IsNotReportedBelowLevelZero) {
  const log_capture log(-1);

  load(quiet_file().set(list_field::vnumber, 2, 5001).data);

  EXPECT_EQ(log.writes(), lines{});
  EXPECT_EQ(list.vnumber, 5000);
}

TEST_F(CountOutsideItsArray, IsBroughtInBeforeTheViewBecomesCurrent) {

  load(quiet_file().set(list_field::tv_vnumber, 2, 0xFFFF).set(list_field::vch_type, 2, VIEW_TV).data);

  EXPECT_EQ(list.vch_type, VIEW_ALL);
  EXPECT_EQ(list.tv_vnumber, 0);
}

TEST_F(CountOutsideItsArray, OfGenresLetsTheSideFileIn) {
  write_file(path("genre.dat"), test_support::side_file(50, 2, "Genre"));

  load(quiet_file().set(list_field::genre_num, 2, 0xFFFF).data);

  EXPECT_EQ(list.genre_num, 2);
  EXPECT_STREQ(list.genre[1].name, "Genre 1");
}

class UnterminatedText : public file_test {};

TEST_F(UnterminatedText, OfANetworkEndsWithItsField) {
  channel_file file;
  file.network(1, 1, std::string(64, 'n')).set_last(record_kind::network, network_field::reserved_78, 2, 0x7878);
  const log_capture log(2);

  load(file.data);

  EXPECT_EQ(log.writes_with("network_name"),
            (lines{"ChannelAPI load_channel_internal:# net_index 1 tp_num 0 , network_name : " + std::string(64, 'n') +
                   " \n"}));
}

TEST_F(UnterminatedText, OfServicesIsSortedByItsField) {
  const service_data longer = {.service_id = 1, .name = std::string(96, 'b')};
  const service_data shorter = {.service_id = 2, .name = std::string(96, 'a')};
  channel_file file;
  file.service(longer).service(shorter).entry(VIEW_ALL, longer, 1).entry(VIEW_ALL, shorter, 2);

  load(file.data, SORT_CH_NAME);

  EXPECT_EQ(test_support::service_ids(VIEW_ALL), (std::vector<int>{2, 1}));
}

TEST_F(UnterminatedText, OfServicesAndGroupsIsPrintedWithinItsField) {
  channel_file file;
  file.service({.name = std::string(96, 's')}).set_last(record_kind::service, service_field::behind_name, 1, 'x');
  file.group(GROUP_PROVIDER, 1, std::string(98, 'p')).group(GROUP_GENRE, 1, "x").group(GROUP_COUNTRY, 1, "x");
  load(file.data);
  const log_capture log(2);

  print_channel_info(get_channel_st(1, 1, 100, 11'000'000, 1, 0));
  print_provider_info();

  EXPECT_EQ(log.writes_with("name: s"), (lines{"\t\t + name: " + std::string(96, 's') + "\n"}));
  EXPECT_EQ(log.writes_with("name: p"), (lines{"\t\t + id : 1 name: " + std::string(98, 'p') + " len : 98 \n"}));
}

class NoiseInPlaceOfAFile : public file_test {};

TEST_F(NoiseInPlaceOfAFile, OfOnesOnlyLoadsAsAnEmptyListOfVersionMinusOne) {
  channel_file file;
  std::ranges::fill(file.data, '\xFF');
  file.set(list_field::network_num, 2, 0);

  EXPECT_EQ(load(file.data), -1);

  EXPECT_EQ(list.version, -1);
  EXPECT_EQ(list.vnumber, 0);
  EXPECT_EQ(list.favorite_vnumber[19], 0);
  EXPECT_EQ(list.provider_num, 0);
  EXPECT_EQ(list.vch_type, VIEW_ALL);
  EXPECT_EQ(list.cur_vch, list.vch);
}

TEST_F(NoiseInPlaceOfAFile, OfEveryByteValueIsNeverReadOutsideARecord) {
  for (int byte = 0; byte < 256; ++byte) {
    const int version = load(test_support::bytes(470'000, static_cast<char>(byte)), SORT_CH_NAME);

    EXPECT_EQ(version, byte == 0 ? 0 : -1) << byte;
    EXPECT_EQ(list.network_num, 0) << byte;
    EXPECT_EQ(test_support::broken_invariant(), "") << byte;
    reset_channel_list();
  }
  EXPECT_EQ(load(test_support::channel_file().service({.service_id = 1}).data), CHANNEL_LIST_VERSION);
}

}  // namespace
