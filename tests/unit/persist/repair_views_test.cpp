// The views of a repaired list: every entry field by field, tags from the network index, no pointers, and counts that
// lie outside their arrays.
#include <cstring>

#include "support/log_capture.h"
#include "support/repair_test.h"

namespace {

namespace entry_field = test_support::entry_field;
namespace list_field = test_support::list_field;
using test_support::array_place;
using test_support::bytes;
using test_support::channel_file;
using test_support::log_capture;
using test_support::service_data;
using lines = std::vector<std::string>;

// An entry of a file, every byte different from its neighbours.
bytes old_entry(std::size_t number) {
  bytes image(24, '\0');
  for (std::size_t i = 0; i < image.size(); ++i) {
    image[i] = static_cast<char>(1 + (number * 17 + i * 5) % 255);
  }
  return image;
}

// What the entry of a file comes back as: tag by the network index, and neither favourite id, reserved bytes nor
// pointer.
virtual_channel_st repaired_entry(const bytes &old) {
  virtual_channel_st entry = {};
  entry.vch_tag = static_cast<std::uint8_t>(old[6]) > 239 ? 1 : 0;
  entry.major_ch_num = static_cast<std::int16_t>(test_support::get(old, entry_field::major_ch_num, 2));
  entry.minor_ch_num = static_cast<std::int16_t>(test_support::get(old, entry_field::minor_ch_num, 2));
  entry.net_index = static_cast<std::uint8_t>(test_support::get(old, entry_field::net_index, 1));
  entry.frequency = static_cast<std::uint32_t>(test_support::get(old, entry_field::frequency, 4));
  entry.polarisation = static_cast<std::uint8_t>(test_support::get(old, entry_field::polarisation, 1));
  entry.service_id = static_cast<std::uint16_t>(test_support::get(old, entry_field::service_id, 2));
  entry.network_id = static_cast<std::uint16_t>(test_support::get(old, entry_field::network_id, 2));
  entry.ts_id = static_cast<std::uint16_t>(test_support::get(old, entry_field::ts_id, 2));
  return entry;
}

void expect_same(const virtual_channel_st &found, const virtual_channel_st &expected, std::size_t position) {
  ASSERT_EQ(std::memcmp(&found, &expected, offsetof(virtual_channel_st, rch)), 0) << position;
  ASSERT_EQ(found.rch, nullptr) << position;
}

class RepairedViews : public test_support::repair_test {
 protected:
  // Every slot of every view holds an entry. Made once: it is asked for often, and emulators are slow.
  static channel_file full_file() {
    static const channel_file made = [] {
      channel_file file;
      for (const array_place &view : test_support::view_places()) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(view.capacity); ++i) {
          file.data.replace(view.array + i * 24, 24, old_entry(i + view.array));
        }
      }
      return file;
    }();
    return made;
  }

  static void expect_entries(const array_place &place, int count) {
    const auto code = static_cast<std::int8_t>(place.code);
    ASSERT_EQ(*get_virtual_channel_vnumber(code), count) << place.code;
    const virtual_channel_st *entries = get_virtual_channel_st(code);
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
      expect_same(entries[i], repaired_entry(old_entry(i + place.array)), i);
    }
    EXPECT_TRUE(test_support::slots_behind_count_are_zero(code, place.capacity)) << place.code;
  }
};

// The work view is not part of a file.
TEST_P(RepairedViews, LeaveTheCountOfTheWorkViewToTheHost) {
  for (const std::int16_t count : {std::int16_t{-1}, std::int16_t{MAX_CHANNEL + 1}}) {
    *get_virtual_channel_vnumber(VIEW_WORK) = count;
    const log_capture log(0);

    ASSERT_EQ(repair(channel_file()), 0);

    EXPECT_EQ(log.writes_with("taken as"), lines{});
    EXPECT_EQ(*get_virtual_channel_vnumber(VIEW_WORK), count);
  }
}

TEST_P(RepairedViews, HoldWhatTheFileCounts) {
  for (const int short_of_full : {0, 1}) {
    channel_file file = full_file();
    for (const array_place &view : test_support::view_places()) {
      file.set(view.count, 2, static_cast<std::uint64_t>(view.capacity - short_of_full));
    }
    const log_capture log(1);

    ASSERT_EQ(repair(file), 0);

    EXPECT_EQ(log.writes(), lines{});
    for (const array_place &view : test_support::view_places()) {
      expect_entries(view, view.capacity - short_of_full);
    }
  }
}

TEST_P(RepairedViews, AreIndependentOfOneAnother) {
  for (const array_place &counted : test_support::view_places()) {
    ASSERT_EQ(repair(full_file().set(counted.count, 2, 1)), 0);

    for (const array_place &view : test_support::view_places()) {
      expect_entries(view, view.code == counted.code ? 1 : 0);
    }
  }
}

