// Renaming a real channel by identity, which stores the length, and by position, which does not.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

constexpr std::uint16_t old_length = 10;

// Both ways of renaming the first service, and the length that each leaves behind.
struct way {
  const char *name;
  int (*rename)(std::uint8_t slot, const char *name, std::int16_t length);
  bool stores_length;
};

int by_identity(std::uint8_t slot, const char *name, std::int16_t length) {
  return rename_channel_info(1, 1, 100, 11'000'000, 1, 0, slot, name, length);
}

int by_position(std::uint8_t slot, const char *name, std::int16_t length) {
  return vtype_rename_channel_info(0, slot, name, length, VIEW_ALL);
}

constexpr way ways[] = {{"rename_channel_info", by_identity, true}, {"vtype_rename_channel_info", by_position, false}};

std::string text_of(const channel_st &service, int slot) {
  return {service.name[slot].text, sizeof service.name[slot].text};
}

std::string padded(std::string text) {
  text.resize(96, '\0');
  return text;
}

class Renaming : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    service = fill_view(VIEW_ALL, 1)[0];
    restore();
  }

  // Every byte of both slots set.
  void restore() const {
    std::memset(service->name, 'o', sizeof service->name);
    service->name[0].name_len = old_length;
    service->name[1].name_len = old_length;
  }

  channel_st *service = nullptr;
};

TEST_F(Renaming, ReplacesTheTextAndClearsTheRest) {
  for (const way &each : ways) {
    restore();

    EXPECT_EQ(writes_at(4, [&] { EXPECT_EQ(each.rename(0, "News", 4), 0); }), lines{}) << each.name;

    EXPECT_EQ(text_of(*service, 0), padded("News")) << each.name;
  }
}

TEST_F(Renaming, ByIdentityStoresTheLength) {
  by_identity(0, "News", 4);

  EXPECT_EQ(service->name[0].name_len, 4);
}

TEST_F(Renaming, ByPositionLeavesTheStoredLength) {
  by_position(0, "News", 4);

  EXPECT_EQ(service->name[0].name_len, old_length);
}

TEST_F(Renaming, TheOtherSlotAndTheBytesAroundTheTextStay) {
  for (const way &each : ways) {
    for (const std::uint8_t slot : {std::uint8_t{0}, std::uint8_t{1}}) {
      restore();
      const name_slot_st other = service->name[1 - slot];

      EXPECT_EQ(each.rename(slot, "News", 4), 0);

      EXPECT_EQ(text_of(*service, slot), padded("News")) << each.name;
      EXPECT_EQ(service->name[slot].name_len, each.stores_length ? 4 : old_length) << each.name;
      EXPECT_EQ(service->name[slot].reserved_0, 'o') << each.name;
      EXPECT_EQ(service->name[slot].reserved_97, 'o') << each.name;
      EXPECT_EQ(std::memcmp(&service->name[1 - slot], &other, sizeof other), 0) << each.name;
    }
  }
}

TEST_F(Renaming, LengthsFromOneToTheWholeField) {
  const std::string name(96, 'n');
  for (const way &each : ways) {
    for (const int length : {1, 2, 95, 96}) {
      restore();

      EXPECT_EQ(each.rename(0, name.data(), static_cast<std::int16_t>(length)), 0) << each.name << ' ' << length;

      EXPECT_EQ(text_of(*service, 0), padded(name.substr(0, static_cast<std::size_t>(length))));
      EXPECT_EQ(service->name[0].name_len, each.stores_length ? length : old_length);
    }
  }
}

TEST_F(Renaming, ALongerNameIsCutToTheField) {
  // Exactly as many bytes as may be read.
  const std::vector<char> name(96, 'n');
  for (const way &each : ways) {
    for (const int length : {97, 120, 32767}) {
      restore();

      EXPECT_EQ(each.rename(0, name.data(), static_cast<std::int16_t>(length)), 0) << each.name << ' ' << length;

      EXPECT_EQ(text_of(*service, 0), std::string(96, 'n'));
      EXPECT_EQ(service->name[0].reserved_97, 'o');
      EXPECT_EQ(service->name[0].name_len, each.stores_length ? 96 : old_length);
    }
  }
}

TEST_F(Renaming, ALengthBelowOneClearsTheNameAndFails) {
  for (const way &each : ways) {
    for (const int length : {0, -1, -32768}) {
      restore();

      EXPECT_EQ(each.rename(0, "News", static_cast<std::int16_t>(length)), -1) << each.name << ' ' << length;

      EXPECT_EQ(text_of(*service, 0), padded("")) << each.name;
      EXPECT_EQ(service->name[0].name_len, old_length) << each.name;
      EXPECT_EQ(text_of(*service, 1), std::string(96, 'o')) << each.name;
    }
  }
}

TEST_F(Renaming, BytesAreCopiedAsTheyAre) {
  const std::string name("\x05\0\xFF\x80 x", 6);
  for (const way &each : ways) {
    restore();

    EXPECT_EQ(each.rename(1, name.data(), 6), 0);

    EXPECT_EQ(text_of(*service, 1), padded(name)) << each.name;
  }
}

TEST_F(Renaming, AnUnknownSlotIsRefused) {
  for (const way &each : ways) {
    for (const int slot : {2, 3, 255}) {
      restore();
      const auto before = *service;

      EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(each.rename(static_cast<std::uint8_t>(slot), "News", 4), -1); }),
                lines{"ERROR: " + std::string(each.name) + ":# name slot " + std::to_string(slot) + " unknown\n"});
      EXPECT_EQ(writes_at(-1, [&] { return each.rename(static_cast<std::uint8_t>(slot), "News", 4); }), lines{});

      EXPECT_EQ(std::memcmp(service, &before, sizeof before), 0) << each.name;
    }
  }
}

