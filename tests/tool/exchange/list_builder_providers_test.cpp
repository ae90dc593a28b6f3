// Provider names of parsed services become the list's providers; every limit of the table is met.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tool/exchange/built_list.h"

namespace {

using chlist::vdr_service;
using tool_test::service_at;

using ListBuilderProviders = tool_test::list_builder_test;

// The n-th service, of a provider.
vdr_service service_of(const std::string &provider, int n) {
  vdr_service service = service_at(n);
  service.provider = provider;
  return service;
}

TEST_F(ListBuilderProviders, AProviderIsRegisteredOnceAndItsServicesCarryItsId) {
  const channel_st &first = add(service_of("Quayside", 1));
  const channel_st &other = add(service_of("Ant", 2));
  const channel_st &again = add(service_of("Quayside", 3));

  ASSERT_EQ(get_provider_number(), 2);
  EXPECT_STREQ(get_provider_info_by_index(0)->name, "Ant");
  EXPECT_STREQ(get_provider_info_by_index(1)->name, "Quayside");
  EXPECT_EQ(get_provider_info_by_index(1)->name_len, 8);
  EXPECT_EQ(first.provider_id, get_provider_info_by_index(1)->id);
  EXPECT_EQ(again.provider_id, first.provider_id);
  EXPECT_EQ(other.provider_id, get_provider_info_by_index(0)->id);
  EXPECT_EQ(builder.counts().providers, 2U);
  EXPECT_TRUE(builder.full_tables().empty());
}

TEST_F(ListBuilderProviders, ProvidersThatDifferInCaseAreTwo) {
  const channel_st &lower = add(service_of("abc", 1));
  const channel_st &upper = add(service_of("ABC", 2));

  EXPECT_EQ(get_provider_number(), 2);
  EXPECT_NE(lower.provider_id, upper.provider_id);
}

TEST_F(ListBuilderProviders, AServiceWithoutProviderBelongsToNone) {
  add(service_of("Quayside", 1));

  const channel_st &record = add(service_of("", 2));

  EXPECT_EQ(record.provider_id, -1);
  EXPECT_EQ(find_provider_id(record.provider_id), nullptr);
  EXPECT_EQ(get_provider_number(), 1);
}

TEST_F(ListBuilderProviders, AServiceThatIsLeftOutRegistersNoProvider) {
  add(service_of("Quayside", 1));

  EXPECT_TRUE(refusal(service_of("Elsewhere", 1)));

  EXPECT_EQ(get_provider_number(), 1);
}

TEST_F(ListBuilderProviders, ProviderNamesEndAtTheirField) {
  for (const std::size_t length : {1U, 96U, 97U, 98U, 300U}) {
    const std::string name(length, static_cast<char>('a' + length % 26));

    const channel_st &record = add(service_of(name, static_cast<int>(length)));
    const channel_st &again = add(service_of(name, static_cast<int>(length) + 1000));

    const group_st *provider = find_provider_id(record.provider_id);
    ASSERT_NE(provider, nullptr) << length;
    EXPECT_EQ(std::string(provider->name), name.substr(0, 97));
    EXPECT_EQ(provider->name_len, std::min<std::size_t>(length, 97));
    EXPECT_EQ(again.provider_id, record.provider_id);
  }
  EXPECT_EQ(get_provider_number(), 5);
}

TEST_F(ListBuilderProviders, AProviderNameIsNotCutInsideACharacter) {
  const channel_st &record = add(service_of(std::string(96, 'p') + "\xC3\xA9", 1));

  EXPECT_EQ(find_provider_id(record.provider_id)->name, std::string(96, 'p'));
}

TEST_F(ListBuilderProviders, ProvidersBeyondTheTableAreCountedOnce) {
  for (int n = 0; n < MAX_PROVIDER; ++n) {
    add(service_of("Provider " + std::to_string(n), n));
  }
  ASSERT_TRUE(builder.full_tables().empty());

  const channel_st &first = add(service_of("One more", 600));
  add(service_of("One more", 601));
  add(service_of("And another", 602));
  const channel_st &known = add(service_of("Provider 499", 603));

  EXPECT_EQ(builder.full_tables(),
            (std::vector<std::string>{"the list of providers is full: it holds 500, 2 more are left out"}));
  EXPECT_EQ(first.provider_id, -1);
  EXPECT_STREQ(find_provider_id(known.provider_id)->name, "Provider 499");
  EXPECT_EQ(builder.counts().providers, 500U);
  EXPECT_EQ(builder.counts().services, 504U);
}

}  // namespace
