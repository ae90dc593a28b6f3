// Saving: results, log lines, what stands in the file, and files that cannot be written. A save, failed or not, must
// leave the list alone.
#include <cstring>
#include <filesystem>

#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

using test_support::channel_file;
using test_support::file_service;
using test_support::file_test;
using test_support::log_capture;
using test_support::read_file;
using test_support::write_file;
using lines = std::vector<std::string>;

class SaveChannel : public file_test {
 protected:
  [[nodiscard]] std::string fails_to_write(const std::string &what) const {
    return "ERROR: save_channel_internal:# Fail to write the " + what + " to '" + path() + "'\n";
  }
};

TEST_F(SaveChannel, WritesAnEmptyListAsItsHeaderAlone) {
  EXPECT_EQ(save_channel("list.dat"), 1);

  EXPECT_EQ(read_file(path()).size(), 460'032U);
  EXPECT_EQ(read_file(path()), channel_file().data);
}

TEST_F(SaveChannel, WritesRecordsDepthFirstInListOrder) {
  channel_file expected;
  expected.network(2, 20, "Network").transponder(200, 12'000'000, 1);
  expected.service({.net_index = 2, .network_id = 20, .ts_id = 200, .frequency = 12'000'000, .polarisation = 1});
  expected.transponder(201, 12'500'000, 0).network(1, 1, "Network").transponder(100, 11'000'000, 0);
  file_service({.net_index = 2, .network_id = 20, .ts_id = 200, .frequency = 12'000'000, .polarisation = 1});
  network_ch_st *second = get_network_ch_info(2, 20);
  list_add_tail(&alloc_tp_ch_info(201, 12'500'000, 0)->list, &second->tp_list);
  ++second->tp_num;
  release_rch_info(file_service({}));

  auto written = save();

  // A new service's unset fields are not what this test is about.
  const std::size_t service = expected.records[3].offset;
  written.replace(service + 246, 42, expected.data.substr(service + 246, 42));
  EXPECT_EQ(written, expected.data);
}

TEST_F(SaveChannel, TellsItsStepsAtLevelTwo) {
  file_service({.service_id = 1});
  file_service({.service_id = 2});
  file_service({.network_id = 2, .service_id = 1});
  list.use_group_list = GROUP_FTACAS;
  list.vnumber = 21;
  list.tv_vnumber = 22;
  list.radio_vnumber = 23;
  list.user_vnumber = 24;
  list.promo_vnumber = 5;
  list.bouquet_id = 0x1234;
  list.service_type = 2;
  const log_capture log(2);

  EXPECT_EQ(save_channel("list.dat"), 1);

  const std::string trace = "ChannelAPI save_channel_internal:# ";
  EXPECT_EQ(log.writes(), (lines{trace + "(" + path() + ")\n",
                                 trace + "          SAVE CHANNEL       \n",
                                 trace + "vch_type : 'ALL CH'\tchannel list (" + path() + ") - 21 channels\n",
                                 trace + "\n\t\t NETWORK LIST : 2\n",
                                 trace + " sizeof(struct channel_list_st) 460032 \n",
                                 trace + " sizeof(struct network_ch_st) 416 \n",
                                 trace + " sizeof(struct tp_ch_st) 336 \n",
                                 trace + " sizeof(struct network_ch_st) 416 \n",
                                 trace + " sizeof(struct tp_ch_st) 336 \n",
                                 trace + "#######################\n",
                                 "channel list version : 10\n",
                                 "save \tservice_type : 2\n",
                                 "save \tuse_group_list : 'FTACAS'\n",
                                 "save \tbouquet : 4660\n",
                                 "save \toriginal channel number : 21\n",
                                 "save \ttv channel number : 22\n",
                                 "save \tradio channel number : 23\n",
                                 "save \tuser channel number : 24\n",
                                 "save \tvch_type : 'ALL CH'\n",
                                 "save \tpromotion channel number : 5\n",
                                 trace + "#######################\n"}));
}

TEST_F(SaveChannel, SaysNothingAtLevelOneWhenAllIsWell) {
  file_service({});
  const log_capture log(1);

  EXPECT_EQ(save_channel("list.dat"), 1);

  EXPECT_EQ(log.writes(), lines{});
}

// The first lines come before the file is opened: a directory that is not there keeps the disk out of it.
TEST_F(SaveChannel, NamesTheCurrentViewAndItsCount) {
  list.vnumber = 1;
  list.tv_vnumber = 2;
  list.radio_vnumber = 3;
  list.user_vnumber = 4;
  list.promo_vnumber = 5;
  list.favorite_vnumber[0] = 6;
  list.favorite_vnumber[19] = 7;
  struct {
    std::int8_t code;
    std::string name;
    int count;
  } const cases[] = {{0, "ALL CH", 1},  {1, "TV CH", 2},   {2, "RADIO CH", 3}, {3, "USER CH", 4}, {5, "NONE", 5},
                     {10, "FAV CH", 6}, {29, "FAV CH", 7}, {30, "NONE", 1},    {4, "NONE", 1},    {-1, "NONE", 1}};
  for (const auto &[code, name, count] : cases) {
    change_vindex_type(code);
    const log_capture log(2);
    save_channel("missing/list.dat");
    EXPECT_EQ(log.writes().at(2), "ChannelAPI save_channel_internal:# vch_type : '" + name + "'\tchannel list (" +
                                      path("missing/list.dat") + ") - " + std::to_string(count) + " channels\n");
  }
}

TEST_F(SaveChannel, NamesEveryGroupKind) {
  const lines names = {"ALL", "SATELLITE", "GENRE", "PROVIDER", "COUNTRY", "FTACAS", "FAV", "NONE"};
  for (std::size_t kind = 0; kind < names.size(); ++kind) {
    list.use_group_list = static_cast<std::int8_t>(kind);
    const log_capture log(2);
    save_channel("list.dat");
    EXPECT_EQ(log.writes_with("use_group_list"), (lines{"save \tuse_group_list : '" + names[kind] + "'\n"}));
  }
}

TEST_F(SaveChannel, AnswersZeroWhenTheFileCannotBeOpened) {
  const log_capture log(0);

  EXPECT_EQ(save_channel("missing/list.dat"), 0);

  EXPECT_EQ(log.writes(), (lines{"ERROR: save_channel_internal:# Fail to open '" + path("missing/list.dat") + "'\n"}));
}

TEST_F(SaveChannel, DoesNothingElseWhenTheFileCannotBeOpened) {
  file_service({});
  const log_capture log(2);

  save_channel("missing/list.dat");

  const lines all = log.writes();
  ASSERT_EQ(all.size(), 4U);
  EXPECT_EQ(all.at(1), "ChannelAPI save_channel_internal:#           SAVE CHANNEL       \n");
  EXPECT_EQ(all.at(3), "ERROR: save_channel_internal:# Fail to open '" + path("missing/list.dat") + "'\n");
}

TEST_F(SaveChannel, SaysNothingBelowLevelZero) {
  const log_capture log(-1);

  EXPECT_EQ(save_channel("missing/list.dat"), 0);

  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(SaveChannel, CannotOpenADirectory) {
  std::filesystem::create_directory(path("folder"));

  EXPECT_EQ(save_channel("folder"), 0);
}

TEST_F(SaveChannel, RefusesANullName) {
  const log_capture log(5);

  EXPECT_EQ(save_channel(nullptr), 0);

  EXPECT_EQ(log.writes(), (lines{"ERROR: save_channel:# name is null\n"}));
}

TEST_F(SaveChannel, CutsALongerFileThatWasThereBefore) {
  write_file(path(), test_support::bytes(600'000, 'x'));

  EXPECT_EQ(save_channel("list.dat"), 1);

  EXPECT_EQ(read_file(path()), channel_file().data);
}

TEST_F(SaveChannel, WritesInPlace) {
  write_file(path(), "before");
  std::filesystem::create_hard_link(path(), path("other name"));

  save_channel("list.dat");

  EXPECT_EQ(read_file(path("other name")), channel_file().data);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 2);
}

TEST_F(SaveChannel, LeavesTheListAsItIs) {
  channel_st *service = file_service({.service_id = 5});
  service->country_id = 9;
  test_support::append_entry(VIEW_ALL, test_support::entry_of(*service, 1));
  const auto before = test_support::list_in_memory();
  const channel_st service_before = *service;

  ASSERT_EQ(save_channel("list.dat"), 1);

  EXPECT_EQ(test_support::list_in_memory(), before);
  EXPECT_EQ(std::memcmp(service, &service_before, sizeof service_before), 0);
}

TEST_F(SaveChannel, WritesADestroyedListAsZeros) {
  destroy_channel_list();
  const log_capture log(2);

  EXPECT_EQ(save_channel("list.dat"), 1);

  EXPECT_EQ(read_file(path()), test_support::bytes(460'032, '\0'));
  EXPECT_EQ(log.writes_with(" channels\n").at(0),
            "ChannelAPI save_channel_internal:# vch_type : 'ALL CH'\tchannel list (" + path() + ") - 0 channels\n");
}

TEST_F(SaveChannel, FailsOnAFullDisk) {
  std::filesystem::create_symlink("/dev/full", path());
  const log_capture log(0);

  EXPECT_EQ(save_channel("list.dat"), 0);

  EXPECT_EQ(log.writes(), (lines{fails_to_write("channel_list")}));
}

TEST_F(SaveChannel, LeavesTheListAsItIsWhenItFails) {
  std::filesystem::create_symlink("/dev/full", path());
  file_service({});
  const auto before = test_support::list_in_memory();

  save_channel("list.dat");

  EXPECT_EQ(test_support::list_in_memory(), before);
}

TEST_F(SaveChannel, SucceedsAgainAfterAFailure) {
  save_channel("missing/list.dat");

  EXPECT_EQ(save_channel("list.dat"), 1);
}

}  // namespace
