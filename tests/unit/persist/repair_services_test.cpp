// The services of a repaired list, field by field, and the networks and transponders that come into being with them.

#include "support/log_capture.h"
#include "support/repair_test.h"

namespace {

namespace network_field = test_support::network_field;
namespace service_field = test_support::service_field;
namespace transponder_field = test_support::transponder_field;
using test_support::bytes;
using test_support::channel_file;
using test_support::log_capture;
using test_support::old_version;
using test_support::record_kind;
using lines = std::vector<std::string>;

// A service of today, every byte different from its neighbours; its identity agrees with nothing else in the file.
bytes patterned_service() {
  bytes image(312, '\0');
  for (std::size_t i = 0; i < image.size(); ++i) {
    image[i] = static_cast<char>(1 + i * 23 % 255);
  }
  return image;
}

// The last record of a file of one service.
bytes service_in_file(const old_version &version, const bytes &file) {
  return file.substr(file.size() - version.size_of(record_kind::service));
}

// The image, of today, that a service of an earlier version comes back as.
bytes repaired_service(const old_version &version, const bytes &old) {
  bytes image(312, '\0');
  // What is not carried over: unset PIDs, tags and ids are all carried, so zeros are all that is left.
  constexpr std::pair<std::size_t, std::size_t> carried[] = {{8, 214},   {216, 217}, {224, 245},
                                                             {246, 251}, {252, 257}, {258, 266}};
  for (const auto &[begin, end] : carried) {
    image.replace(begin, end - begin, old, begin, end - begin);
  }
  image.replace(214, 2, old, 212, 2);
  return image.replace(286, 4, old, version.tail_at(), 4);
}

bytes in_memory(const channel_st &service) {
  return bytes(8, '\0') + bytes(reinterpret_cast<const char *>(&service.name), 304);
}

class RepairedServices : public test_support::repair_test {};

TEST_P(RepairedServices, HoldWhatIsCarriedOverAndNothingElse) {
  channel_file file = channel_file().service({});
  file.data.replace(file.records.back().offset, 312, patterned_service());
  const bytes contents = in_version(file);
  ASSERT_EQ(repair(contents), 0);

  ASSERT_EQ(every_service().size(), 1U);
  EXPECT_EQ(in_memory(*every_service()[0]), repaired_service(GetParam(), service_in_file(GetParam(), contents)));
}

TEST_P(RepairedServices, HoldEveryFieldByItsName) {
  channel_file file = channel_file().service({.name = "Alpha"});
  const std::tuple<std::size_t, std::size_t, std::uint64_t> fields[] = {
      {208, 2, 0x0201},     {210, 2, 0x8001}, {212, 2, 3},      {214, 2, 5},          {236, 4, 0x44332211},
      {232, 1, 25},         {233, 1, 9},      {246, 2, 0x101},  {248, 2, 0x102},      {250, 1, 0x31},
      {252, 2, 0x103},      {254, 2, 0x104},  {256, 1, 0x32},   {258, 2, 0x105},      {260, 2, 0x106},
      {262, 4, 0xDDCCBBAA}, {266, 2, 0xFFFF}, {286, 2, 0x0777}, {288, 1, 0x2E},       {289, 1, 0x5D},
      {290, 2, 0xFFFF},     {298, 2, 12},     {217, 1, 0xFF},   {244, 2, 0xEE00 + 1},
  };
  for (const auto &[at, width, value] : fields) {
    file.set_last(record_kind::service, at, width, value);
  }
  ASSERT_EQ(repair(file), 0);

  ASSERT_EQ(every_service().size(), 1U);
  const channel_st &service = *every_service()[0];
  EXPECT_STREQ(service.name[0].text, "Alpha");
  EXPECT_EQ(service.name[0].name_len, 5);
  EXPECT_EQ(service.reserved_208[1], 2);
  EXPECT_EQ(service.country_id, static_cast<std::int16_t>(0x8001));
  EXPECT_EQ(service.genre_id, 3);
  EXPECT_EQ(service.provider_id, 3);
  EXPECT_EQ(service.reserved_217[0], 0);
  EXPECT_EQ(service.service_type, 25);
  EXPECT_EQ(service.source_type, 9);
  EXPECT_EQ(service.reserved_236[0], 0x11);
  EXPECT_EQ(service.reserved_236[3], 0x44);
  EXPECT_EQ(service.polarisation, 1);
  EXPECT_EQ(service.reserved_245, 0);
  EXPECT_EQ(service.pmt_pid, 0x101);
  EXPECT_EQ(service.pcr_pid, 0x102);
  EXPECT_EQ(service.video_tag, 0x31);
  EXPECT_EQ(service.video_pid, 0x103);
  EXPECT_EQ(service.video_ecm_pid, 0x104);
  EXPECT_EQ(service.audio_tag, 0x32);
  EXPECT_EQ(service.audio_pid, 0x105);
  EXPECT_EQ(service.reserved_pid, 0x106);
  EXPECT_EQ(service.reserved_262[0], 0xAA);
  EXPECT_EQ(service.reserved_262[3], 0xDD);
  EXPECT_EQ(service.reserved_262[4], 0);
  EXPECT_EQ(service.reserved_id, 0x0777);
  EXPECT_EQ(service.flag, 0x2E);
  EXPECT_EQ(service.reserved_289[0], 0x5D);
  EXPECT_EQ(service.reserved_289[1], 0);
  EXPECT_EQ(service.user_order_key, 0);
}

TEST_P(RepairedServices, TakeTheProviderFromTheGenre) {
  ASSERT_EQ(repair(channel_file()
                       .service({})
                       .set_last(record_kind::service, service_field::genre_id, 2, 3)
                       .set_last(record_kind::service, service_field::provider_id, 2, 5)),
            0);

  EXPECT_EQ(every_service()[0]->genre_id, 3);
  EXPECT_EQ(every_service()[0]->provider_id, 3);
}

TEST_P(RepairedServices, KeepTheirOrder) {
  channel_file file;
  for (const int id : {9, 3, 7}) {
    file.service({.service_id = static_cast<std::uint16_t>(id)});
  }
  file.service({.net_index = 0, .service_id = 1}).service({.ts_id = 9, .frequency = 1'000'000, .service_id = 2});
  ASSERT_EQ(repair(file), 0);

  std::vector<int> ids;
  for (const channel_st *service : every_service()) {
    ids.push_back(service->service_id);
  }
  EXPECT_EQ(ids, (std::vector<int>{9, 3, 7, 2, 1})) << "the last one went to the network that was there already";
  EXPECT_TRUE(test_support::counts_match_lists());
}

TEST_P(RepairedServices, BringNetworksAndTranspondersOfTheirIdentityWithThem) {
  channel_file file;
  file.network(5, 0x55, "Named so").transponder(0x66, 9'000'000, 1);
  file.set_last(record_kind::network, network_field::reserved_9, 1, 0xFF)
      .set_last(record_kind::network, network_field::reserved_88, 8, ~0ULL);
  file.set_last(record_kind::transponder, transponder_field::reserved_10, 2, 0xFFFF)
      .set_last(record_kind::transponder, transponder_field::reserved_32, 8, ~0ULL);
  file.service({.net_index = 5, .network_id = 0x55, .ts_id = 0x66, .frequency = 9'000'000, .polarisation = 1});
  file.set_last(record_kind::service, service_field::net_index, 1, 6)
      .set_last(record_kind::service, service_field::network_id, 2, 0x77);
  file.set_last(record_kind::service, service_field::frequency, 8, 0x1'0000'2710)
      .set_last(record_kind::service, service_field::ts_id, 2, 0x88);
  ASSERT_EQ(repair(file), 0);

  ASSERT_EQ(list.network_num, 1);
  const network_ch_st &network = *test_support::networks()[0];
  EXPECT_EQ(network.net_index, 6);
  EXPECT_EQ(network.network_id, 0x77);
  EXPECT_STREQ(network.network_name, "Named so");
  EXPECT_EQ(network.reserved_9, 0);
  EXPECT_EQ(network.reserved_88[0], 0);
  ASSERT_EQ(network.tp_num, 1);
  const tp_ch_st &transponder = *test_support::transponders(network)[0];
  EXPECT_EQ(transponder.ts_id, 0x88);
  EXPECT_EQ(transponder.frequency, 10'000U) << "the low 32 bits";
  EXPECT_EQ(transponder.polarisation, 1);
  EXPECT_EQ(transponder.reserved_10[0], 0);
  EXPECT_EQ(transponder.reserved_32[0], 0);
  EXPECT_EQ(every_service()[0]->frequency, 0x1'0000'2710);
}

TEST_P(RepairedServices, CarryWholeNetworkNames) {
  const std::string name(64, 'n');
  ASSERT_EQ(
      repair(
          channel_file().network(1, 1, name).set_last(record_kind::network, network_field::tp_num, 2, 0).service({})),
      0);

  EXPECT_EQ(std::string(test_support::networks()[0]->network_name, 64), name);
}

TEST_P(RepairedServices, ShareATransponderWithinTheTolerance) {
  for (const auto &[apart, transponders] : {std::pair{0, 1}, {1, 1}, {2499, 1}, {2500, 2}, {2501, 2}}) {
    channel_file file = channel_file().service({.service_id = 1});
    file.transponder(100, 11'000'000U + static_cast<std::uint32_t>(apart), 0);
    ASSERT_EQ(repair(file.service({.frequency = 11'000'000 + apart, .service_id = 2})), 0);

    EXPECT_EQ(test_support::networks()[0]->tp_num, transponders) << apart;
    EXPECT_EQ(every_service().size(), 2U);
    EXPECT_TRUE(test_support::counts_match_lists());
  }
}

TEST_P(RepairedServices, LeaveEmptyNetworksAndTranspondersBehind) {
  channel_file file;
  file.network(9, 9, "Empty").transponder(1, 1'000'000, 0).network(8, 8, "Bare");
  file.service({}).transponder(2, 2'000'000, 1).network(7, 7, "Last");
  ASSERT_EQ(repair(file), 0);

  EXPECT_EQ(list.network_num, 1);
  EXPECT_EQ(test_support::networks()[0]->tp_num, 1);
  EXPECT_EQ(get_network_ch_info(9, 9), nullptr);
  EXPECT_EQ(get_tp_ch_simple(1, 2'000'000, 1), nullptr);
  EXPECT_TRUE(test_support::counts_match_lists());
}

TEST_P(RepairedServices, AreFiledOnce) {
  channel_file file = channel_file().service({.service_id = 7, .name = "Kept"});
  file.service({.service_id = 7, .service_type = 2, .name = "Dropped"}).service({.service_id = 8, .name = "Other"});
  // Once more in a network of the same identity.
  file.network(1, 1, "Twin").transponder(100, 11'000'000, 0).service({.service_id = 7, .name = "Dropped too"});
  const bytes contents = in_version(file);
  const std::string warning =
      "WARNING: add_rch_info:# rch: s_id(0x7), n_id(0x1), ts_id(0x64), name(Kept), type(0x0101)\n";
  const log_capture log(1);

  ASSERT_EQ(repair(contents), 0);

  EXPECT_EQ(log.writes(), (lines{warning, warning}));
  ASSERT_EQ(every_service().size(), 2U);
  EXPECT_STREQ(every_service()[0]->name[0].text, "Kept");
  EXPECT_EQ(list.network_num, 1);
  EXPECT_TRUE(test_support::counts_match_lists());
}

TEST_P(RepairedServices, MayBeUnset) {
  channel_file file = channel_file().service({.service_id = 0xFFFF, .name = ""});
  ASSERT_EQ(repair(file.set_last(record_kind::service, service_field::reserved_pid, 2, 0xFFFF)
                       .set_last(record_kind::service, service_field::reserved_id, 2, 0xFFFF)),
            0);

  EXPECT_EQ(every_service()[0]->service_id, 0xFFFF);
  EXPECT_EQ(every_service()[0]->reserved_pid, 0xFFFF);
  EXPECT_EQ(every_service()[0]->reserved_id, 0xFFFF);
  EXPECT_EQ(every_service()[0]->pmt_pid, 0);
}

TEST_P(RepairedServices, SurviveInThousands) {
  channel_file file;
  for (std::uint16_t id = 0; id < 5000; ++id) {
    file.service(
        {.ts_id = static_cast<std::uint16_t>(id / 10), .frequency = 10'000'000 + id / 10 * 2500, .service_id = id});
  }
  ASSERT_EQ(repair(file), 0);

  EXPECT_EQ(every_service().size(), 5000U);
  EXPECT_EQ(test_support::networks()[0]->tp_num, 500);
  EXPECT_TRUE(test_support::counts_match_lists());
}

REPAIRED_FROM_EVERY_VERSION(RepairedServices);

}  // namespace
