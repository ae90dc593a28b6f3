// The dumps of the limits, the hierarchy, one channel and the settings, whole: every write of every dump.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>

#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class Dumps : public store_test {};

std::string rule(char sign) { return std::string(74, sign) + "\n"; }

lines writes_of(void (*dump)()) { return writes_at(2, dump); }

lines writes_of_service(const channel_st *service, int level = 2) {
  return writes_at(level, [service] {
    print_channel_info(service);
    return 0;
  });
}

TEST_F(Dumps, TheBuildLimitsArePrintedWithTheSizesOfTheFile) {
  EXPECT_EQ(writes_of(channel_version_info),
            (lines{"\t\tMAX_CHANNEL\t\t5000\n", "\t\tFAV GROUP\t\t20\n", "\t\tFAV\t\t\t40\n",
                   "\t\tchannel list version : 10\n", "\t\tchannel_st (312) * 5000  : 1560000\n",
                   "\t\tchannel_list_st (460032) + channel_st 1560000  : 2020032\n"}));
}

TEST_F(Dumps, TheBuildLimitsShowTheVersionOfTheListInMemory) {
  list.version = -9;

  EXPECT_EQ(writes_of(channel_version_info).at(3), "\t\tchannel list version : -9\n");
}

lines list_head_of_dump(const char *bouquet, const char *view, const char *networks) {
  return {"********************************   CHANNEL LIST    *****************************\n",
          "\t\t * version: 10\n",
          std::string("\t\t * bouquet_id: ") + bouquet + "\n",
          std::string("\t\t * vch_type: '") + view + "'\n",
          std::string("\t\t * network_num: ") + networks + "\n",
          rule('*')};
}

TEST_F(Dumps, AnEmptyListPrintsItsHeadAlone) {
  EXPECT_EQ(writes_of(print_channel_list), list_head_of_dump("65535", "ALL CH", "0"));
}

TEST_F(Dumps, NetworksAndTranspondersArePrintedAndChannelsAreNot) {
  file_service({.frequency = 0xFFFFFFFF, .service_id = 1});
  file_service({.frequency = 0xFFFFFFFF, .service_id = 2});
  file_service({.frequency = 11'000'000, .service_id = 3});
  file_service({.net_index = 255, .network_id = 0xFFFF});
  set_bouquet_id(0x8000);
  const lines first = {rule('+'),
                       "\t\t * net_index: 1\n",
                       "\t\t * network_id: 1\n",
                       "\t\t * network_name: Network\n",
                       "\t\t * tp_num: 2\n",
                       rule('+'),
                       rule('='),
                       "\t\t * frequency: -1\n",
                       "\t\t * rech_num: 2\n",
                       rule('='),
                       rule('='),
                       "\t\t * frequency: 11000000\n",
                       "\t\t * rech_num: 1\n",
                       rule('=')};
  const lines second = {rule('+'),
                        "\t\t * net_index: 255\n",
                        "\t\t * network_id: 65535\n",
                        "\t\t * network_name: Network\n",
                        "\t\t * tp_num: 1\n",
                        rule('+'),
                        rule('='),
                        "\t\t * frequency: 11000000\n",
                        "\t\t * rech_num: 1\n",
                        rule('=')};

  EXPECT_EQ(writes_of(print_channel_list), joined({list_head_of_dump("32768", "ALL CH", "2"), first, second}));
}

TEST_F(Dumps, ANetworkWithoutTranspondersPrintsItsBlockAlone) {
  alloc_network_ch_info(1, 2, nullptr);

  EXPECT_EQ(writes_of(print_channel_list), joined({list_head_of_dump("65535", "ALL CH", "1"),
                                                   {rule('+'), "\t\t * net_index: 1\n", "\t\t * network_id: 2\n",
                                                    "\t\t * network_name: \n", "\t\t * tp_num: 0\n", rule('+')}}));
}

TEST_F(Dumps, ANetworkNameWithoutTerminatorIsPrintedToIts64thByte) {
  network_ch_st *network = alloc_network_ch_info(1, 2, nullptr);
  std::memset(network->network_name, 'n', sizeof network->network_name);
  network->tp_num = 0x4141;

  EXPECT_EQ(writes_of(print_channel_list).at(9), "\t\t * network_name: " + std::string(64, 'n') + "\n");
  network->tp_num = 0;
}

TEST_F(Dumps, ANetworkOfManyTranspondersPrintsTheNumberItCounts) {
  alloc_network_ch_info(1, 2, nullptr)->tp_num = 65'535;

  EXPECT_EQ(writes_of(print_channel_list).at(10), "\t\t * tp_num: 65535\n");
}

TEST_F(Dumps, AChannelIsPrintedFieldByField) {
  channel_st *service = file_service({.frequency = 11'727'480, .service_id = 7, .name = "Das Erste"});
  service->polarisation = 255;
  service->service_type = 200;
  service->source_type = 129;
  service->pmt_pid = 0x20;
  service->pcr_pid = 5;
  service->video_pid = 0x1FFF;
  service->video_tag = 0;
  service->audio_pid = 0xFFFF;
  service->audio_tag = 0xFF;

  EXPECT_EQ(writes_of_service(service),
            (lines{rule('-'), "\t\t + name: Das Erste\n", "\t\t + freq: 11727480\n", "\t\t + polarisation: 255\n",
                   "\t\t + service_id: 07\n", "\t\t + source type: 129\n", "\t\t + service type: 200\n",
                   "\t\t + pmt_pid: 20(32)\n", "\t\t + pcr_pid: 05(5)\n", "\t\t + video_pid: 1fff(8191)\n",
                   "\t\t + video_tag: 00(0)\n", "\t\t + audio_pid: ffff(65535)\n", "\t\t + audio_tag: ff(255)\n",
                   rule('-')}));
}

