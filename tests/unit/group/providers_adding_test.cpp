// Registering providers: their order, the ids they get and what is kept of a record.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/providers.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;
using names = std::vector<std::string>;
using ids = std::vector<int>;

class ProvidersAdding : public store_test {};

TEST_F(ProvidersAdding, TheFirstProviderGetsId0) {
  EXPECT_EQ(add_provider("Alpha"), 0);

  EXPECT_EQ(get_provider_number(), 1);
  EXPECT_EQ(provider_names(), (names{"Alpha"}));
  EXPECT_EQ(provider_ids(), (ids{0}));
  EXPECT_TRUE(places_behind_providers_are_zero());
}

TEST_F(ProvidersAdding, NamesAreSortedAndIdsFollowArrival) {
  EXPECT_EQ(add_provider("beta"), 0);
  EXPECT_EQ(add_provider("Alpha"), 1);
  EXPECT_EQ(add_provider("gamma"), 2);

  EXPECT_EQ(provider_names(), (names{"Alpha", "beta", "gamma"}));
  EXPECT_EQ(provider_ids(), (ids{1, 0, 2}));
  EXPECT_TRUE(places_behind_providers_are_zero());
}

TEST_F(ProvidersAdding, AProviderIsInsertedAtEveryPlace) {
  const names present = {"b", "d", "f"};
  for (int place = 0; place <= 3; ++place) {
    reset_channel_list();
    add_providers(present);
    const std::string name = std::string("aceg").substr(static_cast<std::size_t>(place), 1);
    names expected = present;
    expected.insert(expected.begin() + place, name);
    ids expected_ids = {0, 1, 2};
    expected_ids.insert(expected_ids.begin() + place, 3);

    EXPECT_EQ(add_provider(name), 3) << name;

    EXPECT_EQ(provider_names(), expected) << name;
    EXPECT_EQ(provider_ids(), expected_ids) << name;
    EXPECT_TRUE(places_behind_providers_are_zero()) << name;
  }
}

TEST_F(ProvidersAdding, EqualNamesKeepTheOrderOfArrival) {
  add_providers({"abc", "ABC", "b", "aBc", "abc"});

  EXPECT_EQ(provider_names(), (names{"abc", "ABC", "aBc", "abc", "b"}));
  EXPECT_EQ(provider_ids(), (ids{0, 1, 3, 4, 2}));
}

TEST_F(ProvidersAdding, LettersCompareAsLowerCase) {
  add_providers({"A", "_", "b", "C", "1"});

  EXPECT_EQ(provider_names(), (names{"1", "_", "A", "b", "C"}));
}

TEST_F(ProvidersAdding, BytesOfTheUpperHalfSortLastAndAShorterNameFirst) {
  add_providers({"\xFF", "z", "ab", "\x80", "a", ""});

  EXPECT_EQ(provider_names(), (names{"", "a", "ab", "z", "\x80", "\xFF"}));
}

TEST_F(ProvidersAdding, TheNameEndsAtItsTerminatorWhateverItsLengthSays) {
  group_st longer = named_group("a");
  longer.name_len = 90;
  longer.name[2] = 'z';
  add_provider("A");

  EXPECT_EQ(add_provider_info(longer), 1);
  EXPECT_EQ(add_provider("a"), 2);

  EXPECT_EQ(provider_ids(), (ids{0, 1, 2}));
}

TEST_F(ProvidersAdding, TheSmallestFreeIdIsGiven) {
  add_providers({"a", "b", "c", "d", "e"});
  remove_provider_index(3);
  remove_provider_index(1);
  remove_provider_index(0);

  EXPECT_EQ(add_provider("z"), 0);
  EXPECT_EQ(add_provider("y"), 1);
  EXPECT_EQ(add_provider("x"), 3);
  EXPECT_EQ(add_provider("w"), 5);

  EXPECT_EQ(provider_ids(), (ids{2, 4, 5, 3, 1, 0}));
}

TEST_F(ProvidersAdding, TheIdOfARemovedProviderIsGivenAgain) {
  add_providers({"beta", "Alpha", "gamma"});
  remove_provider_index(1);

  EXPECT_EQ(add_provider("delta"), 0);

  EXPECT_EQ(provider_names(), (names{"Alpha", "delta", "gamma"}));
  EXPECT_EQ(provider_ids(), (ids{1, 0, 2}));
}

