// Finding providers: by exact name, by id and by place.
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

// The name in a block of its own size, so that a sanitizer sees a read behind it.
group_st *find_name(const std::string &name, int length) {
  const std::vector<char> exact(name.begin(), name.end());
  return find_provider_info(exact.data(), static_cast<std::int8_t>(length));
}

group_st *find_name(const std::string &name) { return find_name(name, static_cast<int>(name.size())); }

class ProvidersFinding : public store_test {};

TEST_F(ProvidersFinding, AProviderIsFoundByItsName) {
  add_providers({"beta", "Alpha", "gamma"});

  EXPECT_EQ(find_name("Alpha"), &list.provider[0]);
  EXPECT_EQ(find_name("beta"), &list.provider[1]);
  EXPECT_EQ(find_name("gamma"), &list.provider[2]);
}

TEST_F(ProvidersFinding, CaseMatters) {
  add_provider("ABC");

  EXPECT_EQ(find_name("abc"), nullptr);
  EXPECT_EQ(find_name("ABc"), nullptr);
  EXPECT_EQ(find_name("ABC"), &list.provider[0]);
}

TEST_F(ProvidersFinding, NamesThatDifferInCaseAreToldApart) {
  add_providers({"abc", "ABC"});

  EXPECT_EQ(find_name("ABC"), &list.provider[1]);
  EXPECT_EQ(find_name("abc"), &list.provider[0]);
}

TEST_F(ProvidersFinding, OfTwoEqualNamesTheFirstIsFound) {
  add_providers({"abc", "abc"});

  EXPECT_EQ(find_name("abc"), &list.provider[0]);
}

TEST_F(ProvidersFinding, TheLengthMustBeThatOfTheProvider) {
  add_provider("abc");

  EXPECT_EQ(find_name("ab"), nullptr);
  EXPECT_EQ(find_name("abcd"), nullptr);
  EXPECT_EQ(find_name("abcd", 3), &list.provider[0]);
  EXPECT_EQ(find_name("abd"), nullptr);
}

TEST_F(ProvidersFinding, TheStoredLengthCountsNotTheTerminator) {
  group_st record = named_group("abc");
  record.name_len = 2;
  add_provider_info(record);

  EXPECT_EQ(find_name("ab"), &list.provider[0]);
  EXPECT_EQ(find_name("abc"), nullptr);
}

TEST_F(ProvidersFinding, BytesBehindATerminatorCount) {
  add_provider(std::string("a\0b", 3));

  EXPECT_EQ(find_name(std::string("a\0c", 3)), nullptr);
  EXPECT_EQ(find_name(std::string("a\0b", 3)), &list.provider[0]);
}

TEST_F(ProvidersFinding, NoBytesMatchTheFirstProviderWithoutAName) {
  add_provider("a");
  EXPECT_EQ(find_provider_info("a", 0), nullptr);

  add_provider("");

  EXPECT_EQ(find_provider_info("b", 0), &list.provider[0]);
}

TEST_F(ProvidersFinding, NamesAreFoundUpToTheWholeField) {
  for (const int length : {1, 96, 97, 98}) {
    reset_channel_list();
    const std::string name(static_cast<std::size_t>(length), 'n');
    add_provider(name);
    std::string other = name;
    other.back() = 'N';

    EXPECT_EQ(find_name(name), &list.provider[0]) << length;
    EXPECT_EQ(find_name(other), nullptr) << length;
  }
}

TEST_F(ProvidersFinding, ALengthBeyondTheFieldNeverMatches) {
  for (const int length : {99, 127}) {
    reset_channel_list();
    group_st record = named_group(std::string(98, 'n'));
    record.name_len = static_cast<std::int16_t>(length);
    add_provider_info(record);

    EXPECT_EQ(find_name(std::string(98, 'n'), length), nullptr) << length;
  }
}

TEST_F(ProvidersFinding, ALengthOf128OrMoreIsNegativeAndNeverMatches) {
  for (const int length : {-1, -128}) {
    reset_channel_list();
    put_provider("name", 0);
    list.provider[0].name_len = static_cast<std::int16_t>(length);

    EXPECT_EQ(find_name("name", length), nullptr) << length;
  }
  add_provider(std::string(128, 'n'));

  EXPECT_EQ(find_name(std::string(128, 'n'), 128), nullptr);
  EXPECT_EQ(find_name(std::string(255, 'n'), 255), nullptr);
}

TEST_F(ProvidersFinding, ANullNameIsRefused) {
  add_provider("");

  EXPECT_EQ(find_provider_info(nullptr, 0), nullptr);
  EXPECT_EQ(writes_at(0, [] { return find_provider_info(nullptr, 0); }),
            lines{"ERROR: find_provider_info:# name is null\n"});
  EXPECT_EQ(writes_at(-1, [] { return find_provider_info(nullptr, 0); }), lines{});
}

TEST_F(ProvidersFinding, RecordsBehindTheCountAreNotFound) {
  list.provider[0] = named_group("a", 7);
  list.provider[1] = named_group("b", 8);
  list.provider_num = 1;

  EXPECT_EQ(find_name("b"), nullptr);
  EXPECT_EQ(find_provider_id(8), nullptr);
  list.provider_num = 0;
  EXPECT_EQ(find_name("a"), nullptr);
  EXPECT_EQ(find_provider_id(7), nullptr);
  list.provider_num = -1;
  EXPECT_EQ(find_name("a"), nullptr);
  EXPECT_EQ(find_provider_id(7), nullptr);
}

