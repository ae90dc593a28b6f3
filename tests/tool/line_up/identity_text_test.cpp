// Identities as text, read and written.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "chlist/line_up/selection.h"

namespace {

using channel::identity;
using chlist::identity_text;
using chlist::read_identity;

void expect_same(const identity &a, const identity &b) {
  EXPECT_EQ(a.net_index, b.net_index);
  EXPECT_EQ(a.network_id, b.network_id);
  EXPECT_EQ(a.ts_id, b.ts_id);
  EXPECT_EQ(a.frequency, b.frequency);
  EXPECT_EQ(a.polarisation, b.polarisation);
  EXPECT_EQ(a.service_id, b.service_id);
}

TEST(IdentityText, IsFieldsBetweenColons) {
  EXPECT_EQ(identity_text(identity{1, 2, 3, 11'727'480, 5, 0}), "1:2:3:11727480H:5");
  EXPECT_EQ(identity_text(identity{255, 65535, 65535, 4'294'967'295, 65535, 1}), "255:65535:65535:4294967295V:65535");
  EXPECT_EQ(identity_text(identity{0, 0, 0, 0, 0, 255}), "0:0:0:0V255:0");
}

TEST(IdentityText, IsReadInEitherCase) {
  const auto lower = read_identity("1:2:3:4v:5");
  const auto upper = read_identity("1:2:3:4V:5");
  ASSERT_TRUE(lower.has_value());
  ASSERT_TRUE(upper.has_value());
  expect_same(*lower, {1, 2, 3, 4, 5, 1});
  expect_same(*upper, *lower);
  ASSERT_TRUE(read_identity("1:2:3:4h:5").has_value());
}

TEST(IdentityText, CircularPolarisationsAreReadAsTheyAreFiled) {
  const auto left = read_identity("1:2:3:4L:5");
  const auto right = read_identity("1:2:3:4r:5");
  ASSERT_TRUE(left.has_value());
  ASSERT_TRUE(right.has_value());
  expect_same(*left, {1, 2, 3, 4, 5, 0});
  expect_same(*right, {1, 2, 3, 4, 5, 1});
}

TEST(IdentityText, ReadsWhatItWrites) {
  std::mt19937 random(7);
  for (int i = 0; i < 200; ++i) {
    const identity id = {static_cast<std::uint8_t>(random()),  static_cast<std::uint16_t>(random()),
                         static_cast<std::uint16_t>(random()), static_cast<std::uint32_t>(random()),
                         static_cast<std::uint16_t>(random()), static_cast<std::uint8_t>(random() % 4)};

    const auto read = read_identity(identity_text(id));

    ASSERT_TRUE(read.has_value()) << identity_text(id);
    expect_same(*read, id);
  }
}

TEST(IdentityText, EverythingElseIsNone) {
  for (const char *text : {"",
                           ":",
                           "1",
                           "1:2:3:4H",
                           "1:2:3:4H:",
                           "1:2:3:4H:5:",
                           "1:2:3:4H:5 ",
                           " 1:2:3:4H:5",
                           "1:2:3:4:5",
                           "1:2:3:4X:5",
                           "1:2:3:H:5",
                           "-1:2:3:4H:5",
                           "256:2:3:4H:5",
                           "1:65536:3:4H:5",
                           "1:2:65536:4H:5",
                           "1:2:3:4294967296H:5",
                           "1:2:3:4H:65536",
                           "1:2:3:4V256:5",
                           "1:2:3:4H1:5x",
                           "1:2:3:4H2:5",
                           "1:2:3:4R2:5",
                           "1:2:3:4",
                           "1:2:3:4HV:5"}) {
    EXPECT_FALSE(read_identity(text).has_value()) << text;
  }
}

}  // namespace