TEST_F(ProvidersAdding, TheIdInTheRecordIsIgnored) {
  EXPECT_EQ(add_provider_info(named_group("a", 77)), 0);
  EXPECT_EQ(add_provider_info(named_group("b", -5)), 1);
  EXPECT_EQ(add_provider_info(named_group("c", 0)), 2);

  EXPECT_EQ(provider_ids(), (ids{0, 1, 2}));
}

TEST_F(ProvidersAdding, EveryOtherByteOfTheRecordIsKept) {
  add_provider("m");
  group_st record = named_group("n", 1);
  record.reserved_0 = 0xA55A;
  record.name_len = 40;
  record.name[30] = 'Z';
  record.name[97] = '\x7F';

  add_provider_info(record);
  EXPECT_EQ(image_of(list.provider[1]), image_of(record));

  // Nor does a record change as it moves.
  add_provider("a");
  EXPECT_EQ(image_of(list.provider[2]), image_of(record));
}

TEST_F(ProvidersAdding, TheSameNameTwiceMakesTwoProviders) {
  EXPECT_EQ(add_provider("a"), 0);
  EXPECT_EQ(add_provider("a"), 1);

  EXPECT_EQ(get_provider_number(), 2);
}

TEST_F(ProvidersAdding, ANegativeNameLengthIsRefusedWithoutAWord) {
  add_provider("b");
  const std::string before = provider_table_image();
  for (const int length : {-1, -32768}) {
    group_st record = named_group("a");
    record.name_len = static_cast<std::int16_t>(length);
    int result = 0;

    EXPECT_EQ(writes_at(5, [&] { return result = add_provider_info(record); }), lines{}) << length;

    EXPECT_EQ(result, -1) << length;
    EXPECT_EQ(provider_table_image(), before) << length;
  }
}

TEST_F(ProvidersAdding, ANegativeNameLengthIsRefusedBeforeTheTablesLimit) {
  fill_providers(MAX_PROVIDER);
  group_st record = named_group("a");
  record.name_len = -1;

  EXPECT_EQ(writes_at(5, [&] { return add_provider_info(record); }), lines{});
}

TEST_F(ProvidersAdding, EveryOtherNameLengthIsTakenAsItStands) {
  int expected_id = 0;
  for (const int length : {0, 1, 96, 97, 98, 127, 128, 32767}) {
    group_st record = named_group(std::string(97, 'n'));
    record.name_len = static_cast<std::int16_t>(length);

    EXPECT_EQ(add_provider_info(record), expected_id) << length;

    EXPECT_EQ(list.provider[expected_id].name_len, length);
    EXPECT_STREQ(list.provider[expected_id].name, std::string(97, 'n').c_str());
    ++expected_id;
  }
}

TEST_F(ProvidersAdding, ThePlaceAndTheNameAreTracedAtLevel3WithoutAPrefix) {
  EXPECT_EQ(writes_at(3, [] { return add_provider("m"); }), lines{"add index 0 provider : m \n"});
  EXPECT_EQ(writes_at(3, [] { return add_provider("z"); }), lines{"add index 1 provider : z \n"});
  EXPECT_EQ(writes_at(3, [] { return add_provider("M"); }), lines{"add index 1 provider : M \n"});
  EXPECT_EQ(writes_at(3, [] { return add_provider("A"); }), lines{"add index 0 provider : A \n"});
  EXPECT_EQ(writes_at(2, [] { return add_provider("B"); }), lines{});
}

TEST_F(ProvidersAdding, ANameThatFillsItsFieldIsPrintedWithinIt) {
  const std::string full(98, 'x');
  group_st record = named_group(full);
  record.reserved_0 = 0x5A5A;
  add_provider_info(record);

  EXPECT_EQ(writes_at(3, [&] { return add_provider_info(record); }), lines{"add index 1 provider : " + full + " \n"});
}

TEST_F(ProvidersAdding, NamesThatFillTheirFieldCompareToTheLastByteAndNoFurther) {
  const std::string front(97, 'x');
  // Behind the first name stand the greatest letters: the first two bytes of the next record.
  add_provider(front + "b");
  group_st next = named_group("y");
  next.reserved_0 = 0x7A7A;
  add_provider_info(next);

  add_provider(front + "B");
  add_provider(front + "a");

  EXPECT_EQ(provider_names(), (names{front + "a", front + "b", front + "B", "y"}));
}

}  // namespace
