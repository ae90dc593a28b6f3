// The sums that files keep of others: FNV-1a, whatever is done to be quick.
#include "chlist/files/fingerprint.h"

#include <gtest/gtest.h>

namespace {

using chlist::fingerprint_of;

TEST(Fingerprint, IsThePublishedOne) {
  EXPECT_EQ(fingerprint_of(""), "cbf29ce484222325");
  EXPECT_EQ(fingerprint_of("a"), "af63dc4c8601ec8c");
  EXPECT_EQ(fingerprint_of("foobar"), "85944171f73967e8");
}

std::string byte_by_byte(const std::string &bytes) {
  std::uint64_t sum = 0xCBF29CE484222325;
  for (const char c : bytes) {
    sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  }
  return fmt::format("{:016x}", sum);
}

TEST(Fingerprint, OfZerosIsThatOfEachOfThem) {
  for (std::size_t before = 0; before < 10; ++before) {
    for (std::size_t zeros = 0; zeros < 40; ++zeros) {
      const std::string bytes = std::string(before, 'b') + std::string(zeros, '\0') + "behind";
      EXPECT_EQ(fingerprint_of(bytes), byte_by_byte(bytes)) << before << ' ' << zeros;
      EXPECT_EQ(fingerprint_of(bytes.substr(0, before + zeros)), byte_by_byte(bytes.substr(0, before + zeros)));
    }
  }
}

}  // namespace
