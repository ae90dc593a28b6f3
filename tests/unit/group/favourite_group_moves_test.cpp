// Moving favourite groups, compared with a plain rendering of the steps on a table with one slot more.
#include "support/favourite_test.h"

#include <random>

namespace {

using namespace test_support;

constexpr int empty_slot = -1;

// The table as the numbers of the groups in its slots; the slot past the end is only there for the shift up.
using slot_order = std::vector<int>;

slot_order order_of(int num) {
  slot_order slots(MAX_FAV + 1, empty_slot);
  for (int i = 0; i < num; ++i) {
    slots[static_cast<std::size_t>(i)] = i;
  }
  return slots;
}

void move_by_steps(slot_order &slots, int num, int dest, int src) {
  const auto at = [&slots](int index) { return slots.begin() + index; };
  const int saved = *at(src);
  std::move(at(src + 1), at(num), at(src));
  std::move_backward(at(dest), at(num), at(num + 1));
  *at(dest) = saved;
}

group_st record_of(int group) {
  group_st record = named_group("Group " + std::to_string(group));
  record.reserved_0 = static_cast<std::uint16_t>(0xA000 + group);
  record.id = static_cast<std::int16_t>(group);
  return record;
}

constexpr int entries_of(int group) { return group * 2 + 1; }

virtual_channel_st entry_at(int group, int position) { return unfiled_entry(group * 100 + position); }

class FavouriteGroupMoves : public favourite_test {
 protected:
  void fill_table(int num) {
    for (int slot = 0; slot < MAX_FAV; ++slot) {
      write(slot, slot < num ? slot : empty_slot);
    }
    list.favorite_group_num = static_cast<std::int16_t>(num);
  }
  void write(int slot, int group) {
    list.favorite_group[slot] = group == empty_slot ? group_st{} : record_of(group);
    init_vindex(view_of(slot));
    for (int i = 0; group != empty_slot && i < entries_of(group); ++i) {
      append_entry(view_of(slot), entry_at(group, i));
    }
  }
  bool holds(int slot, int group) {
    if (group == empty_slot) {
      return is_empty_slot(slot);
    }
    if (!same_bytes(list.favorite_group[slot], record_of(group)) || list.favorite_vnumber[slot] != entries_of(group)) {
      return false;
    }
    for (int i = 0; i < entries_of(group); ++i) {
      if (!same_bytes(list.favorite_vch[slot][i], entry_at(group, i))) {
        return false;
      }
    }
    return slots_behind_count_are_zero(view_of(slot), MAX_FAV_NUM);
  }
  ::testing::AssertionResult holds_all(const slot_order &expected) {
    for (int slot = 0; slot < MAX_FAV; ++slot) {
      if (!holds(slot, expected[static_cast<std::size_t>(slot)])) {
        return ::testing::AssertionFailure()
               << "slot " << slot << " does not hold group " << expected[static_cast<std::size_t>(slot)];
      }
    }
    return ::testing::AssertionSuccess();
  }
};

int move(int dest, int src) {
  return move_fav_ch_group(static_cast<std::int16_t>(dest), static_cast<std::int16_t>(src));
}

TEST_F(FavouriteGroupMoves, ShiftTheGroupsBetween) {
  fill_table(5);

  EXPECT_EQ(move(3, 1), 0);
  EXPECT_EQ(group_ids(), (std::vector<int>{0, 2, 3, 1, 4}));

  EXPECT_EQ(move(0, 4), 0);
  EXPECT_EQ(group_ids(), (std::vector<int>{4, 0, 2, 3, 1}));
}

TEST_F(FavouriteGroupMoves, MoveAllThreePartsOfEveryGroup) {
  for (int num = 1; num <= MAX_FAV; ++num) {
    for (int dest = 0; dest < num; ++dest) {
      for (int src = 0; src < num; ++src) {
        fill_table(num);
        slot_order expected = order_of(num);
        move_by_steps(expected, num, dest, src);

        ASSERT_EQ(move(dest, src), 0);

        ASSERT_TRUE(holds_all(expected)) << num << " groups, " << src << " to " << dest;
        ASSERT_EQ(list.favorite_group_num, num);
      }
    }
  }
}

TEST_F(FavouriteGroupMoves, FollowEachOther) {
  std::mt19937 random(20'240'501);
  const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  for (const int num : {2, 7, 19, 20}) {
    fill_table(num);
    slot_order expected = order_of(num);
    for (int i = 0; i < 100; ++i) {
      const int dest = below(num);
      const int src = below(num);
      move_by_steps(expected, num, dest, src);

      ASSERT_EQ(move(dest, src), 0);

      ASSERT_TRUE(holds_all(expected)) << num << " groups, " << src << " to " << dest << " at step " << i;
    }
  }
}

// Compatibility: the slot behind the last group receives a copy of the group that was last.
TEST_F(FavouriteGroupMoves, LeaveACopyOfTheLastGroupBehindIt) {
  fill_table(3);

  move(0, 0);

  EXPECT_TRUE(holds(3, 2));
  EXPECT_EQ(list.favorite_group_num, 3);
  EXPECT_EQ(get_fav_group_info(3), nullptr);
  EXPECT_TRUE(is_empty_slot(4));
}

TEST_F(FavouriteGroupMoves, AGroupCreatedOverTheCopyStartsEmpty) {
  fill_table(3);
  move(2, 0);
  ASSERT_EQ(list.favorite_vnumber[3], entries_of(2));

  EXPECT_EQ(create("News"), 3);

  EXPECT_EQ(get_fav_vch_number(3), 0);
  EXPECT_TRUE(slots_behind_count_are_zero(view_of(3), MAX_FAV_NUM));
  EXPECT_EQ(name_field(list.favorite_group[3]), padded_name("News"));
}

TEST_F(FavouriteGroupMoves, AFullTableIsMovedInPlace) {
  fill_table(20);
  list.vch_type = 1234;

  EXPECT_EQ(move(19, 0), 0);

  EXPECT_EQ(list.favorite_group[0].id, 1);
  EXPECT_EQ(list.favorite_group[18].id, 19);
  EXPECT_EQ(list.favorite_group[19].id, 0);
  // The fields behind the three arrays.
  EXPECT_EQ(list.favorite_group_num, 20);
  EXPECT_EQ(list.vch_type, 1234);
  EXPECT_TRUE(is_zero(list.user_vch[0]));
  EXPECT_EQ(list.favorite_vch[19][0].service_id, 0);
  EXPECT_EQ(list.favorite_vch[18][0].service_id, 1900);
}

TEST_F(FavouriteGroupMoves, IdsStayWithTheirGroups) {
  fill_table(4);

  move(0, 3);

  EXPECT_EQ(get_fav_index(3), 0);
  EXPECT_EQ(get_fav_index(0), 1);
  EXPECT_STREQ(get_fav_group_info_by_fav_id(3)->name, "Group 3");
}

TEST_F(FavouriteGroupMoves, AreSilent) {
  fill_table(4);

  EXPECT_EQ(writes_at(5, [] { return move(0, 3); }), lines{});
}

TEST_F(FavouriteGroupMoves, OutsideTheTableAreRefused) {
  for (const int num : {0, 1, 19, 20}) {
    fill_table(num);
    const std::string before = table();
    for (const int outside : {-32768, -1, num, 21, 32767}) {
      for (const auto &[dest, src] : {std::pair{outside, 0}, std::pair{0, outside}, std::pair{outside, outside}}) {
        const auto refused = [d = dest, s = src] { return move(d, s); };
        EXPECT_EQ(refused(), -1) << num << ' ' << dest << ' ' << src;
        EXPECT_EQ(writes_at(0, refused), lines{"ERROR: move_fav_ch_group:# group " + std::to_string(dest) + " or " +
                                               std::to_string(src) + " outside the favourites\n"});
        EXPECT_EQ(writes_at(-1, refused), lines{});
      }
    }
    EXPECT_EQ(table(), before) << num;
  }
}

}  // namespace
