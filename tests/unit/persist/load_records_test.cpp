// What a load makes of the records of a file: networks, transponders and services in file order, and nothing else.
#include <cstdlib>

#include "support/channel_file.h"
#include "support/small_file.h"

namespace {

namespace list_field = test_support::list_field;
namespace service_field = test_support::service_field;
using test_support::channel_file;
using test_support::record_kind;

class LoadedRecords : public test_support::small_file_test {};

TEST_F(LoadedRecords, KeepsNetworksTranspondersAndServicesInFileOrder) {
  channel_file file;
  file.network(2, 20, "Second")
      .transponder(201, 12'000'000, 0)
      .service({.net_index = 2, .network_id = 20, .ts_id = 201, .frequency = 12'000'000, .service_id = 9})
      .transponder(200, 10'000'000, 0);
  file.network(1, 10, "First").transponder(100, 11'000'000, 0);
  file.service({.network_id = 10, .service_id = 5}).service({.network_id = 10, .service_id = 3});

  ASSERT_EQ(load(file.data), 10);

  ASSERT_EQ(list.network_num, 2);
  auto *second_network = reinterpret_cast<network_ch_st *>(list.network_list.next);
  auto *first_network = reinterpret_cast<network_ch_st *>(second_network->list.next);
  EXPECT_EQ(first_network->list.next, &list.network_list);
  EXPECT_STREQ(second_network->network_name, "Second");
  EXPECT_STREQ(first_network->network_name, "First");
  auto *tp_201 = reinterpret_cast<tp_ch_st *>(second_network->tp_list.next);
  auto *tp_200 = reinterpret_cast<tp_ch_st *>(tp_201->list.next);
  EXPECT_EQ(tp_201->ts_id, 201);
  EXPECT_EQ(tp_200->ts_id, 200);
  EXPECT_EQ(tp_200->list.next, &second_network->tp_list);
  EXPECT_EQ(tp_200->rch_list.next, &tp_200->rch_list);
  EXPECT_EQ(reinterpret_cast<channel_st *>(tp_201->rch_list.next)->service_id, 9);
  auto *tp_100 = reinterpret_cast<tp_ch_st *>(first_network->tp_list.next);
  auto *service_5 = reinterpret_cast<channel_st *>(tp_100->rch_list.next);
  auto *service_3 = reinterpret_cast<channel_st *>(service_5->list.next);
  EXPECT_EQ(service_5->service_id, 5);
  EXPECT_EQ(service_3->service_id, 3);
  EXPECT_EQ(service_3->list.next, &tp_100->rch_list);
  EXPECT_EQ(service_3->list.prev, &service_5->list);
}

TEST_F(LoadedRecords, ResetsTheCountryOfEveryService) {
  channel_file file = small_file();
  file.set_last(record_kind::service, service_field::country_id, 2, 77)
      .set_last(record_kind::service, service_field::genre_id, 2, 78);

  load(file.data);

  EXPECT_EQ(list.vch[1].rch->country_id, 0);
  EXPECT_EQ(list.vch[1].rch->genre_id, 78);
}

TEST_F(LoadedRecords, ReadsAListWithoutNetworksWithItsViewsAndGroups) {
  channel_file file;
  file.entry(VIEW_ALL, first, 11).entry(VIEW_TV, second, 12).entry(VIEW_FAVOURITE + 19, first, 13);
  file.group(GROUP_GENRE, 5, "Sport").group(GROUP_COUNTRY, 6, "Malta").group(GROUP_PROVIDER, 7, "Free");
  file.group(GROUP_FAV, 8, "Mine");

  EXPECT_EQ(load(file.data), 10);

  EXPECT_EQ(file.data.size(), test_support::list_size);
  EXPECT_EQ(list.network_num, 0);
  EXPECT_EQ(list.network_list.next, &list.network_list);
  EXPECT_EQ(test_support::majors(VIEW_ALL), std::vector<int>{11});
  EXPECT_EQ(test_support::majors(VIEW_TV), std::vector<int>{12});
  EXPECT_EQ(test_support::majors(VIEW_FAVOURITE + 19), std::vector<int>{13});
  EXPECT_STREQ(find_genre_id(5)->name, "Sport");
  EXPECT_STREQ(find_country_id(6)->name, "Malta");
  EXPECT_STREQ(list.provider[0].name, "Free");
  EXPECT_STREQ(list.favorite_group[0].name, "Mine");
}

TEST_F(LoadedRecords, ReadsNetworksAndTranspondersThatHoldNothing) {
  channel_file file;
  file.network(1, 1, "Empty").network(2, 2, "One").transponder(1, 2, 0);

  EXPECT_EQ(load(file.data), 10);

  network_ch_st *empty = get_network_ch_info(1, 1);
  EXPECT_EQ(empty->tp_list.next, &empty->tp_list);
  EXPECT_NE(get_tp_ch_info_by_network_ch(get_network_ch_info(2, 2), 1, 0, 0), nullptr);
}

TEST_F(LoadedRecords, IgnoresBytesBehindTheLastService) {
  EXPECT_EQ(load(small_file().data + "x"), 10);
  reset_channel_list();
  EXPECT_EQ(load(small_file().data + small_file().data), 10);
  EXPECT_EQ(get_network_ch_info(1, 0x102)->tp_num, 1);
}

TEST_F(LoadedRecords, ReadsOnlyAsManyNetworksAsTheListCounts) {
  channel_file file = small_file();
  file.network(2, 2, "Not counted").set(list_field::network_num, 2, 1);

  EXPECT_EQ(load(file.data), 10);
  EXPECT_EQ(list.network_num, 1);
  EXPECT_EQ(get_network_ch_info(2, 2), nullptr);
}

TEST_F(LoadedRecords, LeavesTheWorkViewAndTheHistoryToTheHost) {
  test_support::fill_view(VIEW_WORK, 1, first);
  virtual_channel_st watched = list.vch[0];
  watched.service_id = 0x777;
  get_return_channel()[0].vch = watched;
  reset_channel_list();

  load(small_file().data);

  EXPECT_EQ(*get_virtual_channel_vnumber(VIEW_WORK), 1);
  EXPECT_EQ(get_return_channel()[0].vch.service_id, 0x777);
}

// The host may hold pointers to records; it resets the list first when it does not.
TEST_F(LoadedRecords, DoesNotReleaseRecordsThatAreStillLinked) {
  channel_st *service = file_service(first);
  network_ch_st *network = get_network_ch_info(1, 0x102);
  tp_ch_st *transponder = get_tp_ch_info_by_network_ch(network, 0, 11'000'000, 1);

  load(small_file().data);

  EXPECT_EQ(service->service_id, 7);
  EXPECT_NE(get_network_ch_info(1, 0x102), network);
  std::free(service);
  std::free(transponder);
  std::free(network);
}

TEST_F(LoadedRecords, TakesAFileAgainAfterAReset) {
  load(small_file().data);
  reset_channel_list();

  EXPECT_EQ(load_named("list.dat"), 10);
  EXPECT_EQ(list.vnumber, 2);
  EXPECT_EQ(list.network_num, 1);
}

}  // namespace
