// The checked-in channel file: a writer of its own makes it, every build reads it, and writes it back bit for bit.
#include "golden/golden_file.h"
#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

using test_support::bytes;
using test_support::expect_same_bytes;
using test_support::file_test;
using test_support::log_capture;
using test_support::record_kind;
using test_support::record_place;

const std::vector<record_place> &records() {
  static const std::vector<record_place> places = [] {
    constexpr std::pair<record_kind, std::size_t> list = {record_kind::list, 460'032};
    constexpr std::pair<record_kind, std::size_t> network = {record_kind::network, 416};
    constexpr std::pair<record_kind, std::size_t> transponder = {record_kind::transponder, 336};
    constexpr std::pair<record_kind, std::size_t> service = {record_kind::service, 312};
    std::vector<record_place> made;
    std::size_t offset = 0;
    for (const auto &[kind, size] : {list, network, transponder, service, service, transponder, transponder, service,
                                     network, transponder, service, service, service, transponder, service, service}) {
      made.push_back({kind, offset, size});
      offset += size;
    }
    return made;
  }();
  return places;
}

class GoldenFile : public file_test {
 protected:
  const bytes golden = test_support::read_file(CHANNEL_TESTS_DIR "/golden/channel_v10.dat");
};

TEST_F(GoldenFile, IsWhatItsProgramWrites) { expect_same_bytes(golden, golden::channel_file()); }

TEST_F(GoldenFile, HoldsWholeRecordsAndZeroPointers) {
  ASSERT_EQ(golden.size(), records().back().offset + records().back().size);
  bytes without_pointers = golden;

  test_support::fill_pointer_slots(without_pointers, records(), '\0');

  expect_same_bytes(golden, without_pointers);
}

TEST_F(GoldenFile, LoadsWithoutComplaint) {
  const log_capture log(1);

  EXPECT_EQ(load(golden), 10);

  EXPECT_EQ(log.writes(), std::vector<std::string>{});
}

TEST_F(GoldenFile, IsSavedBitForBit) {
  load(golden);

  expect_same_bytes(save(), golden);
}

TEST_F(GoldenFile, IsSavedWithoutTheAddressesThatItHeld) {
  bytes with_addresses = golden;
  test_support::fill_pointer_slots(with_addresses, records(), '\xA5');
  ASSERT_NE(with_addresses, golden);

  load(with_addresses);

  expect_same_bytes(save(), golden);
}

TEST_F(GoldenFile, GivesTheSettings) {
  load(golden);

  EXPECT_EQ(list.version, 10);
  EXPECT_EQ(list.use_tuner, static_cast<std::int8_t>(0x81));
  EXPECT_EQ(list.ch_type, static_cast<std::int8_t>(0x82));
  EXPECT_EQ(list.bouquet_id, 0x8384);
  EXPECT_EQ(list.use_group_list, GROUP_GENRE);
  EXPECT_EQ(list.service_type, static_cast<std::int8_t>(0x85));
  EXPECT_EQ(list.net_index, static_cast<std::int8_t>(0x86));
  EXPECT_EQ(list.sub_group_id, static_cast<std::int16_t>(0x8788));
  EXPECT_EQ(list.vch_type, VIEW_USER);
  EXPECT_EQ(list.cur_vch, list.user_vch);
  EXPECT_EQ(list.network_num, 2);
}

TEST_F(GoldenFile, GivesTheGroups) {
  load(golden);

  EXPECT_EQ(list.provider_num, 8);
  EXPECT_EQ(list.provider[7].id, 207);
  EXPECT_EQ(list.provider[7].name_len, 10);
  EXPECT_STREQ(list.provider[7].name, "Provider 7");
  EXPECT_EQ(list.genre_num, 8);
  EXPECT_STREQ(list.genre[0].name, "Genre 0");
  EXPECT_EQ(list.country_num, 3);
  EXPECT_EQ(list.country[2].id, 402);
  EXPECT_EQ(list.favorite_group_num, 3);
  EXPECT_STREQ(list.favorite_group[2].name, "Favourites 2");
}

TEST_F(GoldenFile, GivesTheViews) {
  load(golden);

  EXPECT_EQ(test_support::majors(VIEW_ALL), (std::vector<int>{100, 101, 102, 103, 104, 105, 106, 107}));
  EXPECT_EQ(test_support::majors(VIEW_TV), (std::vector<int>{204, 203, 202, 200}));
  EXPECT_EQ(test_support::majors(VIEW_RADIO), (std::vector<int>{306, 301}));
  EXPECT_EQ(test_support::majors(VIEW_USER), (std::vector<int>{407, 400, 405}));
  EXPECT_EQ(test_support::majors(VIEW_PROMOTION), (std::vector<int>{505, 503}));
  EXPECT_EQ(test_support::majors(10), (std::vector<int>{1000, 1002, 1001}));
  EXPECT_EQ(test_support::majors(12), (std::vector<int>{1203, 1204, 1205, 1207}));
  EXPECT_EQ(test_support::majors(29), (std::vector<int>{2901, 2906}));
}

TEST_F(GoldenFile, GivesEveryFieldOfAnEntry) {
  load(golden);

  const virtual_channel_st &entry = list.tv_vch[2];
  EXPECT_EQ(entry.vch_tag, static_cast<std::int8_t>(0xF2));
  EXPECT_EQ(entry.favorite_id, 0x42);
  EXPECT_EQ(entry.major_ch_num, 202);
  EXPECT_EQ(entry.minor_ch_num, static_cast<std::int16_t>(0x8002));
  EXPECT_EQ(entry.net_index, 85);
  EXPECT_EQ(entry.frequency, 12'015'000U);
  EXPECT_EQ(entry.polarisation, 1);
  EXPECT_EQ(entry.service_id, 0x1003);
  EXPECT_EQ(entry.network_id, 0x0102);
  EXPECT_EQ(entry.ts_id, 0x0506);
  ASSERT_NE(entry.rch, nullptr);
  EXPECT_STREQ(entry.rch->name[0].text, "\x05Zweites Programm");
}

TEST_F(GoldenFile, GivesEveryFieldOfNetworksAndTransponders) {
  load(golden);

  network_ch_st *network = get_network_ch_info(17, 0x0203);
  ASSERT_NE(network, nullptr);
  EXPECT_STREQ(network->network_name, "Cable");
  EXPECT_EQ(network->tp_num, 2);
  tp_ch_st *transponder = get_tp_ch_info_by_network_ch(network, 0x0607, 0, 0);
  ASSERT_NE(transponder, nullptr);
  EXPECT_EQ(transponder->frequency, 562'000'000U);
  EXPECT_EQ(transponder->polarisation, 0);
  EXPECT_EQ(transponder->rch_num, 3);
}

TEST_F(GoldenFile, GivesEveryFieldOfAService) {
  load(golden);

  const channel_st *service = get_channel_st(17, 0x0203, 0x0607, 562'000'000, 0x2003, 0);
  ASSERT_NE(service, nullptr);
  EXPECT_STREQ(service->name[0].text, "Data Service");
  EXPECT_EQ(service->name[0].name_len, 12);
  EXPECT_STREQ(service->name[1].text, "Second name of 5");
  EXPECT_EQ(service->name[1].name_len, 16);
  EXPECT_EQ(service->country_id, 0);
  EXPECT_EQ(service->genre_id, 305);
  EXPECT_EQ(service->provider_id, 205);
  EXPECT_EQ(service->net_index, 17);
  EXPECT_EQ(service->frequency, 562'000'000);
  EXPECT_EQ(service->service_type, 12);
  EXPECT_EQ(service->source_type, 9);
  EXPECT_EQ(service->ts_id, 0x0607);
  EXPECT_EQ(service->network_id, 0x0203);
  EXPECT_EQ(service->service_id, 0x2003);
  EXPECT_EQ(service->polarisation, 0);
  EXPECT_EQ(service->pmt_pid, 0x0105);
  EXPECT_EQ(service->pcr_pid, 0x0205);
  EXPECT_EQ(service->video_tag, 0x15);
  EXPECT_EQ(service->video_pid, 0x0305);
  EXPECT_EQ(service->video_ecm_pid, 0x0405);
  EXPECT_EQ(service->audio_tag, 0x25);
  EXPECT_EQ(service->audio_pid, 0x0505);
  EXPECT_EQ(service->reserved_pid, 0x0605);
  EXPECT_EQ(service->reserved_id, 0x0705);
  EXPECT_EQ(service->flag, 0x20);
  EXPECT_EQ(service->user_order_key, static_cast<std::int16_t>(0xFF05));
}

}  // namespace
