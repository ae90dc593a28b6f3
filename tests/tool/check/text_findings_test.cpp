// Findings in texts: character tables, ends and lengths of names. Each in a file that has that one fault.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tool/check/findings_host.h"

namespace {

using namespace findings_test;

constexpr const char *no_length = "none: the name is shown up to its zero byte";

using CheckTexts = test_support::store_test;

// The first text of the second service, with a length of its own.
findings found_in_name(const bytes &name, std::size_t length) {
  channel_file file = sound_file();
  file.data.replace(second_service + service_field::name, 6, bytes(6, '\0'));
  file.data.replace(second_service + service_field::name, name.size(), name);
  file.set_last(record_kind::service, service_field::name_len, 2, length);
  findings found = found_in(file);
  for (finding &each : found) {
    EXPECT_EQ(each.offset, second_service + service_field::name);
  }
  return found;
}

std::vector<std::string_view> kinds_of(const findings &found) {
  std::vector<std::string_view> kinds;
  for (const finding &each : found) {
    kinds.push_back(each.kind);
  }
  return kinds;
}

using kind_list = std::vector<std::string_view>;

TEST_F(CheckTexts, TextsOfKnownTablesAreSound) {
  const bytes sound[] = {"Films",       "K\xC3\xB6ln", "K\xC8oln", "\x05\xE0\xFF", bytes("\x10\0\x02\xE4", 4),
                         "\x15\xC3\xB6"};
  for (const bytes &text : sound) {
    EXPECT_EQ(found_in_name(text, text.size()), findings{}) << text;
  }
}

TEST_F(CheckTexts, TextsOfNoKnownTableAreFound) {
  EXPECT_EQ(kinds_of(found_in_name("K\xA6ln", 4)), kind_list{"invalid-text"});
  EXPECT_EQ(kinds_of(found_in_name("\x15K\xF6ln", 5)), kind_list{"invalid-text"});
  EXPECT_EQ(kinds_of(found_in_name("\x10\x01\x02\xE4", 4)), kind_list{"invalid-text"});
  EXPECT_EQ(kinds_of(found_in_name("\x1F\x01K", 3)), kind_list{"invalid-text"});
  EXPECT_EQ(kinds_of(found_in_name("\x0CK", 2)), kind_list{"unknown-character-table"});
  EXPECT_EQ(kinds_of(found_in_name("\x16K", 2)), kind_list{"unknown-character-table"});
}

TEST_F(CheckTexts, ControlCharactersInNamesAreFound) {
  const bytes with_controls[] = {
      "Ne\x1B[2J", "Ne\nws", "Ne\x7Fs", "Ne\xC2\x9Bs", "\x05Ne\x9Bs", bytes("\x11\0N\0\x1B", 5), "\x15N\xEE\x82\x9Bs"};
  for (const bytes &text : with_controls) {
    EXPECT_EQ(kinds_of(found_in_name(text, text.size())), kind_list{"control-character"}) << text;
  }
  EXPECT_EQ(
      found_in_name("Ne\nws", 5),
      (findings{{second_service + service_field::name, severity::warning, "control-character",
                 "the name of service \"Ne ws\" (net 1, network 1, ts 100, 11000000 H, service 2) holds a control "
                 "character",
                 "what the receiver shows in its place is its own choice; a program that prints the name as it is "
                 "obeys it"}}));
}

TEST_F(CheckTexts, MarksOfEmphasisAndLineBreaksAreSound) {
  for (const bytes &text :
       {bytes("\x05\x86Ne\x87ws"), bytes("\x05Ne\x8Aws"), bytes("\x15\xEE\x82\x86Ne\xEE\x82\x87")}) {
    EXPECT_EQ(found_in_name(text, text.size()), findings{}) << text;
  }
}

TEST_F(CheckTexts, OverridesOfDirectionInNamesAreFound) {
  const bytes turned[] = {"\xE2\x80\xAEsweN", "Ne\xE2\x80\xAAws", "Ne\xE2\x81\xA6ws", "\x15Ne\xE2\x81\xA9ws",
                          bytes("\x11\x20\x2E\0N", 5)};
  for (const bytes &text : turned) {
    EXPECT_EQ(kinds_of(found_in_name(text, text.size())), kind_list{"direction-override"}) << text;
  }
  // The marks that Arabic and Hebrew names are written with turn nothing.
  EXPECT_EQ(found_in_name("\xD7\xA2\xE2\x80\x8F", 5), findings{});
}

TEST_F(CheckTexts, InvalidTextInGroupsAndNetworksIsFound) {
  channel_file file = sound_file();
  file.data[group_place(GROUP_PROVIDER).array + group_field::name + 1] = '\x1B';
  file.data[first_network + network_field::network_name] = '\xA6';

  EXPECT_EQ(kinds_of(found_in(file)), (kind_list{"control-character", "invalid-text"}));
}

TEST_F(CheckTexts, ANameThatFillsItsFieldIsANote) {
  const bytes full(96, 'x');

  const findings meant = found_in_name(full, 96);
  const findings cut = found_in_name(full, 95);

  ASSERT_EQ(kinds_of(meant), kind_list{"unterminated-text"});
  EXPECT_EQ(meant[0].level, severity::note);
  EXPECT_EQ(kinds_of(cut), (kind_list{"unterminated-text", "wrong-text-length"}));
  EXPECT_EQ(cut[0].level, severity::warning);
  EXPECT_EQ(found_in_name(bytes(95, 'x'), 95), findings{});
}

TEST_F(CheckTexts, ALengthThatDiffersIsANote) {
  EXPECT_EQ(
      found_in_name("Films", 6),
      (findings{{second_service + service_field::name, severity::note, "wrong-text-length",
                 "the name of service " + std::string(films_text) + " has 5 bytes, its length says 6", no_length}}));
}

TEST_F(CheckTexts, AServiceWithoutANameIsANote) { EXPECT_EQ(kinds_of(found_in_name("", 0)), kind_list{"no-name"}); }

TEST_F(CheckTexts, AProviderWithAWrongLengthIsNotFoundByItsName) {
  const std::size_t provider = group_place(GROUP_PROVIDER).array;
  channel_file file = sound_file();

  EXPECT_EQ(found_in(file.set(provider + group_field::name_len, 2, 3)),
            (findings{{provider + group_field::name, severity::warning, "wrong-text-length",
                       "the name of provider \"Free\" (id 1) has 4 bytes, its length says 3",
                       "searches for a provider by its name compare the length: this one is not found, and a channel "
                       "search adds it a second time"}}));
}

TEST_F(CheckTexts, ANetworksNameMayFillItsField) {
  channel_file file = sound_file();
  file.data.replace(first_network + network_field::network_name, 64, bytes(64, 'n'));

  const findings found = found_in(file);

  ASSERT_EQ(kinds_of(found), kind_list{"unterminated-text"});
  EXPECT_EQ(found[0].offset, first_network + network_field::network_name);
}

}  // namespace
