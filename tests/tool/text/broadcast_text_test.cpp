// Broadcast texts in every table of EN 300 468 as UTF-8.
#include "chlist/text/broadcast_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "chlist/text/utf8.h"

namespace {

using chlist::names_table;
using chlist::utf8_of;
using namespace std::string_view_literals;

TEST(BroadcastText, AByteBelow20InFrontNamesATable) {
  EXPECT_TRUE(names_table("\x01"));
  EXPECT_TRUE(names_table("\x1F"
                          "a"));
  EXPECT_FALSE(names_table(" a"));
  EXPECT_FALSE(names_table("\xE9"));
  EXPECT_FALSE(names_table(""));
}

TEST(BroadcastText, WithoutATableItStaysAsItIs) {
  EXPECT_EQ(utf8_of("A\xE9\n").text, "A\xE9\n");
  EXPECT_TRUE(utf8_of("A\xE9").is_whole);
}

TEST(BroadcastText, EveryTableBecomesUtf8) {
  const struct {
    std::string_view broadcast;
    const char *utf8;
  } cases[] = {
      {"\x01\xB0", "\xD0\x90"},         {"\x02\xC7", "\xD8\xA7"},         {"\x03\xC1", "\xCE\x91"},
      {"\x04\xE0", "\xD7\x90"},         {"\x05\xFD", "\xC4\xB1"},         {"\x06\xA1", "\xC4\x84"},
      {"\x07\xA1", "\xE0\xB8\x81"},     {"\x09\xC0", "\xC4\x84"},         {"\x0A\xD0", "\xC5\xB4"},
      {"\x0B\xA4", "\xE2\x82\xAC"},     {"\x10\0\x01\xE9"sv, "\xC3\xA9"}, {"\x10\0\x02\xA1"sv, "\xC4\x84"},
      {"\x10\0\x03\xA1"sv, "\xC4\xA6"}, {"\x10\0\x04\xA1"sv, "\xC4\x84"}, {"\x10\0\x05\xB0"sv, "\xD0\x90"},
      {"\x10\0\x06\xC7"sv, "\xD8\xA7"}, {"\x10\0\x07\xC1"sv, "\xCE\x91"}, {"\x10\0\x08\xE0"sv, "\xD7\x90"},
      {"\x10\0\x09\xFD"sv, "\xC4\xB1"}, {"\x11\x20\xAC", "\xE2\x82\xAC"}, {"\x12\xB0\xA1", "\xEA\xB0\x80"},
      {"\x13\xB0\xA1", "\xE5\x95\x8A"}, {"\x14\xA4\x40", "\xE4\xB8\x80"}, {"\x15\xC3\xA9", "\xC3\xA9"},
  };
  for (const auto &each : cases) {
    EXPECT_EQ(utf8_of(each.broadcast).text, each.utf8) << each.utf8;
    EXPECT_TRUE(utf8_of(each.broadcast).is_whole) << each.utf8;
  }
}

TEST(BroadcastText, ControlsBecomeBlanksOrGo) {
  EXPECT_EQ(utf8_of("\x05"
                    "A\x8A"
                    "B\x86"
                    "C\x87")
                .text,
            "A BC");
  EXPECT_EQ(utf8_of("\x05\x05"
                    "A\n")
                .text,
            " A ");
  EXPECT_EQ(utf8_of("\x05").text, "");
}

TEST(BroadcastText, WhatATableDoesNotHaveIsReplaced) {
  for (const std::string_view text : {"\x15"
                                      "A\xE9"
                                      "B"sv,
                                      "\x03"
                                      "A\xFF"
                                      "B"sv,
                                      "\x12"
                                      "A\xFF"
                                      "B"sv}) {
    EXPECT_EQ(utf8_of(text).text, "A\xEF\xBF\xBD"
                                  "B")
        << text;
    EXPECT_FALSE(utf8_of(text).is_whole) << text;
  }
  EXPECT_EQ(utf8_of("\x11\0A\0"sv).text, "A\xEF\xBF\xBD");
}

TEST(BroadcastText, OfAnUnknownTableTheBytesAreLeft) {
  for (const std::string_view text : {"\x08"
                                      "A\xE9"sv,
                                      "\x16"
                                      "A\xE9"sv,
                                      "\x1F\x01"
                                      "A\xE9"sv,
                                      "\x10\x01\x01"
                                      "A\xE9"sv}) {
    EXPECT_EQ(utf8_of(text).text, "A\xE9");
    EXPECT_FALSE(utf8_of(text).is_whole);
  }
  EXPECT_EQ(utf8_of("\x1F").text, "");
}

TEST(BroadcastText, ALongOneComesThroughWhole) {
  const std::string text(10'000, '\xA4');

  const chlist::plain_text made = utf8_of("\x0B" + text);

  EXPECT_EQ(made.text.size(), 30'000U);
  EXPECT_TRUE(chlist::is_utf8(made.text));
  EXPECT_TRUE(made.is_whole);
}

}  // namespace
