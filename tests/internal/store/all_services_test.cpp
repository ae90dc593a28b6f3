// The walk over all services of a list: each once, in list order, with the records that it hangs from.
#include <gtest/gtest.h>

#include <cstdlib>
#include <tuple>
#include <vector>

#include "channel/store/hierarchy.h"
#include "support/records_by_hand.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;

using place = std::tuple<int, int, int>;  // original network id, transport stream id, service id

std::vector<place> places_in(const channel::filed_services &services) {
  std::vector<place> places;
  for (const auto [network, transponder, service] : services) {
    places.emplace_back(network.network_id, transponder.ts_id, service.service_id);
  }
  return places;
}

class AllServices : public store_test {
 protected:
  static network_ch_st &network(std::uint16_t network_id) { return *alloc_network_ch_info(1, network_id, nullptr); }

  static void add_services(tp_ch_st &transponder, std::initializer_list<int> service_ids) {
    for (const int id : service_ids) {
      append_service(transponder, {.service_id = static_cast<std::uint16_t>(id)});
    }
  }
};

TEST_F(AllServices, ComeInListOrderWithWhatTheyHangFrom) {
  network_ch_st &first = network(10);
  add_services(*append_transponder(first, 100, 11'000'000, 0), {1, 2});
  add_services(*append_transponder(first, 101, 12'000'000, 0), {1});
  add_services(*append_transponder(network(20), 100, 11'000'000, 0), {3});

  EXPECT_EQ(places_in(channel::all_services_of(list.network_list)),
            (std::vector<place>{{10, 100, 1}, {10, 100, 2}, {10, 101, 1}, {20, 100, 3}}));
  EXPECT_EQ(places_in(channel::all_services_of(first)), (std::vector<place>{{10, 100, 1}, {10, 100, 2}, {10, 101, 1}}));
}

TEST_F(AllServices, AreFoundBehindEmptyNetworksAndTransponders) {
  network(10);
  network_ch_st &second = network(20);
  append_transponder(second, 100, 11'000'000, 0);
  add_services(*append_transponder(second, 101, 12'000'000, 0), {7});
  append_transponder(second, 102, 13'000'000, 0);
  network_ch_st &last = network(30);
  append_transponder(last, 100, 11'000'000, 0);

  EXPECT_EQ(places_in(channel::all_services_of(list.network_list)), (std::vector<place>{{20, 101, 7}}));
  EXPECT_EQ(places_in(channel::all_services_of(last)), std::vector<place>{});
}

TEST_F(AllServices, AreNoneInAnEmptyListAndInOneThatNobodyHasInitialised) {
  list_head zeroed = {};

  EXPECT_EQ(places_in(channel::all_services_of(list.network_list)), std::vector<place>{});
  EXPECT_EQ(places_in(channel::all_services_of(zeroed)), std::vector<place>{});
}

TEST_F(AllServices, MayGoWhileTheWalkStandsOnThem) {
  network_ch_st &only = network(10);
  add_services(*append_transponder(only, 100, 11'000'000, 0), {1, 2, 3});
  add_services(*append_transponder(only, 101, 12'000'000, 0), {1, 2, 3});
  int freed = 0;

  for (const auto [network, transponder, service] : channel::all_services_of(list.network_list)) {
    channel::unlink(service.list);
    --transponder.rch_num;
    std::free(&service);
    ++freed;
  }

  EXPECT_EQ(freed, 6);
  EXPECT_EQ(places_in(channel::all_services_of(list.network_list)), std::vector<place>{});
}

}  // namespace
