// Which texts are UTF-8, and the mark in front of them.
#include "chlist/text/utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using chlist::folded;
using chlist::is_utf8;
using chlist::valid_utf8;
using chlist::width_of;
using chlist::without_byte_order_mark;

TEST(Utf8, CharactersOfEveryLengthAreIt) {
  for (const char *text : {"", "a", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                           "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "a\xC3\xA9z\xE2\x82\xAC"}) {
    EXPECT_TRUE(is_utf8(text)) << text;
  }
  EXPECT_TRUE(is_utf8(std::string_view("a\0b", 3)));
}

TEST(Utf8, OverlongCharactersSurrogatesAndPiecesAreNot) {
  for (const char *text :
       {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC2",
        "\xC2"
        "a",
        "\xC2\xC2", "\xE0\x9F\xBF", "\xE2\x82",
        "\xE2\x82"
        "a",
        "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF0\x90\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "a\xE9"}) {
    EXPECT_FALSE(is_utf8(text)) << text;
  }
}

TEST(Utf8, WhatIsNoCharacterIsReplacedByOne) {
  EXPECT_EQ(valid_utf8(""), "");
  EXPECT_EQ(valid_utf8("Łódź"), "Łódź");
  EXPECT_EQ(valid_utf8("a\xFF\xFE"
                       "b"),
            "a\uFFFD\uFFFDb");
  EXPECT_EQ(valid_utf8("a\xE4\xB8"
                       "b"),
            "a\uFFFDb");
  EXPECT_EQ(valid_utf8("\xF0\x9F\x98"), "\uFFFD");
  EXPECT_EQ(valid_utf8("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(valid_utf8("\xC0\xAF"), "\uFFFD\uFFFD");
}

TEST(Utf8, IsAsWideAsATerminalShowsIt) {
  EXPECT_EQ(width_of(""), 0U);
  EXPECT_EQ(width_of("News"), 4U);
  EXPECT_EQ(width_of("Łódź"), 4U);
  EXPECT_EQ(width_of("中央电视台"), 10U);
  EXPECT_EQ(width_of("e\u0301"), 1U);
  EXPECT_EQ(width_of("📺"), 2U);
  EXPECT_EQ(width_of("ไทย"), 3U);
  EXPECT_EQ(width_of("ที่"), 1U);
  EXPECT_EQ(width_of("हिन्दी"), 5U);
}

TEST(Utf8, FoldedTextHasNoCaseAndNoAccents) {
  EXPECT_EQ(folded("COMÉDIA"), "comedia");
  EXPECT_EQ(folded("Kırmızı"), "kırmızı");
  EXPECT_EQ(folded("İstanbul"), "istanbul");
  EXPECT_EQ(folded("ÉLŐ Ž"), "elo z");
  EXPECT_EQ(folded("e\u0301"), "e");
  EXPECT_EQ(folded("ЁЖ"), "еж");
  EXPECT_EQ(folded("ΕΛΛΆΔΑ"), "ελλαδα");
  EXPECT_EQ(folded("\xFF"), "\uFFFD");
}

TEST(Utf8, AMarkIsPassedOverOnce) {
  EXPECT_EQ(without_byte_order_mark("\xEF\xBB\xBF"
                                    "a"),
            "a");
  EXPECT_EQ(without_byte_order_mark("\xEF\xBB\xBF\xEF\xBB\xBF"), "\xEF\xBB\xBF");
  EXPECT_EQ(without_byte_order_mark("\xEF\xBB"), "\xEF\xBB");
  EXPECT_EQ(without_byte_order_mark(""), "");
}

}  // namespace