TEST_F(Renaming, ANullNameIsRefusedAndTheOldOneStays) {
  for (const way &each : ways) {
    restore();

    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(each.rename(0, nullptr, 4), -1); }),
              lines{"ERROR: " + std::string(each.name) + ":# name is null\n"});
    EXPECT_EQ(writes_at(-1, [&] { return each.rename(0, nullptr, 4); }), lines{});

    EXPECT_EQ(text_of(*service, 0), std::string(96, 'o')) << each.name;
    EXPECT_EQ(service->name[0].name_len, old_length) << each.name;
  }
}

TEST_F(Renaming, ANullNameOfNoLengthClearsTheName) {
  for (const way &each : ways) {
    restore();

    EXPECT_EQ(each.rename(0, nullptr, 0), -1);

    EXPECT_EQ(text_of(*service, 0), padded("")) << each.name;
  }
}

TEST_F(Renaming, AChannelThatIsNotThereIsNotRenamed) {
  const channel_st before = *service;

  EXPECT_EQ(rename_channel_info(2, 1, 100, 11'000'000, 1, 0, 0, "News", 4), -1);
  EXPECT_EQ(rename_channel_info(1, 2, 100, 11'000'000, 1, 0, 0, "News", 4), -1);
  EXPECT_EQ(rename_channel_info(1, 1, 101, 0, 1, 0, 0, "News", 4), -1);
  EXPECT_EQ(rename_channel_info(1, 1, 100, 11'002'500, 1, 0, 0, "News", 4), -1);
  EXPECT_EQ(rename_channel_info(1, 1, 100, 11'000'000, 2, 0, 0, "News", 4), -1);
  EXPECT_EQ(rename_channel_info(1, 1, 100, 11'000'000, 1, 1, 0, "News", 4), -1);
  EXPECT_EQ(rename_channel_info(2, 1, 100, 11'000'000, 1, 0, 0, "News", 0), -1);

  EXPECT_EQ(std::memcmp(service, &before, sizeof before), 0);
}

TEST_F(Renaming, TheIdentityIsResolvedAsEverywhere) {
  EXPECT_EQ(rename_channel_info(1, 1, 101, 11'002'499, 1, 0, 0, "News", 4), 0);
  EXPECT_EQ(text_of(*service, 0), padded("News"));
  EXPECT_EQ(rename_channel_info(1, 1, 100, 0, 1, 1, 0, "Sport", 5), 0);
  EXPECT_EQ(text_of(*service, 0), padded("Sport"));
}

TEST_F(Renaming, PositionsWithoutChannelAreNotRenamed) {
  const channel_st before = *service;

  EXPECT_EQ(vtype_rename_channel_info(-1, 0, "News", 4, VIEW_ALL), -1);
  EXPECT_EQ(vtype_rename_channel_info(-32768, 0, "News", 4, VIEW_ALL), -1);
  EXPECT_EQ(vtype_rename_channel_info(1, 0, "News", 4, VIEW_ALL), -1);
  EXPECT_EQ(vtype_rename_channel_info(0, 0, "News", 4, VIEW_TV), -1);
  for (const std::int8_t code : unknown_codes) {
    EXPECT_EQ(vtype_rename_channel_info(0, 0, "News", 4, code), -1) << int{code};
  }

  EXPECT_EQ(std::memcmp(service, &before, sizeof before), 0);
}

TEST_F(Renaming, PositionsBehindTheArrayAreRefused) {
  for (const view_case &each : every_view()) {
    for (const int position : {each.capacity, 32767}) {
      EXPECT_EQ(
          writes_at(0,
                    [&] {
                      EXPECT_EQ(vtype_rename_channel_info(static_cast<std::int16_t>(position), 0, "News", 4, each.code),
                                -1);
                    }),
          lines{"ERROR: vtype_get_channel_by_vindex:# vindex " + std::to_string(position) + " outside the view\n"});
    }
  }
}

TEST_F(Renaming, AnyViewMayNameThePosition) {
  for (const view_case &each : every_view()) {
    const auto last = static_cast<std::int16_t>(each.capacity - 1);
    get_virtual_channel_st(each.code)[last] = entry_of(*service, 1);
    restore();

    EXPECT_EQ(vtype_rename_channel_info(last, 0, "News", 4, each.code), 0) << int{each.code};

    EXPECT_EQ(text_of(*service, 0), padded("News")) << int{each.code};
  }
}

TEST_F(Renaming, ThePositionIsResolvedFromItsIdentity) {
  channel_st *other = file_service({.service_id = 2});
  list.vch[0].rch = other;

  by_position(0, "News", 4);

  EXPECT_EQ(text_of(*service, 0), padded("News"));
  EXPECT_EQ(text_of(*other, 0), padded("Service"));
}

TEST_F(Renaming, NothingButTheNameChanges) {
  for (const way &each : ways) {
    restore();
    const channel_st before = *service;

    each.rename(0, "News", 4);

    channel_st renamed = *service;
    renamed.name[0] = before.name[0];
    EXPECT_EQ(std::memcmp(&renamed, &before, sizeof before), 0) << each.name;
  }
}

TEST_F(Renaming, ADestroyedListHoldsNothing) {
  destroy_channel_list();

  EXPECT_EQ(by_identity(0, "News", 4), -1);
  EXPECT_EQ(by_position(0, "News", 4), -1);
}

}  // namespace
