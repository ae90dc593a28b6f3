// The settings and the group tables of a repaired list: what is carried over, what keeps its default, and counts that
// lie outside their tables.
#include <algorithm>

#include "support/log_capture.h"
#include "support/repair_test.h"

namespace {

namespace group_field = test_support::group_field;
namespace list_field = test_support::list_field;
using test_support::array_place;
using test_support::bytes;
using test_support::channel_file;
using test_support::log_capture;
using lines = std::vector<std::string>;

// Every byte of the list is set; no view and no group table counts anything.
channel_file filled_file() {
  channel_file file;
  std::fill(file.data.begin(), file.data.end(), '\x5A');
  file.set(list_field::network_num, 2, 0);
  for (const std::vector<array_place> &places : {test_support::view_places(), test_support::group_places()}) {
    for (const array_place &place : places) {
      file.set(place.count, 2, 0);
    }
  }
  return file.set(list_field::vch_type, 2, 0);
}

class RepairedSettings : public test_support::repair_test {};

TEST_P(RepairedSettings, AreThoseOfTheFile) {
  ASSERT_EQ(repair(filled_file()
                       .set(list_field::use_group_list, 1, 6)
                       .set(list_field::service_type, 1, 0x87)
                       .set(list_field::net_index, 1, 0x88)
                       .set(list_field::sub_group_id, 2, 0x898A)),
            0);

  EXPECT_EQ(list.use_group_list, 6);
  EXPECT_EQ(list.service_type, static_cast<std::int8_t>(0x87));
  EXPECT_EQ(list.net_index, static_cast<std::int8_t>(0x88));
  EXPECT_EQ(list.sub_group_id, static_cast<std::int16_t>(0x898A));
}

TEST_P(RepairedSettings, TakeTheTunerFromVersionNineOnly) {
  for (const int tuner : {0, 1, 127, 128, 255}) {
    ASSERT_EQ(repair(filled_file().set(list_field::use_tuner, 1, static_cast<std::uint64_t>(tuner))), 0);

    EXPECT_EQ(list.use_tuner, GetParam().number == 9 ? static_cast<std::int8_t>(tuner) : -1);
  }
}

TEST_P(RepairedSettings, KeepVersionTypeAndBouquetOfAnEmptyList) {
  ASSERT_EQ(repair(filled_file()), 0);

  EXPECT_EQ(list.version, 10);
  EXPECT_EQ(list.ch_type, 0);
  EXPECT_EQ(list.bouquet_id, 0xFFFF);
}

TEST_P(RepairedSettings, AreAllThatIsCarriedOfAListWithoutGroupsViewsAndNetworks) {
  ASSERT_EQ(repair(filled_file()), 0);

  const bytes found = test_support::list_in_memory();
  init_channel_list();
  list.use_tuner = GetParam().number == 9 ? 0x5A : -1;
  list.use_group_list = list.service_type = list.net_index = 0x5A;
  list.sub_group_id = 0x5A5A;
  EXPECT_EQ(found, test_support::list_in_memory());
}

TEST_P(RepairedSettings, TakeTheViewCodeAsItIsAndSwitchNoView) {
  for (const int code : {0, 1, 2, 3, 4, 5, 9, 10, 29, 30, -1, 32'767, -32'768}) {
    const log_capture log(1);
    ASSERT_EQ(repair(filled_file().set(list_field::vch_type, 2, static_cast<std::uint64_t>(code))), 0);

    EXPECT_EQ(list.vch_type, code);
    EXPECT_EQ(list.cur_vch, list.vch);
    EXPECT_EQ(list.cur_vnumber, &list.vnumber);
    EXPECT_EQ(log.writes(), lines{});
  }
}

REPAIRED_FROM_EVERY_VERSION(RepairedSettings);

struct group_table {
  const group_st *groups;
  const std::int16_t *count;
};

group_table table_in_memory(int kind) {
  const channel_list_st &list = *get_channel_list();
  switch (kind) {
    case GROUP_PROVIDER:
      return {list.provider, &list.provider_num};
    case GROUP_GENRE:
      return {list.genre, &list.genre_num};
    case GROUP_COUNTRY:
      return {list.country, &list.country_num};
    default:
      return {list.favorite_group, &list.favorite_group_num};
  }
}

// A group of a file: no byte 0, no two groups of a table alike.
bytes old_group(int number) {
  bytes image(104, '\0');
  for (std::size_t i = 0; i < image.size(); ++i) {
    image[i] = static_cast<char>(1 + (static_cast<std::size_t>(number) * 13 + i * 7) % 255);
  }
  test_support::put(image, group_field::id, 2, static_cast<std::uint64_t>(number + 1000));
  return image;
}

// The same repaired: without the second byte and the last one of the name.
bytes repaired_group(int number) {
  bytes image = old_group(number);
  image[1] = image[103] = '\0';
  return image;
}

class RepairedGroups : public test_support::repair_test {
 protected:
  // Every slot of a table holds a group.
  int repair_table(const array_place &place, int count) {
    channel_file file;
    for (int i = 0; i < place.capacity; ++i) {
      file.data.replace(place.array + static_cast<std::size_t>(i) * 104, 104, old_group(i));
    }
    return repair(file.set(place.count, 2, static_cast<std::uint64_t>(count)));
  }