TEST_P(RepairedViews, AreTakenAsLongAsTheirArrays) {
  for (const array_place &view : test_support::view_places()) {
    for (const int count : {view.capacity + 1, 32'767, -1, -32'768}) {
      const int kept = count < 0 ? 0 : view.capacity;
      const channel_file file = full_file().set(view.count, 2, static_cast<std::uint64_t>(count));
      const log_capture log(0);

      ASSERT_EQ(repair(file), 0);

      expect_entries(view, kept);
      EXPECT_EQ(log.writes(), lines{"ERROR: repair_channel:# view " + std::to_string(view.code) + " counts " +
                                    std::to_string(count) + ", taken as " + std::to_string(kept) + "\n"});
    }
  }
}

TEST_P(RepairedViews, AreTaggedFromNetworkIndex240On) {
  const std::pair<int, int> tags[] = {{0, 0},   {1, 0},   {127, 0}, {128, 0}, {238, 0},
                                      {239, 0}, {240, 1}, {241, 1}, {255, 1}};
  for (const auto &[net_index, tag] : tags) {
    for (const int old_tag : {0, 1, 0x7F, 0xFF}) {
      channel_file file;
      for (const array_place &view : test_support::view_places()) {
        file.entry(view.code, {.net_index = static_cast<std::uint8_t>(net_index)}, 1);
        file.set(view.array, 1, static_cast<std::uint64_t>(old_tag));
      }

      ASSERT_EQ(repair(file), 0);

      for (const array_place &view : test_support::view_places()) {
        EXPECT_EQ(get_virtual_channel_st(static_cast<std::int8_t>(view.code))->vch_tag, tag) << net_index;
      }
    }
  }
}

TEST_P(RepairedViews, HoldNoFavouriteIds) {
  ASSERT_EQ(repair(channel_file().entry(VIEW_FAVOURITE, {}, 1, 255).entry(VIEW_FAVOURITE + 19, {}, 1, 1)), 0);

  EXPECT_EQ(list.favorite_vch[0][0].favorite_id, 0);
  EXPECT_EQ(list.favorite_vch[19][0].favorite_id, 0);
}

TEST_P(RepairedViews, AreNotLinked) {
  ASSERT_EQ(repair(channel_file().service({}).entry(VIEW_ALL, {}, 1).entry(VIEW_PROMOTION, {}, 1)), 0);

  EXPECT_NE(get_channel_st(1, 1, 100, 11'000'000, 1, 0), nullptr);
  EXPECT_EQ(list.vch[0].rch, nullptr);
  EXPECT_EQ(list.promo_vch[0].rch, nullptr);
}

TEST_P(RepairedViews, LeaveTheWorkViewAlone) {
  channel_st *service = test_support::file_service({});
  test_support::append_entry(VIEW_WORK, test_support::entry_of(*service, 77));

  ASSERT_EQ(repair(channel_file().entry(VIEW_ALL, {}, 1)), 0);

  EXPECT_EQ(test_support::majors(VIEW_WORK), std::vector<int>{77});
}

TEST_P(RepairedViews, AreLinkedWhenTheListIsSavedAndLoaded) {
  const service_data first = {.service_id = 1};
  const service_data second = {.net_index = 240, .ts_id = 5, .frequency = 12'000'000, .service_id = 2};
  channel_file file;
  file.service(first).service(second).entry(VIEW_ALL, first, 1).entry(VIEW_ALL, second, 2);
  file.entry(VIEW_TV, second, 7).entry(VIEW_USER, first, 8).entry(VIEW_FAVOURITE, second, 9);
  file.set(list_field::vch_type, 2, VIEW_TV)
      .group(GROUP_GENRE, 1, "News")
      .group(GROUP_COUNTRY, 1, "Malta")
      .group(GROUP_FAV, 1, "Mine");
  ASSERT_EQ(repair(file), 0);
  const log_capture log(1);

  ASSERT_EQ(save_channel("repaired.dat"), 1);
  reset_channel_list();
  ASSERT_EQ(load_named("repaired.dat"), 10);

  EXPECT_EQ(log.writes(), lines{});
  channel_st *second_service = get_channel_st(240, 1, 5, 12'000'000, 2, 0);
  ASSERT_NE(second_service, nullptr);
  EXPECT_EQ(list.vch[1].rch, second_service);
  EXPECT_EQ(list.favorite_vch[0][0].rch, second_service);
  EXPECT_EQ(list.user_vch[0].rch, get_channel_st(1, 1, 100, 11'000'000, 1, 0));
  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_EQ(get_channel(get_channel_index(7)), second_service);
}

REPAIRED_FROM_EVERY_VERSION(RepairedViews);

}  // namespace
