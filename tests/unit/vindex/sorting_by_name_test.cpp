// Sorting by name: case, the selector byte in front of a broadcast text, and where a name ends.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/store_builder.h"

namespace {

using namespace test_support;

class SortingByName : public store_test {
 protected:
  // Sorts services with these texts by name; gives their positions, counted from 1, in the new order.
  std::vector<int> order_of(const std::vector<std::string> &names) {
    reset_channel_list();
    services = fill_view(VIEW_ALL, static_cast<int>(names.size()));
    for (std::size_t i = 0; i < names.size(); ++i) {
      set_name(*services[i], names[i]);
    }
    EXPECT_EQ(sort_vch_type(SORT_CH_NAME, VIEW_ALL), 0);
    return service_ids(VIEW_ALL);
  }

  std::vector<channel_st *> services;
};

TEST_F(SortingByName, CaseDoesNotMatter) {
  EXPECT_EQ(order_of({"beta C", "ALPHA", "Beta a", "alphb", "BETA b"}), (std::vector<int>{2, 4, 3, 5, 1}));
}

TEST_F(SortingByName, LettersCompareAsLowerCase) {
  EXPECT_EQ(order_of({"A", "_"}), (std::vector<int>{2, 1}));
  EXPECT_EQ(order_of({"a", "_"}), (std::vector<int>{2, 1}));
}

TEST_F(SortingByName, ASelectorByteIsPassedOver) {
  EXPECT_EQ(order_of({"Beta", "\x05"
                              "Alpha"}),
            (std::vector<int>{2, 1}));
  EXPECT_EQ(order_of({"\x05"
                      "Beta",
                      "alpha"}),
            (std::vector<int>{2, 1}));
  EXPECT_EQ(order_of({"ALPHC",
                      "\x05"
                      "Alphb",
                      "alpha"}),
            (std::vector<int>{3, 2, 1}));
}

TEST_F(SortingByName, NamesThatDifferBySelectorAndCaseSortTogether) {
  // Either may come first.
  for (const std::vector<std::string> &names : std::vector<std::vector<std::string>>{{"Beta",
                                                                                      "\x05"
                                                                                      "Alpha",
                                                                                      "alpha"},
                                                                                     {"Beta", "alpha",
                                                                                      "\x05"
                                                                                      "Alpha"}}) {
    const std::vector<int> order = order_of(names);
    EXPECT_EQ(order[2], 1);
  }
}

TEST_F(SortingByName, BytesBelowASpaceAreSelectors) {
  EXPECT_EQ(order_of({"n", "\x1Fm", "l"}), (std::vector<int>{3, 2, 1}));
  EXPECT_EQ(order_of({"n", "\x01m", "l"}), (std::vector<int>{3, 2, 1}));
  EXPECT_EQ(order_of({"a", " z"}), (std::vector<int>{2, 1}));
}

TEST_F(SortingByName, OnlyOneSelectorIsPassedOver) {
  EXPECT_EQ(order_of({"a", "\x05\x05z"}), (std::vector<int>{2, 1}));
}

TEST_F(SortingByName, BytesFromTheUpperHalfAreNoSelectorsAndSortLast) {
  EXPECT_EQ(order_of({"\x80"
                      "a",
                      "z"}),
            (std::vector<int>{2, 1}));
  EXPECT_EQ(order_of({"\xFF", "\x80", "z"}), (std::vector<int>{3, 2, 1}));
}

TEST_F(SortingByName, AnEmptyNameSortsFirst) { EXPECT_EQ(order_of({"b", "", "a"}), (std::vector<int>{2, 3, 1})); }

TEST_F(SortingByName, AZeroInFrontIsPassedOverLikeASelector) {
  EXPECT_EQ(order_of({std::string("\0zebra", 6), "yak"}), (std::vector<int>{2, 1}));
}

TEST_F(SortingByName, AShorterNameSortsBeforeALongerOne) {
  EXPECT_EQ(order_of({"abc", "ab", "a"}), (std::vector<int>{3, 2, 1}));
}

TEST_F(SortingByName, NamesThatFillTheirFieldCompareToTheLastByte) {
  const std::string front(95, 'x');
  EXPECT_EQ(order_of({front + "b", front + "a", front}), (std::vector<int>{3, 2, 1}));
}

TEST_F(SortingByName, NothingBehindAFullFieldCounts) {
  // The bytes behind the field of the first are the greater ones; the last byte of the text decides.
  const std::string front(95, 'x');
  reset_channel_list();
  services = fill_view(VIEW_ALL, 2);
  for (std::size_t i = 0; i < 2; ++i) {
    set_name(*services[i], front + (i == 0 ? "B" : "a"));
    services[i]->name[0].reserved_97 = i == 0 ? 'a' : 'z';
    services[i]->name[0].name_len = 0x7A7A;
  }

  sort_vch_type(SORT_CH_NAME, VIEW_ALL);

  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{2, 1}));
}

TEST_F(SortingByName, BehindASelectorNinetySixBytesCount) {
  const std::string full = "\x05" + std::string(95, 'x');
  reset_channel_list();
  services = fill_view(VIEW_ALL, 2);
  for (std::size_t i = 0; i < 2; ++i) {
    set_name(*services[i], full);
    services[i]->name[0].reserved_97 = i == 0 ? 'b' : 'A';
    // What lies behind the 96 bytes says the opposite.
    services[i]->name[0].name_len = i == 0 ? 0x6161 : 0x7A7A;
  }

  sort_vch_type(SORT_CH_NAME, VIEW_ALL);

  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{2, 1}));
}

TEST_F(SortingByName, TheSecondNameDoesNotCount) {
  reset_channel_list();
  services = fill_view(VIEW_ALL, 2);
  set_name(*services[0], "b");
  set_name(*services[1], "a");
  services[0]->name[1].text[0] = 'a';
  services[1]->name[1].text[0] = 'b';

  sort_vch_type(SORT_CH_NAME, VIEW_ALL);

  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{2, 1}));
}

TEST_F(SortingByName, TheStoredLengthDoesNotCount) {
  reset_channel_list();
  services = fill_view(VIEW_ALL, 2);
  set_name(*services[0], "ab");
  set_name(*services[1], "aa");
  services[0]->name[0].name_len = 1;
  services[1]->name[0].name_len = 0;

  sort_vch_type(SORT_CH_NAME, VIEW_ALL);

  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{2, 1}));
}

TEST_F(SortingByName, TheNameIsThatOfTheEntrysOwnChannel) {
  services = fill_view(VIEW_ALL, 2);
  set_name(*services[0], "a");
  set_name(*services[1], "b");
  std::swap(list.vch[0].rch, list.vch[1].rch);

  sort_vch_type(SORT_CH_NAME, VIEW_ALL);

  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{2, 1}));
}

TEST_F(SortingByName, NamesAreNotChanged) {
  order_of({"\x05"
            "B",
            "a"});

  EXPECT_STREQ(services[0]->name[0].text, "\x05"
                                          "B");
  EXPECT_STREQ(services[1]->name[0].text, "a");
}

}  // namespace
