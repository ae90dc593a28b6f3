// Findings in the list's own record: counts of views and tables, ids of groups and the current view. Each in a file
// that has that one fault.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tool/check/findings_host.h"

namespace {

using namespace findings_test;

using CheckSettings = test_support::store_test;

TEST_F(CheckSettings, CountsOutsideTheirArraysAreFoundInEveryViewAndTable) {
  std::vector<test_support::array_place> places = test_support::view_places();
  places.insert(places.end(), test_support::group_places().begin(), test_support::group_places().end());
  for (const test_support::array_place &place : places) {
    // Favourite groups are counted in a signed byte.
    const int most = place.count == group_place(GROUP_FAV).count ? 127 : 32767;
    for (const int count : {-1, place.capacity + 1, most}) {
      const findings found =
          found_of_kind(sound_file().set(place.count, 2, static_cast<std::uint64_t>(count)), "count-outside-array");

      ASSERT_EQ(found.size(), 1U) << place.code;
      EXPECT_EQ(found[0].offset, place.count);
      EXPECT_EQ(found[0].level, severity::error);
      EXPECT_EQ(found[0].consequence,
                "a load says so on an ERROR line and takes " + std::to_string(count < 0 ? 0 : place.capacity));
    }
    EXPECT_EQ(found_of_kind(sound_file().set(place.count, 2, static_cast<std::uint64_t>(place.capacity)),
                            "count-outside-array"),
              findings{});
  }
}

TEST_F(CheckSettings, TheTextOfACountNamesTheArray) {
  const findings view = found_of_kind(sound_file().set(view_place(10).count, 2, 41), "count-outside-array");
  const findings table = found_of_kind(sound_file().set(group_place(GROUP_GENRE).count, 2, 51), "count-outside-array");

  ASSERT_EQ(view.size(), 1U);
  EXPECT_EQ(view[0].what, "the favourites 1 \"Best\" view counts 41, its array holds 40");
  ASSERT_EQ(table.size(), 1U);
  EXPECT_EQ(table[0].what, "the table of genre records counts 51, its array holds 50");
}

TEST_F(CheckSettings, IdsOfGroupsOccurOnceAndAreNotNegative) {
  const std::size_t second = group_place(GROUP_FAV).array + test_support::group_size + 2;

  EXPECT_EQ(found_in(sound_file().group(GROUP_FAV, 0, "More")),
            (findings{{second, severity::warning, "duplicate-group-id",
                       "favourite group \"More\" has the id 0 of an earlier one",
                       "a search by id stops at the first one: edits of this group go there"}}));
  EXPECT_EQ(found_in(sound_file().group(GROUP_FAV, -1, "More")),
            (findings{{second, severity::warning, "negative-group-id", "favourite group \"More\" has the id -1",
                       "no operation gives such an id; -1 stands for no group"}}));
  EXPECT_EQ(found_in(sound_file().group(GROUP_FAV, 1, "More")), findings{});
}

// A load counts favourite groups in eight bits.
TEST_F(CheckSettings, TheFavouriteGroupsAreThoseThatALoadTakes) {
  const std::size_t at = group_place(GROUP_FAV).count;

  EXPECT_EQ(found_in(sound_file().set(at, 2, 0x0101)),
            (findings{{at, severity::note, "wide-group-count",
                       "the table of favourite group records counts 257, wider than a byte",
                       "a load takes its low byte, 1"}}));
}

TEST_F(CheckSettings, EntriesOfUncountedGroupsAreFound) {
  channel_file file = sound_file();
  file.set(group_place(GROUP_FAV).count, 2, 0);

  EXPECT_EQ(found_in(file), (findings{{view_place(10).count, severity::warning, "entries-without-group",
                                       "favourites 1 counts 2 in use, the table of groups only 0",
                                       "no menu shows these entries; they go when a group is created in their "
                                       "place"}}));
}

TEST_F(CheckSettings, TheCurrentViewExistsAndIsNotEmpty) {
  for (const int code : {-1, 4, 6, 9, 30}) {
    const findings found = found_in(sound_file().set(list_field::vch_type, 2, static_cast<std::uint64_t>(code)));
    EXPECT_EQ(found, (findings{{list_field::vch_type, severity::warning, "unknown-view",
                                "the current view has the code " + std::to_string(code) + ", which is none in a file",
                                "a load keeps the code and shows the entries of ALL"}}));
  }
  EXPECT_EQ(found_in(sound_file().set(list_field::vch_type, 2, VIEW_RADIO)),
            (findings{{list_field::vch_type, severity::warning, "empty-current-view",
                       "the current view, code 2, is empty", "a load makes the ALL view current"}}));
  EXPECT_EQ(found_in(sound_file().set(list_field::vch_type, 2, VIEW_TV)), findings{});
}

// A load hands the code on in eight bits.
TEST_F(CheckSettings, TheCurrentViewIsTheOneThatALoadTakes) {
  EXPECT_EQ(found_in(sound_file().set(list_field::vch_type, 2, 256 + VIEW_TV)),
            (findings{{list_field::vch_type, severity::note, "wide-view-code",
                       "the current view has the code 257, wider than a byte",
                       "a load takes its low byte and makes the view of code 1 current"}}));
  EXPECT_EQ(found_in(sound_file().set(list_field::vch_type, 2, 256 + VIEW_RADIO)),
            (findings{{list_field::vch_type, severity::warning, "empty-current-view",
                       "the current view, code 2, is empty", "a load makes the ALL view current"}}));
  EXPECT_EQ(found_in(sound_file().set(list_field::vch_type, 2, 256 + 30)),
            (findings{{list_field::vch_type, severity::warning, "unknown-view",
                       "the current view has the code 286, which is none in a file",
                       "a load keeps its low byte, 30, and shows the entries of ALL"}}));
}

TEST_F(CheckSettings, AnEmptyAllViewWithServicesIsAnError) {
  const findings found = found_of_kind(sound_file().set(view_place(VIEW_ALL).count, 2, 0), "empty-list");

  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].level, severity::error);
}

}  // namespace