  static void expect_groups(const array_place &place, int count) {
    const group_table table = table_in_memory(place.code);
    EXPECT_EQ(*table.count, count) << place.code;
    for (int i = 0; i < place.capacity; ++i) {
      const bytes found(reinterpret_cast<const char *>(table.groups + i), sizeof(group_st));
      ASSERT_EQ(found, i < count ? repaired_group(i) : bytes(104, '\0')) << place.code << ' ' << i;
    }
  }
};

TEST_P(RepairedGroups, AreAsManyAsTheFileCounts) {
  for (const array_place &place : test_support::group_places()) {
    for (const int count : {0, 1, place.capacity - 1, place.capacity}) {
      const log_capture log(1);
      ASSERT_EQ(repair_table(place, count), 0);

      expect_groups(place, count);
      EXPECT_EQ(log.writes(), lines{});
    }
  }
}

TEST_P(RepairedGroups, HoldEveryFieldOfAGroup) {
  channel_file file;
  file.group(GROUP_GENRE, -2, std::string(98, 'n'))
      .set(list_field::genre, 2, 0x1234)
      .set(list_field::genre + group_field::name_len, 2, 0xFFFF);
  ASSERT_EQ(repair(file), 0);

  EXPECT_EQ(list.genre[0].reserved_0, 0x34);
  EXPECT_EQ(list.genre[0].id, -2);
  EXPECT_EQ(list.genre[0].name_len, -1);
  EXPECT_EQ(std::string(list.genre[0].name), std::string(97, 'n'));
}

TEST_P(RepairedGroups, AreTakenAsManyAsTheirTableHolds) {
  for (const array_place &place : test_support::group_places()) {
    // Favourite groups are counted in a signed byte.
    const bool is_byte = place.code == GROUP_FAV;
    for (const int count : {place.capacity + 1, is_byte ? 127 : 32'767, -1, is_byte ? -128 : -32'768}) {
      const int kept = count < 0 ? 0 : place.capacity;
      const log_capture log(0);

      ASSERT_EQ(repair_table(place, count), 0);

      expect_groups(place, kept);
      EXPECT_EQ(log.writes(), lines{"ERROR: repair_channel:# group list " + std::to_string(place.code) + " counts " +
                                    std::to_string(count) + ", taken as " + std::to_string(kept) + "\n"});
    }
  }
}

TEST_P(RepairedGroups, OfFavouritesAreCountedInTheLowByteOfTheirField) {
  const array_place &place = test_support::group_place(GROUP_FAV);
  const log_capture log(0);

  ASSERT_EQ(repair_table(place, 0x0102), 0);

  expect_groups(place, 2);
  EXPECT_EQ(log.writes(), lines{});
}

TEST_P(RepairedGroups, AreCutWithoutAWordBelowLevelZero) {
  const log_capture log(-1);

  ASSERT_EQ(repair_table(test_support::group_place(GROUP_COUNTRY), 201), 0);

  EXPECT_EQ(list.country_num, 200);
  EXPECT_EQ(log.writes(), lines{});
}

REPAIRED_FROM_EVERY_VERSION(RepairedGroups);

}  // namespace
