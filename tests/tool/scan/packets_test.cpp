// Packets in bytes of any origin: their distance, pieces, what is lost between them.
#include "chlist/scan/packets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/transport_streams.h"

namespace {

chlist::byte_view view_of(const std::string &bytes) {
  return {reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size()};
}

struct walked {
  std::vector<std::uint16_t> pids;
  std::uint64_t skipped = 0;
};

// Fed in pieces, as read_whole() does: what is not done with comes again.
walked walk(const std::string &bytes, std::size_t piece) {
  walked result;
  chlist::packet_walk packets;
  std::string held;
  for (std::size_t at = 0; at <= bytes.size(); at += piece) {
    held += bytes.substr(at, piece);
    const bool is_end = at + piece > bytes.size();
    const std::size_t done =
        packets.over(view_of(held), is_end, [&](const chlist::ts_packet &each) { result.pids.push_back(each.pid()); });
    held.erase(0, done);
  }
  result.skipped = packets.skipped_bytes();
  return result;
}

broadcast::transport_stream twelve_packets() {
  broadcast::transport_stream stream;
  for (std::uint16_t pid = 100; pid < 112; ++pid) {
    stream.add_packet(pid, std::string(184, 'x'), false);
  }
  return stream;
}

std::vector<std::uint16_t> all_pids() { return {100, 101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111}; }

struct packet_form {
  const char *name;
  std::size_t in_front;
  std::size_t behind;
};

class ScanPackets : public ::testing::TestWithParam<packet_form> {
 protected:
  [[nodiscard]] std::string bytes() const { return twelve_packets().bytes(GetParam().in_front, GetParam().behind); }
};

TEST_P(ScanPackets, AreFoundInPiecesOfAnySize) {
  for (const std::size_t piece : {1U, 7U, 187U, 188U, 189U, 1000U, 100000U}) {
    const walked result = walk(bytes(), piece);
    EXPECT_EQ(result.pids, all_pids()) << piece;
    EXPECT_EQ(result.skipped, 0U) << piece;
  }
}

TEST_P(ScanPackets, AreFoundBehindNoise) {
  const walked result = walk("GGG" + std::string(1000, 'n') + 'G' + bytes(), 333);
  EXPECT_EQ(result.pids, all_pids());
  EXPECT_EQ(result.skipped, 1004U);
}

TEST_P(ScanPackets, OneWithoutItsSyncByteIsLostAlone) {
  std::string damaged = bytes();
  const std::size_t stride = 188 + GetParam().in_front + GetParam().behind;
  damaged[6 * stride + GetParam().in_front] = 'x';

  const walked result = walk(damaged, 500);

  std::vector<std::uint16_t> left = all_pids();
  left.erase(left.begin() + 6);
  EXPECT_EQ(result.pids, left);
  EXPECT_EQ(result.skipped, stride - GetParam().in_front);
}

TEST_P(ScanPackets, GoOnBehindMissingBytes) {
  std::string damaged = bytes();
  const std::size_t stride = 188 + GetParam().in_front + GetParam().behind;
  damaged.erase(5 * stride + 60, 77);

  const walked result = walk(damaged, 64);

  // The sixth packet took the beginning of the seventh.
  std::vector<std::uint16_t> left = all_pids();
  left.erase(left.begin() + 6);
  EXPECT_EQ(result.pids, left);
}

INSTANTIATE_TEST_SUITE_P(Forms, ScanPackets,
                         ::testing::Values(packet_form{"Plain", 0, 0}, packet_form{"WithTimes", 4, 0},
                                           packet_form{"WithCheckBytes", 0, 16}),
                         [](const auto &form) { return std::string(form.param.name); });

TEST(ScanBytes, NoiseHoldsNone) {
  std::string noise;
  std::uint32_t state = 1;
  for (int i = 0; i < 200'000; ++i) {
    state = state * 1664525 + 1013904223;
    noise += static_cast<char>(state >> 24U);
  }
  const walked result = walk(noise, 4096);
  EXPECT_EQ(result.pids.size(), 0U);
  EXPECT_EQ(result.skipped, noise.size());
}

TEST(ScanBytes, PayloadStandsBehindTheAdaptationField) {
  std::string packet = "G\x01\x02\x30\x02" + std::string(183, 'p');
  EXPECT_EQ(chlist::ts_packet(view_of(packet).data()).payload().size(), 181U);
  packet[4] = '\xB7';
  EXPECT_EQ(chlist::ts_packet(view_of(packet).data()).payload().size(), 0U);
  packet[4] = '\xFF';
  EXPECT_EQ(chlist::ts_packet(view_of(packet).data()).payload().size(), 0U);
  packet[3] = '\x10';
  EXPECT_EQ(chlist::ts_packet(view_of(packet).data()).payload().size(), 184U);
  packet[3] = '\x00';
  EXPECT_EQ(chlist::ts_packet(view_of(packet).data()).payload().size(), 0U);
}

}  // namespace
