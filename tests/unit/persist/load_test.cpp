// Loading a whole channel file: its results and its log lines.
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "support/channel_file.h"
#include "support/log_capture.h"
#include "support/small_file.h"

namespace {

namespace list_field = test_support::list_field;
namespace service_field = test_support::service_field;
using test_support::channel_file;
using test_support::fd_capture;
using test_support::log_capture;
using test_support::record_kind;
using lines = std::vector<std::string>;

const std::string rule = "+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=\n";

class LoadChannel : public test_support::small_file_test {};

TEST_F(LoadChannel, ReturnsTheVersionOfTheFile) {
  EXPECT_EQ(load(small_file().data), 10);
  EXPECT_EQ(list.version, 10);
}

TEST_F(LoadChannel, ReturnsAnyVersionWithItsSignAndReadsTheCurrentLayout) {
  for (const int version : {0, 1, 7, 9, 11, 255, 32767, -1, -2, -32768}) {
    reset_channel_list();
    EXPECT_EQ(load(small_file().set(list_field::version, 2, static_cast<std::uint64_t>(version)).data), version);
    EXPECT_EQ(list.version, version);
    EXPECT_NE(get_channel_st(1, 0x102, 0x203, 11'000'000, 8, 1), nullptr);
  }
}

TEST_F(LoadChannel, PrintsItsNameAndTheFilesNameOnStandardOutput) {
  const log_capture silence(-1);
  const fd_capture standard_output(STDOUT_FILENO);

  load_channel("no file", 255);

  const std::string line = standard_output.text();
  const std::string name = "load_channel ";
  const std::string file = " no file\n";
  ASSERT_GT(line.size(), name.size() + file.size()) << line;
  EXPECT_TRUE(line.starts_with(name) && line.ends_with(file)) << line;
  EXPECT_TRUE(std::all_of(line.begin() + std::ssize(name), line.end() - std::ssize(file), [](char each) {
    return each >= '0' && each <= '9';
  })) << line;
}

TEST_F(LoadChannel, RefusesANullNameAndChangesNothing) {
  file_service(first);
  const auto before = test_support::list_in_memory();
  const log_capture log(5);
  const fd_capture standard_output(STDOUT_FILENO);

  EXPECT_EQ(load_channel(nullptr, 255), -1);

  EXPECT_EQ(test_support::list_in_memory(), before);
  EXPECT_EQ(log.writes(), (lines{"ERROR: load_channel:# name is null\n"}));
  EXPECT_EQ(standard_output.text(), "");
}

TEST_F(LoadChannel, SaysNothingAtLevelOneWhenAllIsWell) {
  const log_capture log(1);

  load(small_file().data);

  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(LoadChannel, TellsItsStepsAtLevelTwo) {
  const log_capture log(2);

  load(small_file().data);

  EXPECT_EQ(log.writes(),
            (lines{"ChannelAPI load_channel_internal:# (" + path() + ")\n",
                   "\t\tMAX_CHANNEL\t\t5000\n",
                   "\t\tFAV GROUP\t\t20\n",
                   "\t\tFAV\t\t\t40\n",
                   "\t\tchannel list version : 10\n",
                   "\t\tchannel_st (312) * 5000  : 1560000\n",
                   "\t\tchannel_list_st (460032) + channel_st 1560000  : 2020032\n",
                   "ChannelAPI load_channel_internal:# channel_list.network_num 1\n",
                   "ChannelAPI load_channel_internal:# net_index 1 tp_num 1 , network_name : Astra \n",
                   "ChannelAPI load_channel_internal:# tp_ch_info->rch_num 2\n",
                   rule,
                   "ChannelAPI change_vindex_type:# \t USE LIST CHANGE CHANNEL LIST : 1  type('ALL CH') \n",
                   rule,
                   "ChannelAPI link_rch_info:# \n",
                   "ChannelAPI load_channel_internal:# #######################\n",
                   " channel list version : 10\n",
                   "load \tservice_type : 1\n",
                   "load \tuse_group_list : 'ALL'\n",
                   "load \tbouquet : 65535\n",
                   "load \tnet_index : -1\n",
                   "load \toriginal channel number : 2\n",
                   "load \ttv channel number : 0\n",
                   "load \tradio channel number : 0\n",
                   "load \tuser channel number : 0\n",
                   "load \tvch_type : 'ALL CH'\n",
                   "load \tpromotion channel number : 0\n",
                   "ChannelAPI load_channel_internal:# #######################\n",
                   "ch_number,\tfrequency,\tpolarisationt,\tnet_index,\tnetwork_id,\ttransport_id,\tservice_id\n",
                   "1,",
                   "\t11000000,",
                   "\tV,",
                   "\tJSAT4,",
                   "\t0x0102,",
                   "\t0x0203,",
                   "\t0x0007\n",
                   "2,",
                   "\t11000000,",
                   "\tV,",
                   "\tJSAT4,",
                   "\t0x0102,",
                   "\t0x0203,",
                   "\t0x0008\n"}));
}

TEST_F(LoadChannel, TellsEveryRecordAtLevelThree) {
  channel_file file = small_file();
  file.set_last(record_kind::service, service_field::frequency, 8, 0x1'0000'0001);
  file.set_last(record_kind::service, service_field::video_tag, 1, 0xA1)
      .set_last(record_kind::service, service_field::video_pid, 2, 0xA2A3);
  file.set_last(record_kind::service, service_field::video_ecm_pid, 2, 0xA4)
      .set_last(record_kind::service, service_field::audio_tag, 1, 0xA5);
  file.set_last(record_kind::service, service_field::audio_pid, 2, 0xFFFF);
  const log_capture log(3);

  load(file.data);

  const lines all = log.writes();
  ASSERT_GT(all.size(), 15U);
  EXPECT_EQ(
      lines(all.begin() + 7, all.begin() + 15),
      (lines{
          "ChannelAPI load_channel_internal:# channel_list.network_num 1\n",
          "ChannelAPI load_channel_internal:# channel_list.network_num 1\n",
          "ChannelAPI load_channel_internal:# net_index 1 tp_num 1 , network_name : Astra \n",
          "ChannelAPI load_channel_internal:# net_index 1 tp_num 1 , network_name : Astra \n",
          "ChannelAPI load_channel_internal:# tp_ch_info->rch_num 2\n",
          "ChannelAPI load_channel_internal:# tp_ch_info->rch_num 2\n",
          "tp 11000000, ts_id 0x0203, sid 0x0007, vtag 0x0000, vpid 0x0000, vecm 0x0000, atag 0x0000, apid 0x0000]\n",
          "tp 4294967297, ts_id 0x0203, sid 0x0008, vtag 0x00a1, vpid 0xa2a3, vecm 0x00a4, atag 0x00a5, apid "
          "0xffff]\n"}));
}

TEST_F(LoadChannel, LinksThenSortsThenLooksForGroupsThenTellsItsStatus) {
  channel_file file;
  file.service(first).entry(VIEW_ALL, first, 1);
  const log_capture log(2);

  load(file.data, SORT_NUMBER);

  const lines all = log.writes();
  const auto position = [&](const std::string &line) { return std::ranges::find(all, line) - all.begin(); };
  const lines order = {"ChannelAPI link_rch_info:# \n",
                       "SORT_NUMBER\n",
                       "ERROR: load_group_list:# Fail to open 'genre.dat'\n",
                       "ERROR: load_group_list:# Fail to open 'country.dat'\n",
                       " channel list version : 10\n",
                       "ch_number,\tfrequency,\tpolarisationt,\tnet_index,\tnetwork_id,\ttransport_id,\tservice_id\n"};
  EXPECT_TRUE(std::ranges::is_sorted(order, {}, position));
  EXPECT_LT(position(order.back()), std::ssize(all));
}

TEST_F(LoadChannel, NamesTheSettingsOfTheFileInItsStatus) {
  channel_file file = small_file();
  file.set(list_field::bouquet_id, 2, 0x1234)
      .set(list_field::use_group_list, 1, 5)
      .set(list_field::service_type, 1, 2)
      .set(list_field::net_index, 1, 0x55);
  file.entry(VIEW_TV, first, 1).entry(VIEW_RADIO, first, 1).entry(VIEW_RADIO, second, 1);
  file.entry(VIEW_PROMOTION, first, 1).entry(VIEW_USER, first, 1).set(list_field::vch_type, 2, VIEW_USER);
  for (int i = 0; i < 2; ++i) {
    file.entry(VIEW_USER, second, 2).entry(VIEW_PROMOTION, second, 2).entry(VIEW_PROMOTION, first, 1);
  }
  const log_capture log(2);

  load(file.data);

  EXPECT_EQ(log.writes_with("load \t"),
            (lines{"load \tservice_type : 2\n", "load \tuse_group_list : 'FTACAS'\n", "load \tbouquet : 4660\n",
                   "load \tnet_index : 85\n", "load \toriginal channel number : 2\n", "load \ttv channel number : 1\n",
                   "load \tradio channel number : 2\n", "load \tuser channel number : 3\n",
                   "load \tvch_type : 'USER CH'\n", "load \tpromotion channel number : 5\n"}));
}

TEST_F(LoadChannel, AnswersAMissingFileWithOneAndAnEmptyList) {
  const auto empty = test_support::initialised_list();
  list.bouquet_id = 1;

  EXPECT_EQ(load_named("missing.dat"), 1);
  EXPECT_EQ(test_support::list_in_memory(), empty);
}

TEST_F(LoadChannel, ReportsAMissingFile) {
  const log_capture log(0);

  load_named("missing.dat");

  EXPECT_EQ(log.writes(), (lines{"ERROR: load_channel_internal:# Fail to open '" + path("missing.dat") + "'\n",
                                 "ERROR: load_group_list:# Fail to open 'genre.dat'\n",
                                 "ERROR: load_group_list:# Fail to open 'country.dat'\n"}));
}

TEST_F(LoadChannel, TellsThePathAndTheLimitsBeforeItReportsAMissingFile) {
  const log_capture log(2);

  load_named("missing.dat");

  EXPECT_EQ(log.writes(), (lines{"ChannelAPI load_channel_internal:# (" + path("missing.dat") + ")\n",
                                 "\t\tMAX_CHANNEL\t\t5000\n", "\t\tFAV GROUP\t\t20\n", "\t\tFAV\t\t\t40\n",
                                 "\t\tchannel list version : 10\n", "\t\tchannel_st (312) * 5000  : 1560000\n",
                                 "\t\tchannel_list_st (460032) + channel_st 1560000  : 2020032\n",
                                 "ERROR: load_channel_internal:# Fail to open '" + path("missing.dat") + "'\n",
                                 "ERROR: load_group_list:# Fail to open 'genre.dat'\n",
                                 "ERROR: load_group_list:# Fail to open 'country.dat'\n"}));
}

TEST_F(LoadChannel, SaysNothingAboutAMissingFileBelowLevelZero) {
  const log_capture log(-1);

  load_named("missing.dat");

  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(LoadChannel, TakesADirectoryForAFileWithoutAHeader) {
  std::filesystem::create_directory(path("folder"));
  const log_capture log(0);

  EXPECT_EQ(load_named("folder"), -1);
  EXPECT_EQ(log.writes().at(0),
            "ERROR: load_channel_internal:# Fail to read the channel_list to '" + path("folder") + "' size 460032 \n");
}

}  // namespace
