// What a merge adds to the hierarchy: the record itself, filed where it belongs, and marked.
#include "merge_test.h"

namespace {

namespace service_field = test_support::service_field;
using test_support::channel_file;
using test_support::file_service;
using test_support::lines;
using test_support::log_capture;
using test_support::record_kind;
using test_support::service_data;
using test_support::view_sizes;
using test_support::writes_at_levels;
using sizes = std::vector<int>;

class MergeAdding : public test_support::merge_test {};

TEST_F(MergeAdding, CreatesNetworkAndTransponder) {
  channel_file file;
  file.network(3, 4, std::string(64, 'n')).transponder(5, 6'000'000, 1);

  EXPECT_EQ(
      merge(file.service(
          {.net_index = 3, .network_id = 4, .ts_id = 5, .frequency = 6'000'000, .service_id = 7, .polarisation = 1})),
      1);

  ASSERT_TRUE(test_support::counts_match_lists());
  ASSERT_EQ(list.network_num, 1);
  const network_ch_st &network = *test_support::networks().front();
  EXPECT_EQ(network.net_index, 3);
  EXPECT_EQ(network.network_id, 4);
  EXPECT_EQ(std::string(network.network_name, 64), std::string(64, 'n'));
  ASSERT_EQ(network.tp_num, 1);
  const tp_ch_st &transponder = *test_support::transponders(network).front();
  EXPECT_EQ(transponder.ts_id, 5);
  EXPECT_EQ(transponder.frequency, 6'000'000U);
  EXPECT_EQ(transponder.polarisation, 1);
  ASSERT_EQ(transponder.rch_num, 1);
  EXPECT_EQ(test_support::services(transponder).front()->service_id, 7);
}

TEST_F(MergeAdding, TakesNoEmptyNetworkOrTransponder) {
  EXPECT_EQ(merge(channel_file().network(1, 1, "Empty").network(2, 2, "No services").transponder(1, 1, 0)), 0);

  EXPECT_EQ(list.network_num, 0);
  EXPECT_TRUE(test_support::counts_match_lists());
}

TEST_F(MergeAdding, UsesTheNetworkAndTransponderThatAreThere) {
  file_service({.service_id = 1})->country_id = 1;
  network_ch_st *network = test_support::networks().front();

  EXPECT_EQ(merge(channel_file().network(1, 1, "Other name").service({.ts_id = 9, .service_id = 2})), 1);

  EXPECT_EQ(test_support::networks(), std::vector{network});
  EXPECT_STREQ(network->network_name, "Network");
  ASSERT_EQ(network->tp_num, 1);
  EXPECT_EQ(test_support::transponders(*network).front()->rch_num, 2);
  EXPECT_EQ(test_support::transponders(*network).front()->ts_id, 100);
  EXPECT_TRUE(test_support::counts_match_lists());
}

TEST_F(MergeAdding, NamesANetworkAfterTheOneThatTheServiceHungFrom) {
  channel_file file;
  file.service({.net_index = 1, .network_id = 1}).set_last(record_kind::service, service_field::net_index, 1, 77);

  EXPECT_EQ(merge(file), 1);

  ASSERT_EQ(list.network_num, 1);
  EXPECT_EQ(test_support::networks().front()->net_index, 77);
  EXPECT_STREQ(test_support::networks().front()->network_name, "Network");
}

TEST_F(MergeAdding, CarriesEveryByteButTheMark) {
  channel_file file;
  file.service({.service_id = 0x1234});
  for (std::size_t at = 8; at < test_support::service_size; ++at) {
    const bool is_identity =
        at == 216 || (at >= 224 && at < 232) || (at >= 234 && at < 236) || at == 240 || (at >= 241 && at < 245);
    if (!is_identity) {
      file.set_last(record_kind::service, at, 1, at % 255 + 1);
    }
  }
  const std::size_t record = file.records.back().offset;
  test_support::bytes expected = file.data.substr(record);
  test_support::put(expected, service_field::country_id, 2, 1);

  EXPECT_EQ(merge(file), 1);

  EXPECT_EQ(save().substr(record), expected);
}

TEST_F(MergeAdding, KeepsTheOrderOfTheNewList) {
  channel_file file;
  file.service({.service_id = 9}).service({.service_id = 3}).service({.frequency = 12'000'000, .service_id = 7});
  file.service({.net_index = 2, .service_id = 1}).service({.net_index = 2, .service_id = 8});

  EXPECT_EQ(merge(file), 5);

  EXPECT_EQ(test_support::service_ids(VIEW_ALL), (std::vector<int>{9, 3, 7, 1, 8}));
  EXPECT_EQ(test_support::service_ids(VIEW_TV), (std::vector<int>{9, 3, 7, 1, 8}));
  EXPECT_TRUE(test_support::counts_match_lists());
}

TEST_F(MergeAdding, MarksWhatItAddsWhateverTheFileHeld) {
  channel_file file;
  file.service({.service_id = 1})
      .service({.service_id = 2})
      .set_last(record_kind::service, service_field::country_id, 2, 0xFFFF);

  merge(file);

  EXPECT_EQ(find({.service_id = 1})->country_id, 1);
  EXPECT_EQ(find({.service_id = 2})->country_id, 1);
}

TEST_F(MergeAdding, TakesAServiceThatTheNewListHoldsTwiceOnce) {
  channel_file file;
  file.service({.service_id = 1, .name = "First"}).service({.service_id = 1, .name = "Second"});
  file.service({.frequency = 11'002'499, .service_id = 1, .name = "Third"});

  EXPECT_EQ(merge(file), 1);

  EXPECT_EQ(list.vnumber, 1);
  EXPECT_STREQ(find({.service_id = 1})->name[0].text, "First");
  EXPECT_TRUE(test_support::counts_match_lists());
}

TEST_F(MergeAdding, TellsAtLevelTwoAndNotBelow) {
  const service_data data = {.net_index = 200,
                             .network_id = 40'000,
                             .ts_id = 50'000,
                             .frequency = 5'000'000'000,
                             .service_id = 0xC005,
                             .polarisation = 3,
                             .name = "News"};

  const lines all = writes_at_levels(2, 0, [&] { merge(channel_file().service(data)); });

  const lines tail(all.end() - 5, all.end());
  EXPECT_EQ(tail, (lines{"ChannelAPI add_rch_info:# rch: s_id(0xc005), n_id(0x9c40), ts_id(0xc350), name(News), "
                         "type(0x0101)\n",
                         "ChannelAPI check_load_channel:# add : 200, 40000, 50000, 5000000000, 49157, 3, "
                         "major_number 5 \n",
                         "ChannelAPI remove_invalid_virtual_channel:# \n", "ChannelAPI link_rch_info:# \n",
                         "ChannelAPI check_load_channel:# add_count 1 , delete_count 0 \n"}));
  reset_channel_list();
  EXPECT_EQ(test_support::writes_at(1, [&] { return merge(channel_file().service(data)); }), lines{});
}

// A host that lost count of its networks: what is filed is not found again, and no view can list it.
TEST_F(MergeAdding, SaysWhenWhatItFiledIsNotFound) {
  file_service({.service_id = 1})->country_id = 1;
  list.network_num = 0;
  const log_capture log(0);

  EXPECT_EQ(merge(channel_file().service({.service_id = 200})), 1);

  EXPECT_EQ(log.writes(), lines{"ERROR: check_load_channel:#  can't find channel  \n"});
  EXPECT_EQ(view_sizes(), (sizes{0, 0, 0, 0, 0, 0}));
  list.network_num = 0;
  EXPECT_EQ(test_support::writes_at(-1, [&] { return merge(channel_file().service({.service_id = 201})); }), lines{});
  list.network_num = 1;
  ASSERT_NE(find({.service_id = 200}), nullptr);
  EXPECT_EQ(find({.service_id = 200})->country_id, 1);
  EXPECT_TRUE(test_support::counts_match_lists());
}

TEST_F(MergeAdding, SaysSoOfAServiceThatWasNotTakenEither) {
  channel_st *filed = file_service({.service_id = 1});
  filed->country_id = 1;
  list.network_num = 0;

  const lines all = test_support::writes_at(1, [&] { EXPECT_EQ(merge(channel_file().service({.service_id = 1})), 1); });

  EXPECT_EQ(all, (lines{"WARNING: add_rch_info:# rch: s_id(0x1), n_id(0x1), ts_id(0x64), name(Service), "
                        "type(0x0101)\n",
                        "ERROR: check_load_channel:#  can't find channel  \n"}));
  list.network_num = 1;
  EXPECT_EQ(find({.service_id = 1}), filed);
  EXPECT_TRUE(test_support::counts_match_lists());
}

TEST_F(MergeAdding, NeedsNoInitialisedList) {
  destroy_channel_list();
  const log_capture log(0);

  EXPECT_EQ(merge(channel_file().service({.service_id = 1})), 1);

  EXPECT_EQ(log.writes(), lines{"ERROR: link_rch_info:#  channel_list NULL !! "});
  EXPECT_EQ(list.vnumber, 1);
  EXPECT_EQ(list.vch[0].rch, find({.service_id = 1})) << "without the help of the links";
  EXPECT_TRUE(test_support::counts_match_lists());
}

}  // namespace