TEST_F(Dumps, AChannelsFrequencyHas64BitsAndASign) {
  channel_st *service = file_service({});
  for (const auto &[frequency, line] : {std::pair{std::int64_t{0x100'0000'0000}, "\t\t + freq: 1099511627776\n"},
                                        std::pair{std::int64_t{0xFFFFFFFF}, "\t\t + freq: 4294967295\n"},
                                        std::pair{std::int64_t{-1}, "\t\t + freq: -1\n"}}) {
    service->frequency = frequency;

    EXPECT_EQ(writes_of_service(service).at(2), line);
  }
}

TEST_F(Dumps, AChannelsNameWithoutTerminatorIsPrintedToIts96thByte) {
  channel_st *service = file_service({.name = std::string(96, 'x')});
  service->name[0].reserved_97 = '!';

  EXPECT_EQ(writes_of_service(service).at(1), "\t\t + name: " + std::string(96, 'x') + "\n");
}

TEST_F(Dumps, NoChannelPrintsNothing) { EXPECT_EQ(writes_of_service(nullptr, 9), lines{}); }

TEST_F(Dumps, TheStatusIsPrintedLineByLine) {
  list.service_type = 2;
  list.use_group_list = 3;
  list.vnumber = 1;
  list.tv_vnumber = 2;
  list.radio_vnumber = 3;
  list.user_vnumber = 4;
  list.promo_vnumber = 5;
  list.vch_type = 2;
  list.net_index = 85;
  list.bouquet_id = 4096;

  EXPECT_EQ(
      writes_of(print_channel_status),
      (lines{"ChannelAPI print_channel_status:# #######################\n", " channel list version : 10\n",
             "load \tservice_type : 2\n", "load \tuse_group_list : 'PROVIDER'\n", "load \tbouquet : 4096\n",
             "load \tnet_index : 85\n", "load \toriginal channel number : 1\n", "load \ttv channel number : 2\n",
             "load \tradio channel number : 3\n", "load \tuser channel number : 4\n", "load \tvch_type : 'RADIO CH'\n",
             "load \tpromotion channel number : 5\n", "ChannelAPI print_channel_status:# #######################\n"}));
}

TEST_F(Dumps, NumbersOfTheStatusKeepTheSignOfTheirField) {
  list.version = -1;
  list.service_type = -1;
  list.net_index = -1;
  list.bouquet_id = 0xFFFF;
  list.vnumber = list.tv_vnumber = list.radio_vnumber = list.user_vnumber = list.promo_vnumber = -1;

  const lines status = writes_of(print_channel_status);

  for (const std::size_t line : {1U, 2U, 5U, 6U, 7U, 8U, 9U, 11U}) {
    EXPECT_NE(status.at(line).find(" : -1\n"), std::string::npos) << status[line];
  }
  EXPECT_EQ(status.at(4), "load \tbouquet : 65535\n");
}

TEST_F(Dumps, GroupKindsHaveTheirNames) {
  const struct {
    int kind;
    const char *name;
  } cases[] = {{0, "ALL"}, {1, "SATELLITE"}, {2, "GENRE"}, {3, "PROVIDER"}, {4, "COUNTRY"}, {5, "FTACAS"},
               {6, "FAV"}, {7, "NONE"},      {-1, "NONE"}, {127, "NONE"},   {-128, "NONE"}};
  for (const auto &each : cases) {
    list.use_group_list = static_cast<std::int8_t>(each.kind);

    EXPECT_EQ(writes_of(print_channel_status).at(3), std::string("load \tuse_group_list : '") + each.name + "'\n");
  }
}

TEST_F(Dumps, ViewsHaveTheirNames) {
  const struct {
    int code;
    const char *name;
  } cases[] = {{0, "ALL CH"},  {1, "TV CH"},     {2, "RADIO CH"}, {3, "USER CH"}, {4, "NONE"},    {5, "NONE"},
               {6, "NONE"},    {7, "NONE"},      {8, "NONE"},     {9, "NONE"},    {10, "FAV CH"}, {11, "FAV CH"},
               {28, "FAV CH"}, {29, "FAV CH"},   {30, "NONE"},    {31, "NONE"},   {-1, "NONE"},   {256, "NONE"},
               {266, "NONE"},  {-32768, "NONE"}, {32767, "NONE"}};
  for (const auto &each : cases) {
    list.vch_type = static_cast<std::int16_t>(each.code);

    EXPECT_EQ(writes_of(print_channel_status).at(10), std::string("load \tvch_type : '") + each.name + "'\n")
        << each.code;
    EXPECT_EQ(writes_of(print_channel_list).at(3), std::string("\t\t * vch_type: '") + each.name + "'\n") << each.code;
  }
}

}  // namespace