TEST_F(ProvidersFinding, AnEmptyTableHoldsNoIdNotEvenThatOfItsEmptyPlaces) {
  EXPECT_EQ(find_provider_id(0), nullptr);
  EXPECT_EQ(find_provider_info("", 0), nullptr);
}

TEST_F(ProvidersFinding, AProviderIsFoundByItsIdWhereverItMoves) {
  add_providers({"beta", "Alpha", "gamma"});
  EXPECT_EQ(find_provider_id(0), &list.provider[1]);
  EXPECT_EQ(find_provider_id(1), &list.provider[0]);
  EXPECT_EQ(find_provider_id(2), &list.provider[2]);
  EXPECT_EQ(find_provider_id(3), nullptr);

  remove_provider_index(0);

  EXPECT_EQ(find_provider_id(0), &list.provider[0]);
  EXPECT_EQ(find_provider_id(1), nullptr);
  EXPECT_EQ(find_provider_id(2), &list.provider[1]);
}

TEST_F(ProvidersFinding, OfTwoProvidersWithOneIdTheFirstIsFound) {
  put_provider("a", 9);
  put_provider("b", 3);
  put_provider("c", 3);

  EXPECT_EQ(find_provider_id(3), &list.provider[1]);
}

TEST_F(ProvidersFinding, IdsAreComparedAsSigned16BitValues) {
  put_provider("a", -1);
  put_provider("b", 32767);
  put_provider("c", -32768);

  EXPECT_EQ(find_provider_id(-1), &list.provider[0]);
  EXPECT_EQ(find_provider_id(32767), &list.provider[1]);
  EXPECT_EQ(find_provider_id(-32768), &list.provider[2]);
  EXPECT_EQ(find_provider_id(0), nullptr);
}

TEST_F(ProvidersFinding, TheLastProviderOfAFullTableIsFound) {
  fill_providers(MAX_PROVIDER);
  // What a search behind the table would find: the genre table follows its count.
  list.genre[0] = named_group("x", 777);

  EXPECT_EQ(find_provider_id(499), &list.provider[499]);
  EXPECT_EQ(find_name("Provider 0499"), &list.provider[499]);
  EXPECT_EQ(find_provider_id(777), nullptr);
}

TEST_F(ProvidersFinding, AMissIsNotReported) {
  add_provider("a");

  EXPECT_EQ(writes_at(5, [] { return find_name("b"); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return find_name("b", -1); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return find_provider_id(5); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return get_provider_info_by_index(2); }), lines{});
}

TEST_F(ProvidersFinding, EveryPlaceIsReachedByItsIndex) {
  add_providers({"a", "b", "c"});

  for (std::int16_t index = 0; index < 3; ++index) {
    EXPECT_EQ(get_provider_info_by_index(index), &list.provider[index]);
  }
}

TEST_F(ProvidersFinding, ThePlaceBehindTheLastProviderIsAnEmptyRecord) {
  EXPECT_EQ(get_provider_info_by_index(0), &list.provider[0]);
  EXPECT_EQ(get_provider_info_by_index(1), nullptr);
  add_providers({"a", "b", "c"});
  remove_provider_index(2);

  const group_st *behind = get_provider_info_by_index(2);

  ASSERT_EQ(behind, &list.provider[2]);
  EXPECT_EQ(image_of(*behind), std::string(sizeof *behind, '\0'));
  EXPECT_EQ(get_provider_info_by_index(3), nullptr);
  EXPECT_EQ(get_provider_info_by_index(32767), nullptr);
}

TEST_F(ProvidersFinding, AnIndexOutsideTheArrayIsRefused) {
  fill_providers(MAX_PROVIDER - 1);
  EXPECT_EQ(get_provider_info_by_index(499), &list.provider[499]);
  EXPECT_EQ(get_provider_info_by_index(500), nullptr);
  add_provider("z");
  EXPECT_EQ(get_provider_info_by_index(499), &list.provider[499]);
  EXPECT_EQ(get_provider_info_by_index(500), nullptr);
  EXPECT_EQ(get_provider_info_by_index(501), nullptr);
  EXPECT_EQ(get_provider_info_by_index(-1), nullptr);
  EXPECT_EQ(get_provider_info_by_index(-32768), nullptr);

  EXPECT_EQ(writes_at(0, [] { return get_provider_info_by_index(500); }),
            lines{"ERROR: get_provider_info_by_index:# index 500 outside the provider table\n"});
  EXPECT_EQ(writes_at(0, [] { return get_provider_info_by_index(-1); }),
            lines{"ERROR: get_provider_info_by_index:# index -1 outside the provider table\n"});
  EXPECT_EQ(writes_at(-1, [] { return get_provider_info_by_index(-1); }), lines{});
}

TEST_F(ProvidersFinding, TheNumberOfProvidersIsTheTablesCount) {
  EXPECT_EQ(get_provider_number(), 0);
  add_provider("a");
  EXPECT_EQ(get_provider_number(), 1);
  list.provider_num = 500;
  EXPECT_EQ(get_provider_number(), 500);
  list.provider_num = 0;
}

}  // namespace
