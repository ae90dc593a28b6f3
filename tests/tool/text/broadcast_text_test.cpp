// Broadcast texts in every table of EN 300 468 as UTF-8, by the cases that the Python module is tested against, too.
#include "chlist/text/broadcast_text.h"

#include <channel/records.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/text/utf8.h"

namespace {

using chlist::decode_text;
using chlist::decoded_text;
using chlist::encoded_text;
using chlist::names_table;
using chlist::table_name;
using namespace std::string_view_literals;

struct text_case {
  std::string field;
  bool is_whole = false;
  std::string text;
};

std::string bytes_of_hexadecimals(const std::string &digits) {
  std::string bytes;
  for (std::size_t at = 0; at + 1 < digits.size(); at += 2) {
    bytes += static_cast<char>(std::stoi(digits.substr(at, 2), nullptr, 16));
  }
  return bytes;
}

std::vector<text_case> text_cases() {
  std::ifstream file(CHANNEL_TESTS_DIR "/texts/broadcast_texts.txt");
  std::vector<text_case> cases;
  for (std::string line; std::getline(file, line);) {
    const std::size_t first = line.find('\t');
    const std::size_t second = line.find('\t', first + 1);
    if (first != std::string::npos && second != std::string::npos) {
      cases.push_back({bytes_of_hexadecimals(line.substr(0, first)),
                       line.substr(first + 1, second - first - 1) == "whole", line.substr(second + 1)});
    }
  }
  return cases;
}

TEST(BroadcastText, EveryCaseComesOutAsItShould) {
  const std::vector<text_case> cases = text_cases();
  ASSERT_GT(cases.size(), 90U);
  for (const text_case &each : cases) {
    const decoded_text made = decode_text(encoded_text(each.field));

    EXPECT_EQ(made.text, each.text);
    EXPECT_EQ(made.is_whole, each.is_whole) << each.text;
  }
}

TEST(BroadcastText, ItsBytesEndWhereItEnds) {
  EXPECT_EQ(encoded_text(""sv), "");
  EXPECT_EQ(encoded_text("A\0B"sv), "A");
  EXPECT_EQ(encoded_text("\x10\0\x02"
                         "A\0B"sv),
            "\x10\0\x02"
            "A"sv);
  EXPECT_EQ(encoded_text("\x11\0A\0\0\0B"sv), "\x11\0A"sv);
  EXPECT_EQ(encoded_text("\x11\x01\0\0A"sv), "\x11\x01\0\0A"sv);
}

TEST(BroadcastText, ItsEndIsSoughtWithinItsField) {
  for (const std::string_view field :
       {"\x10"sv, "\x10\0"sv, "\x10\0\x02"sv, "\x11"sv, "\x11\0"sv, "\x1F"sv, "\x1F\0"sv}) {
    EXPECT_LE(encoded_text(field).size(), field.size());
    EXPECT_EQ(decode_text(encoded_text(field)).text, "");
  }
}

TEST(BroadcastText, ANameIsThatOfItsField) {
  name_slot_st slot = {};
  std::ranges::copy("\x10\0\x02\xA3\xF3"
                    "d\xBC"sv,
                    slot.text);

  EXPECT_EQ(chlist::name_in(slot.text), "Łódź");
}

TEST(BroadcastText, AByteBelow20InFrontNamesATable) {
  EXPECT_TRUE(names_table("\x01"));
  EXPECT_TRUE(names_table("\x1F"
                          "a"));
  EXPECT_FALSE(names_table(" a"));
  EXPECT_FALSE(names_table("\xE9"));
  EXPECT_FALSE(names_table("\0a"sv));
  EXPECT_FALSE(names_table(""));
}

TEST(BroadcastText, TablesHaveNames) {
  EXPECT_EQ(table_name("News"), "");
  EXPECT_EQ(table_name("Com\xC3\xA9"
                       "dia"),
            "UTF-8");
  EXPECT_EQ(table_name("Caf\xC2"
                       "e"),
            "ISO-6937");
  EXPECT_EQ(table_name("\x05"
                       "K"),
            "ISO-8859-9");
  EXPECT_EQ(table_name("\x10\0\x02"
                       "K"sv),
            "ISO-8859-2");
  EXPECT_EQ(table_name("\x15"
                       "K"),
            "UTF-8 by name");
  EXPECT_EQ(table_name("\x16"
                       "K"),
            "table 0x16");
}

TEST(BroadcastText, IsCutAtTheEndOfACharacter) {
  using chlist::cut_text;
  EXPECT_EQ(cut_text("abc", 3), "abc");
  EXPECT_EQ(cut_text("abcd", 3), "abc");
  EXPECT_EQ(cut_text("ab\xC2"
                     "e",
                     3),
            "ab")
      << "ISO/IEC 6937: an accent and its letter";
  EXPECT_EQ(cut_text("\x05"
                     "ab\xC2"
                     "e",
                     4),
            "\x05"
            "ab\xC2")
      << "a letter in Latin-5";
  EXPECT_EQ(cut_text("ab\xC3\xA9", 3), "ab") << "UTF-8 without a name";
  EXPECT_EQ(cut_text("\x15"
                     "a\xE2\x82\xAC",
                     4),
            "\x15"
            "a")
      << "UTF-8 by name";
  EXPECT_EQ(cut_text("\x11"
                     "0a0b",
                     4),
            "\x11"
            "0a")
      << "two bytes each";
  EXPECT_EQ(cut_text("\x13"
                     "a\xB0\xA1\xB0\xA1",
                     5),
            "\x13"
            "a\xB0\xA1")
      << "one byte or two";
  EXPECT_EQ(cut_text("\x10", 0), "");
  EXPECT_EQ(cut_text("", 5), "");
}

TEST(BroadcastText, ALongOneComesThroughWhole) {
  const decoded_text made = decode_text("\x0B" + std::string(10'000, '\xA4'));

  EXPECT_EQ(made.text.size(), 30'000U);
  EXPECT_TRUE(chlist::is_utf8(made.text));
  EXPECT_TRUE(made.is_whole);
}

TEST(BroadcastText, AnyBytesBecomeUtf8InOneLine) {
  for (int selector = 0; selector < 256; ++selector) {
    for (int byte = 0; byte < 256; ++byte) {
      const char field[] = {static_cast<char>(selector), static_cast<char>(byte), static_cast<char>(255 - byte), 'A'};
      const std::string text = chlist::name_in(field);

      ASSERT_TRUE(chlist::is_utf8(text)) << selector << ' ' << byte;
      ASSERT_TRUE(std::ranges::all_of(text, [](char c) { return c < 0 || c >= ' '; })) << selector << ' ' << byte;
    }
  }
}

}  // namespace
