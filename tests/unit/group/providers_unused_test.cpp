// Removing the providers that no service carries.
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

class InvalidProviders : public store_test {
 protected:
  // A service that carries a provider; each stands on a transponder of its own, every second in another network.
  void carry(int provider_id) {
    service_data data;
    data.net_index = static_cast<std::uint8_t>(1 + filed_ % 2);
    data.frequency = 11'000'000 + 10'000 * filed_;
    data.service_id = static_cast<std::uint16_t>(++filed_);
    file_service(data)->provider_id = static_cast<std::int16_t>(provider_id);
  }
  void carry_all(const ids &provider_ids) {
    for (const int id : provider_ids) {
      carry(id);
    }
  }

 private:
  int filed_ = 0;
};

TEST_F(InvalidProviders, ProvidersThatServicesCarryStay) {
  add_providers({"Ant", "Bee", "Cat"});
  carry_all({2, 0, 1, 0});
  const std::string before = provider_table_image();

  EXPECT_EQ(remove_invalid_provider_info(), 0);

  EXPECT_EQ(provider_table_image(), before);
}

// Compatibility: the marks stand by place and do not move with the records, so that what moves into the place of a
// removed provider is removed as well.
TEST_F(InvalidProviders, EverythingBehindTheFirstUnusedProviderGoesUsedOrNot) {
  add_providers({"Ant", "Bee", "Cat"});
  carry_all({0, 2});

  EXPECT_EQ(remove_invalid_provider_info(), 0);

  EXPECT_EQ(provider_names(), (names{"Ant"}));
  EXPECT_TRUE(places_behind_providers_are_zero());
}

TEST_F(InvalidProviders, TheFirstUnusedProviderDecidesWhereverItStands) {
  for (int unused = 0; unused < 4; ++unused) {
    reset_channel_list();
    add_providers({"a", "b", "c", "d"});
    for (int id = 0; id < 4; ++id) {
      if (id != unused) {
        carry(id);
      }
    }

    EXPECT_EQ(remove_invalid_provider_info(), 0);

    EXPECT_EQ(get_provider_number(), unused);
    EXPECT_TRUE(places_behind_providers_are_zero());
  }
}

TEST_F(InvalidProviders, PlacesCountNotIds) {
  // The ids run against the names: the unused id 1 stands at place 1 of c(2), b(1), a(0) sorted by name.
  add_providers({"c", "b", "a"});
  carry_all({2, 0});

  remove_invalid_provider_info();

  EXPECT_EQ(provider_names(), (names{"a"}));
  EXPECT_EQ(provider_ids(), (ids{2}));
}

TEST_F(InvalidProviders, WithoutNetworksNothingIsRemoved) {
  add_providers({"Ant", "Bee"});
  const std::string before = provider_table_image();

  EXPECT_EQ(remove_invalid_provider_info(), 0);

  EXPECT_EQ(provider_table_image(), before);
}

TEST_F(InvalidProviders, TheCountOfNetworksDecidesWhetherThereAreAny) {
  add_providers({"Ant", "Bee"});
  carry(0);
  list.network_num = 0;

  EXPECT_EQ(remove_invalid_provider_info(), 0);

  EXPECT_EQ(get_provider_number(), 2);
  list.network_num = 1;
}

TEST_F(InvalidProviders, ANetworkWithoutServicesCarriesNoProvider) {
  add_providers({"Ant", "Bee"});
  alloc_network_ch_info(1, 1, nullptr);

  EXPECT_EQ(remove_invalid_provider_info(), 0);

  EXPECT_EQ(get_provider_number(), 0);
  EXPECT_TRUE(places_behind_providers_are_zero());
}

TEST_F(InvalidProviders, AnEmptyTableStaysEmpty) {
  carry(0);

  EXPECT_EQ(remove_invalid_provider_info(), 0);

  EXPECT_EQ(get_provider_number(), 0);
}

TEST_F(InvalidProviders, IdsThatNoProviderHasKeepNothing) {
  add_providers({"Ant", "Bee"});
  carry_all({0, 7, -1, 500, 32767});

  remove_invalid_provider_info();

  EXPECT_EQ(provider_names(), (names{"Ant"}));
}

TEST_F(InvalidProviders, OfTwoProvidersWithOneIdTheSecondIsUnused) {
  put_provider("Ant", 4);
  put_provider("Bee", 4);
  put_provider("Cat", 5);
  carry_all({4, 5, 4});

  remove_invalid_provider_info();

  EXPECT_EQ(provider_names(), (names{"Ant"}));
}

TEST_F(InvalidProviders, IdsThatNoTableGivesAreCarriedLikeOthers) {
  const ids present = {-1, 500, 32767, -32768, 0};
  for (const int id : present) {
    put_provider("p", id);
  }
  put_provider("q", 499);
  carry_all(present);

  remove_invalid_provider_info();

  EXPECT_EQ(provider_ids(), present);
}

TEST_F(InvalidProviders, AFullTableIsCutAtItsFirstUnusedProvider) {
  for (const int unused : {0, 1, 498, 499}) {
    reset_channel_list();
    fill_providers(MAX_PROVIDER);
    list.genre[0] = named_group("genre", 9);
    for (int id = 0; id < MAX_PROVIDER; ++id) {
      if (id != unused) {
        carry(id);
      }
    }

    remove_invalid_provider_info();

    EXPECT_EQ(get_provider_number(), unused);
    EXPECT_TRUE(places_behind_providers_are_zero());
    EXPECT_EQ(image_of(list.genre[0]), image_of(named_group("genre", 9)));
  }
}

TEST_F(InvalidProviders, EachRemovalIsTracedAtLevel2) {
  add_providers({"Ant", "Bee", "Cat"});
  carry_all({0, 2});

  EXPECT_EQ(writes_at(2, [] { return remove_invalid_provider_info(); }),
            (lines{"ChannelAPI remove_invalid_provider_info:# \n",
                   "ChannelAPI remove_invalid_provider_info:# delete provider : Bee \n",
                   "ChannelAPI remove_invalid_provider_info:# delete provider : Cat \n"}));
  EXPECT_EQ(writes_at(2, [] { return remove_invalid_provider_info(); }),
            lines{"ChannelAPI remove_invalid_provider_info:# \n"});
}

TEST_F(InvalidProviders, NothingIsWrittenBelowLevel2) {
  add_providers({"Ant", "Bee"});
  carry(0);

  EXPECT_EQ(writes_at(1, [] { return remove_invalid_provider_info(); }), lines{});

  EXPECT_EQ(get_provider_number(), 1);
}

TEST_F(InvalidProviders, TheCallIsTracedAlsoWithoutNetworks) {
  add_provider("Ant");

  EXPECT_EQ(writes_at(2, [] { return remove_invalid_provider_info(); }),
            lines{"ChannelAPI remove_invalid_provider_info:# \n"});
}

TEST_F(InvalidProviders, ANameThatFillsItsFieldIsPrintedWithinIt) {
  const std::string full(98, 'x');
  put_provider(full, 3);
  put_provider("y", 4);
  list.provider[1].reserved_0 = 0x5A5A;
  carry(9);

  EXPECT_EQ(writes_at(2, [] { return remove_invalid_provider_info(); })[1],
            "ChannelAPI remove_invalid_provider_info:# delete provider : " + full + " \n");
}

}  // namespace
