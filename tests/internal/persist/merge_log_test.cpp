// What reading a new list says, line by line, at the level of each.
#include "merge_test.h"

namespace {

namespace list_field = test_support::list_field;
namespace network_field = test_support::network_field;
namespace service_field = test_support::service_field;
using test_support::channel_file;
using test_support::file_service;
using test_support::joined;
using test_support::lines;
using test_support::log_capture;
using test_support::new_list_summary;
using test_support::record_kind;
using test_support::three_networks;

class MergeLog : public test_support::merge_test {
 protected:
  void SetUp() override {
    merge_test::SetUp();
    file_service({.service_id = 1});
  }
};

TEST_F(MergeLog, SaysNothingBelowLevelTwo) {
  for (const int level : {-1, 0, 1}) {
    const log_capture log(level);

    merge(three_networks());

    EXPECT_EQ(log.writes(), lines{}) << level;
  }
}

TEST_F(MergeLog, TellsWhatItReadAtLevelTwo) {
  const log_capture log(2);

  merge(channel_file().service({.service_id = 1}));

  EXPECT_EQ(log.writes(), joined({{"ChannelAPI new_load_channel:# (" + new_path() + ")\n",
                                   "ChannelAPI new_load_channel:# new_channel_list->network_num 1\n"},
                                  new_list_summary(),
                                  {"ChannelAPI remove_invalid_virtual_channel:# \n", "ChannelAPI link_rch_info:# \n",
                                   "ChannelAPI check_load_channel:# add_count 0 , delete_count 0 \n"}}));
}

TEST_F(MergeLog, TellsOfEveryRecordAtLevelThree) {
  channel_file file;
  file.network(1, 1, "First").transponder(7, 12'000'000, 1).transponder(100, 11'000'000, 0);
  file.service({.ts_id = 0x00AB, .frequency = 11'000'000, .service_id = 1});
  file.set_last(record_kind::service, service_field::video_tag, 1, 2)
      .set_last(record_kind::service, service_field::video_pid, 2, 0x0101);
  file.set_last(record_kind::service, service_field::video_ecm_pid, 2, 0x1FFF)
      .set_last(record_kind::service, service_field::audio_tag, 1, 0xFE);
  file.set_last(record_kind::service, service_field::audio_pid, 2, 0xFFFF)
      .set_last(record_kind::service, service_field::frequency, 8, 0x1'00A7'D8C0);
  const log_capture log(3);

  merge(file.network(255, 2, "Second"));

  const lines all = log.writes();
  lines expected = {"ChannelAPI new_load_channel:# (" + new_path() + ")\n",
                    "ChannelAPI new_load_channel:# new_channel_list->network_num 2\n",
                    "ChannelAPI new_load_channel:# net_index 1 tp_num 2 , network_name : First \n",
                    "ChannelAPI new_load_channel:# tp_ch_info->rch_num 0\n",
                    "ChannelAPI new_load_channel:# tp_ch_info->rch_num 1\n",
                    "tp 4305967296, ts_id 0x00ab, sid 0x0001, vtag 0x0002, vpid 0x0101, vecm 0x1fff, atag 0x00fe, "
                    "apid 0xffff]\n",
                    "ChannelAPI new_load_channel:# net_index 255 tp_num 0 , network_name : Second \n"};
  const lines last = new_list_summary();
  expected.insert(expected.end(), last.begin(), last.end());
  ASSERT_GE(all.size(), expected.size());
  EXPECT_EQ(lines(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(expected.size())), expected);
}

TEST_F(MergeLog, SaysOfRecordsNothingAtLevelTwo) {
  const log_capture log(2);

  merge(three_networks());

  EXPECT_EQ(log.writes_with("net_index 1"), lines{});
  EXPECT_EQ(log.writes_with("tp_ch_info"), lines{});
  EXPECT_EQ(log.writes_with("vtag"), lines{});
}

TEST_F(MergeLog, TellsTheSettingsOfTheFile) {
  channel_file file;
  file.set(list_field::version, 2, 0xFFFE)
      .set(list_field::bouquet_id, 2, 0x1234)
      .set(list_field::use_group_list, 1, GROUP_GENRE)
      .set(list_field::service_type, 1, 0x80)
      .set(list_field::net_index, 1, 0x55);
  file.set(list_field::vnumber, 2, 1)
      .set(list_field::tv_vnumber, 2, 2)
      .set(list_field::radio_vnumber, 2, 3)
      .set(list_field::user_vnumber, 2, 4)
      .set(list_field::promo_vnumber, 2, 5);
  file.set(list_field::vch_type, 2, VIEW_RADIO);
  const log_capture log(2);

  merge(file);

  EXPECT_EQ(log.writes_with(" version : "), lines{" new channel list version : -2\n"});
  EXPECT_EQ(log.writes_with("load \t"),
            (lines{"load \tservice_type : -128\n", "load \tuse_group_list : 'GENRE'\n", "load \tbouquet : 4660\n",
                   "load \tnet_index : 85\n", "load \toriginal channel number : 1\n", "load \ttv channel number : 2\n",
                   "load \tradio channel number : 3\n", "load \tuser channel number : 4\n",
                   "load \tvch_type : 'RADIO CH'\n", "load \tpromotion channel number : 5\n"}));
}

TEST_F(MergeLog, NamesTheKindOfGroupsInUse) {
  const std::pair<int, const char *> names[] = {{0, "ALL"},     {1, "SATELLITE"}, {2, "GENRE"}, {3, "PROVIDER"},
                                                {4, "COUNTRY"}, {5, "FTACAS"},    {6, "FAV"},   {7, "NONE"},
                                                {127, "NONE"},  {128, "NONE"},    {255, "NONE"}};
  for (const auto &[kind, name] : names) {
    const log_capture log(2);
    merge(channel_file().set(list_field::use_group_list, 1, static_cast<std::uint64_t>(kind)));
    EXPECT_EQ(log.writes_with("use_group_list"), (lines{std::string("load \tuse_group_list : '") + name + "'\n"}));
  }
}

TEST_F(MergeLog, NamesTheViewOfTheFile) {
  const std::pair<int, const char *> names[] = {{0, "ALL CH"},  {1, "TV CH"}, {2, "RADIO CH"}, {3, "USER CH"},
                                                {4, "NONE"},    {5, "NONE"},  {9, "NONE"},     {10, "FAV CH"},
                                                {29, "FAV CH"}, {30, "NONE"}, {0x100, "NONE"}, {0xFFFF, "NONE"}};
  for (const auto &[view, name] : names) {
    const log_capture log(2);
    merge(channel_file().set(list_field::vch_type, 2, static_cast<std::uint64_t>(view)));
    EXPECT_EQ(log.writes_with("vch_type"), (lines{std::string("load \tvch_type : '") + name + "'\n"}));
  }
}

// The views of the new list are not looked at: counts out of range harm nobody.
TEST_F(MergeLog, TellsCountsOfViewsAsTheyStandAndUsesNone) {
  channel_file file = three_networks();
  file.set(list_field::vnumber, 2, 0xFFFF)
      .set(list_field::tv_vnumber, 2, 0x7FFF)
      .set(list_field::radio_vnumber, 2, 0x8000)
      .set(list_field::user_vnumber, 2, 5001);
  file.set(list_field::promo_vnumber, 2, 11)
      .set(list_field::favorite_group_num, 2, 21)
      .set(list_field::provider_num, 2, 501);
  const log_capture log(2);

  EXPECT_EQ(merge(file), 2);

  EXPECT_EQ(log.writes_with("channel number"),
            (lines{"load \toriginal channel number : -1\n", "load \ttv channel number : 32767\n",
                   "load \tradio channel number : -32768\n", "load \tuser channel number : 5001\n",
                   "load \tpromotion channel number : 11\n"}));
  EXPECT_EQ(log.writes_with("ERROR"), lines{});
  EXPECT_EQ(list.user_vnumber, 0);
}

TEST_F(MergeLog, PrintsANetworkNameWithinItsField) {
  channel_file file;
  file.network(2, 2, std::string(64, 'n')).set_last(record_kind::network, network_field::reserved_78, 2, 0x7878);
  const log_capture log(3);

  merge(file);

  EXPECT_EQ(
      log.writes_with("network_name"),
      lines{"ChannelAPI new_load_channel:# net_index 2 tp_num 0 , network_name : " + std::string(64, 'n') + " \n"});
}

}  // namespace
