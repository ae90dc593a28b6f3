// Clearing a view: its count and its whole array, and nothing else.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class ViewClearing : public store_test {};

// Writes a pattern over every view of the list and returns the list as it then is.
std::unique_ptr<channel_list_st> scribble_over_views() {
  for (const view_case &each : every_view()) {
    std::memset(static_cast<void *>(get_virtual_channel_st(each.code)), 0xA5,
                sizeof(virtual_channel_st) * static_cast<std::size_t>(each.capacity));
    *get_virtual_channel_vnumber(each.code) = 3;
  }
  return std::make_unique<channel_list_st>(*get_channel_list());
}

// What a view must look like inside a copy of the list.
void clear_in_copy(channel_list_st &copy, const view_case &view) {
  const auto offset_of = [](const void *field) {
    return reinterpret_cast<const char *>(field) - reinterpret_cast<const char *>(get_channel_list());
  };
  char *bytes = reinterpret_cast<char *>(&copy);
  std::memset(bytes + offset_of(get_virtual_channel_st(view.code)), 0,
              sizeof(virtual_channel_st) * static_cast<std::size_t>(view.capacity));
  std::memset(bytes + offset_of(get_virtual_channel_vnumber(view.code)), 0, sizeof(std::int16_t));
}

TEST_F(ViewClearing, ZeroesTheCountAndTheWholeArray) {
  for (const view_case &each : every_view()) {
    scribble_over_views();

    EXPECT_EQ(init_vindex(each.code), 0) << int{each.code};

    EXPECT_EQ(*get_virtual_channel_vnumber(each.code), 0) << int{each.code};
    EXPECT_TRUE(slots_behind_count_are_zero(each.code, each.capacity)) << int{each.code};
  }
}

TEST_F(ViewClearing, LeavesEverythingElseAlone) {
  for (const view_case &each : every_view()) {
    const std::unique_ptr<channel_list_st> expected = scribble_over_views();
    if (each.code != 4) {
      clear_in_copy(*expected, each);
    }

    init_vindex(each.code);

    EXPECT_EQ(std::memcmp(&list, expected.get(), sizeof list), 0) << int{each.code};
  }
}

TEST_F(ViewClearing, TheWorkViewIsClearedAlone) {
  fill_unfiled(4, 2);
  fill_unfiled(0, 2);

  init_vindex(0);

  EXPECT_EQ(*get_virtual_channel_vnumber(4), 2);
}

TEST_F(ViewClearing, IsSilentForKnownCodes) {
  for (const view_case &each : every_view()) {
    EXPECT_EQ(writes_at(5, [&] { return init_vindex(each.code); }), lines{}) << int{each.code};
  }
}

TEST_F(ViewClearing, ReportsAnUnknownCodeAsAnErrorAndSucceeds) {
  for (const std::int8_t code : unknown_codes) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(init_vindex(code), 0); }),
              lines{"ERROR: init_vindex:# unknown vch_type=" + std::to_string(code) + "\n"});
    EXPECT_EQ(writes_at(-1, [&] { return init_vindex(code); }), lines{});
  }
}

TEST_F(ViewClearing, AnUnknownCodeClearsNothing) {
  const std::unique_ptr<channel_list_st> before = scribble_over_views();

  for (const std::int8_t code : unknown_codes) {
    init_vindex(code);
  }

  EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0);
  EXPECT_EQ(*get_virtual_channel_vnumber(4), 3);
}

}  // namespace
