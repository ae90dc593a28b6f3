// Counts that do not fit their lists are reported by a save, never repaired.
#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

namespace list_field = test_support::list_field;
namespace network_field = test_support::network_field;
namespace transponder_field = test_support::transponder_field;
using test_support::file_service;
using test_support::file_test;
using test_support::log_capture;
using lines = std::vector<std::string>;

constexpr std::size_t first_network_at = test_support::list_size;
constexpr std::size_t first_transponder_at = first_network_at + test_support::network_size;

class WrongCount : public file_test {
 protected:
  // Three services on one transponder that counts another number of them.
  void SetUp() override {
    file_test::SetUp();
    for (const int id : {0x111, 0x222, 0x333}) {
      file_service({.net_index = 5, .network_id = 0xA, .ts_id = 0x123, .service_id = static_cast<std::uint16_t>(id)});
    }
    transponder = get_tp_ch_info_by_network_ch(get_network_ch_info(5, 0xA), 0x123, 0, 0);
  }

  tp_ch_st *transponder = nullptr;
};

TEST_F(WrongCount, OfServicesTooSmallIsReportedForEveryOneTooMany) {
  transponder->rch_num = 1;
  const log_capture log(0);

  const auto file = save();

  EXPECT_EQ(log.writes(), (lines{"ERROR: save_channel_internal:# nindex 5, on_id 0x0a, ts_id 0x123, s_id 0x222\n",
                                 "ERROR: save_channel_internal:# nindex 5, on_id 0x0a, ts_id 0x123, s_id 0x333\n",
                                 "ERROR: save_channel_internal:# tp_num = 3, tp_ch_info->rch_num = 1 \n"}));
  EXPECT_EQ(file.size(), 460'032U + 416 + 336 + 3 * 312);
  EXPECT_EQ(test_support::get(file, first_transponder_at + transponder_field::rch_num, 2), 1U);
  EXPECT_EQ(transponder->rch_num, 1);
}

TEST_F(WrongCount, OfServicesTooLargeIsReportedOnce) {
  transponder->rch_num = 4;
  const log_capture log(0);

  const auto file = save();

  EXPECT_EQ(log.writes(), (lines{"ERROR: save_channel_internal:# tp_num = 3, tp_ch_info->rch_num = 4 \n"}));
  EXPECT_EQ(file.size(), 460'032U + 416 + 336 + 3 * 312);
  EXPECT_EQ(test_support::get(file, first_transponder_at + transponder_field::rch_num, 2), 4U);
}

TEST_F(WrongCount, OfServicesIsNotReportedBelowLevelZero) {
  transponder->rch_num = 0;
  const log_capture log(-1);

  EXPECT_EQ(save_channel("list.dat"), 1);

  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(WrongCount, OfNetworksAndTranspondersIsNotCompared) {
  get_network_ch_info(5, 0xA)->tp_num = 7;
  list.network_num = 9;
  const log_capture log(1);

  const auto file = save();

  EXPECT_EQ(log.writes(), lines{});
  EXPECT_EQ(test_support::get(file, list_field::network_num, 2), 9U);
  EXPECT_EQ(test_support::get(file, first_network_at + network_field::tp_num, 2), 7U);
}

TEST_F(WrongCount, OfNetworksDoesNotEndTheWalk) {
  list.network_num = 0;
  get_network_ch_info(5, 0xA)->tp_num = 0;

  EXPECT_EQ(save().size(), 460'032U + 416 + 336 + 3 * 312);
  list.network_num = 1;
}

}  // namespace
