// Line-ups that are written as a folder of Enigma2 and read again: what comes back, and how long it takes.
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <string>

#include "tool/exchange/enigma2/lamedb_folder.h"
#include "tool/exchange/random_line_up.h"

namespace {

using namespace tool_test::enigma2;

std::string one_line(std::string text, bool is_quoted) {
  std::ranges::replace(text, '\n', ' ');
  std::ranges::replace(text, '\r', ' ');
  if (is_quoted) {
    std::ranges::replace(text, '"', '\'');
  }
  return text;
}

std::string provider_of(const line_up_service &service) {
  std::string text = one_line(service.provider, false);
  std::ranges::replace(text, ',', ' ');
  return text;
}

void expect_same(const line_up_service &read, const line_up_service &written, int version) {
  EXPECT_EQ(read.name, one_line(written.name, version == 5));
  EXPECT_EQ(read.provider, provider_of(written));
  EXPECT_EQ(read.is_listed, written.is_listed);
  EXPECT_EQ(read.fields.service_id, written.fields.service_id);
  EXPECT_EQ(read.fields.network_id, written.fields.network_id);
  EXPECT_EQ(read.fields.ts_id, written.fields.ts_id);
  EXPECT_EQ(read.fields.frequency, written.fields.frequency);
  EXPECT_EQ(read.fields.polarisation, read.source.starts_with('S') ? written.fields.polarisation : 0);
  EXPECT_EQ(read.fields.video_pid, written.fields.video_pid);
  EXPECT_EQ(read.fields.audio_pid, written.fields.audio_pid);
  EXPECT_EQ(read.fields.pcr_pid, written.fields.pcr_pid);
  EXPECT_EQ(read.fields.flag, written.fields.flag);
}

// The services of the ALL view first, as a line-up has them.
line_up random_list(unsigned seed) {
  line_up list = tool_test::random_line_up(seed).make(static_cast<int>(seed % 40), 0);
  std::stable_partition(list.services.begin(), list.services.end(),
                        [](const line_up_service &service) { return service.is_listed; });
  return list;
}

TEST(LamedbRoundTrip, RandomLineUpsComeBackButForTheirLosses) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    const int version = 3 + static_cast<int>(seed % 3);
    const line_up list = random_list(seed);

    const line_up read = read_folder(written_folder(list, version));

    ASSERT_EQ(skipped_in(read), texts{}) << seed;
    ASSERT_EQ(read.services.size(), list.services.size()) << seed;
    for (std::size_t i = 0; i < read.services.size(); ++i) {
      expect_same(read.services[i], list.services[i], version);
    }
    // What was read once is held whole.
    const folder again = written_folder(read, version);
    EXPECT_EQ(written_folder(read_folder(again), version), again) << seed;
  }
}

TEST(LamedbRoundTrip, AFullListTakesLittleTime) {
  line_up list = tool_test::random_line_up(1).make(5000, 20);
  std::ranges::for_each(list.services, [](line_up_service &service) { service.is_listed = true; });
  const std::clock_t begin = std::clock();

  const line_up read = read_folder(written_folder(list));

  EXPECT_EQ(read.services.size(), 5000U);
  EXPECT_LT(std::clock() - begin, 2 * CLOCKS_PER_SEC);
}

}  // namespace
