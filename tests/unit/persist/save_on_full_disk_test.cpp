// Saving to a disk that fills up: at the header, at a record of each kind, and at the last bytes.

#include "support/channel_file.h"
#include "support/log_capture.h"
#include "support/resource_limits.h"

namespace {

using test_support::channel_file;
using test_support::file_size_limit;
using test_support::file_test;
using test_support::log_capture;
using lines = std::vector<std::string>;

class FullDisk : public file_test {
 protected:
  // Saves where a file grows to a size and no further; the log at a level.
  lines save_within(std::size_t size, int level) {
    const log_capture log(level);
    {
      const file_size_limit limit(size);
      EXPECT_EQ(save_channel("full.dat"), 0);
    }
    EXPECT_EQ(test_support::read_file(path("full.dat")).size(), size);
    return log.writes();
  }
  [[nodiscard]] lines fails_to_write(const std::string &what) const {
    return {"ERROR: save_channel_internal:# Fail to write the " + what + " to '" + path("full.dat") + "'\n"};
  }
};

// The end of the header stays in the stream's buffer: that it does not fit shows only when the buffer goes out.
TEST_F(FullDisk, IsNoticedWhenTheLastBytesGoOut) {
  EXPECT_EQ(save_within(460'000, 0), fails_to_write("channel_list"));
  EXPECT_EQ(save_within(460'000, -1), lines{});
}

// The log is caught in a file, too: no size is smaller than a line.
TEST_F(FullDisk, IsNoticedAtTheHeader) {
  for (const std::size_t size : {std::size_t{200}, std::size_t{4096}, test_support::list_size / 2}) {
    EXPECT_EQ(save_within(size, 0), fails_to_write("channel_list")) << size;
    EXPECT_EQ(save_within(size, -1), lines{}) << size;
  }
}

// There is room for the header, and a thousand records of a kind are more than the stream's buffer holds.
TEST_F(FullDisk, IsNoticedAtARecordOfEveryKind) {
  channel_file networks;
  channel_file transponders;
  channel_file services;
  transponders.network(1, 1, "One");
  services.network(1, 1, "One").transponder(100, 11'000'000, 0);
  for (std::uint16_t i = 1; i <= 1000; ++i) {
    networks.network(static_cast<std::uint8_t>(i), i, "Network");
    transponders.transponder(i, 10'000U * i, 0);
    services.service({.service_id = i});
  }
  const std::pair<channel_file *, std::string> cases[] = {
      {&networks, "tp_ch_info"}, {&transponders, "tp_ch_info"}, {&services, "rch_info"}};
  for (const auto &[file, what] : cases) {
    ASSERT_EQ(load(file->data), 10);
    const auto before = test_support::list_in_memory();

    EXPECT_EQ(save_within(test_support::list_size, 0), fails_to_write(what));
    EXPECT_EQ(save_within(test_support::list_size, -1), lines{});

    EXPECT_TRUE(test_support::list_in_memory() == before);
    EXPECT_TRUE(save() == file->data) << "a save that succeeds afterwards";
    reset_channel_list();
  }
}

}  // namespace
