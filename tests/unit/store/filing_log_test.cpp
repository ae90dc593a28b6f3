// What the filing of channels logs, at which level, and that a line stands between its colour codes.
#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class FilingLog : public store_test {};

struct freeing {
  void operator()(channel_st *record) const { std::free(record); }
};

using owned_service = std::unique_ptr<channel_st, freeing>;

const lines filed_line = {"ChannelAPI add_rch_info:# rch: s_id(0xffff), n_id(0xabcd), ts_id(0x64), "
                          "name(Das Erste), type(0x0501)\n"};

TEST_F(FilingLog, AFiledChannelIsLoggedAtLevel2) {
  const service_data data = {.network_id = 0xABCD, .service_id = 0xFFFF, .source_type = 5, .name = "Das Erste"};
  const auto file = [&data] { return file_service(data); };

  EXPECT_EQ(writes_at(2, file), filed_line);
  reset_channel_list();
  EXPECT_EQ(writes_at(1, file), lines{});
}

TEST_F(FilingLog, TheSearchesBeforeFilingAreLoggedAtLevel3) {
  EXPECT_EQ(writes_at(3, [] { return file_service({}); }),
            (lines{"ChannelAPI get_network_ch_info:# Fail to find network_ch ni=1, on_id=0x1\n",
                   "ChannelAPI get_tp_ch_info_by_network_ch:# Fail to find tp_ch ts_id=0x64, freq=11000000, polar 0 \n",
                   "ChannelAPI add_rch_info:# rch: s_id(0x1), n_id(0x1), ts_id(0x64), name(Service), type(0x0101)\n"}));
}

TEST_F(FilingLog, ADuplicateIsAWarningAboutTheChannelThatIsThere) {
  file_service({.ts_id = 0x64, .service_type = 2, .source_type = 255, .name = "First"});
  const owned_service refused(make_service({.ts_id = 0x65, .name = "Second"}));
  const auto file_again = [&refused] { return add_rch_info(refused.get(), nullptr); };

  for (const int level : {1, 5}) {
    EXPECT_EQ(writes_at(level, file_again),
              lines{"WARNING: add_rch_info:# rch: s_id(0x1), n_id(0x1), ts_id(0x64), name(First), type(0xff02)\n"});
  }
  EXPECT_EQ(writes_at(0, file_again), lines{});
}

TEST_F(FilingLog, ANameWithoutTerminatorIsPrintedToIts96thByte) {
  const std::string name(96, 'x');
  const auto file = [&name](std::uint8_t slot_tail) {
    channel_st *service = make_service({.name = name});
    service->name[0].reserved_97 = slot_tail;
    return service;
  };
  channel_st *filed = file('!');
  const owned_service refused(file('!'));

  EXPECT_EQ(
      writes_at(2, [filed] { return add_rch_info(filed, nullptr); }),
      lines{"ChannelAPI add_rch_info:# rch: s_id(0x1), n_id(0x1), ts_id(0x64), name(" + name + "), type(0x0101)\n"});
  EXPECT_EQ(
      writes_at(1, [&refused] { return add_rch_info(refused.get(), nullptr); }),
      lines{"WARNING: add_rch_info:# rch: s_id(0x1), n_id(0x1), ts_id(0x64), name(" + name + "), type(0x0101)\n"});
}

TEST_F(FilingLog, ALineStandsBetweenTheColourCodes) {
  const log_capture log(0);

  add_rch_info(nullptr, nullptr);

  const std::string raw = log.raw();
  EXPECT_EQ(raw.rfind("\033[32mERROR: add_rch_info:", 0), 0U) << raw;
  const std::string end = " rch is null\n\033[0m";
  ASSERT_GT(raw.size(), end.size());
  EXPECT_EQ(raw.substr(raw.size() - end.size()), end);
}

TEST_F(FilingLog, NoOtherEntryOfTheLevelTableCounts) {
  const log_capture log(-1);
  for (int module = 0; module < VERBOSITY_MODULES; ++module) {
    verbosity_map[module] = module == 7 ? -1 : 9;
  }

  file_service({});
  add_rch_info(nullptr, nullptr);

  EXPECT_EQ(log.raw(), "");
}

}  // namespace
