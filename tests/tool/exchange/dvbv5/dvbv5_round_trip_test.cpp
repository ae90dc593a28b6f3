// Line-ups that are written in the DVBv5 format and read again: what comes back, and how long it takes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

#include "tool/exchange/dvbv5/dvbv5_text.h"

namespace {

using namespace tool_test::dvbv5;

// What the format gives of a service, by what its losses say.
line_up_service as_read(line_up_service service, const std::string &source, std::size_t line) {
  line_up_service made;
  std::ranges::replace(service.name, '[', '(');
  std::ranges::replace(service.name, ']', ')');
  std::ranges::replace(service.name, '\n', ' ');
  std::ranges::replace(service.name, '\r', ' ');
  made.name = service.name.erase(0, service.name.find_first_not_of(" \t"));
  made.line = line;
  made.source = source;
  made.number = service.is_listed ? service.number : std::nullopt;
  made.fields.service_id = service.fields.service_id;
  made.fields.network_id = service.fields.network_id;
  made.fields.ts_id = service.fields.ts_id;
  made.fields.frequency = service.fields.frequency;
  made.fields.polarisation = source.starts_with('S') ? service.fields.polarisation : std::uint8_t{0};
  made.fields.video_pid = service.fields.video_pid;
  made.fields.audio_pid = service.fields.audio_pid;
  return made;
}

void expect_same(const line_up_service &read, const line_up_service &expected) {
  EXPECT_EQ(read.name, expected.name);
  EXPECT_EQ(read.number, expected.number);
  EXPECT_EQ(read.fields.service_id, expected.fields.service_id);
  EXPECT_EQ(read.fields.network_id, expected.fields.network_id);
  EXPECT_EQ(read.fields.ts_id, expected.fields.ts_id);
  EXPECT_EQ(read.fields.frequency, expected.fields.frequency);
  EXPECT_EQ(read.fields.polarisation, expected.fields.polarisation);
  EXPECT_EQ(read.fields.video_pid, expected.fields.video_pid);
  EXPECT_EQ(read.fields.audio_pid, expected.fields.audio_pid);
}

TEST(Dvbv5RoundTrip, RandomLineUpsComeBackButForTheirLosses) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    const line_up list = tool_test::random_line_up(seed).make(static_cast<int>(seed % 30), 2);

    const line_up read = parse(written(list));

    ASSERT_TRUE(read.skipped.empty()) << seed << ": " << read.skipped.front().reason;
    ASSERT_EQ(read.services.size(), list.services.size()) << seed;
    for (std::size_t i = 0; i < read.services.size(); ++i) {
      expect_same(read.services[i], as_read(list.services[i], read.services[i].source, read.services[i].line));
    }
    // What was read once is written without another loss of its own, and comes back whole.
    EXPECT_EQ(written(parse(written(read))), written(read)) << seed;
  }
}

TEST(Dvbv5RoundTrip, AFullListTakesLittleTime) {
  const line_up list = tool_test::random_line_up(1).make(5000, 20);
  const std::clock_t begin = std::clock();

  const line_up read = parse(written(list));

  EXPECT_EQ(read.services.size(), 5000U);
  EXPECT_LT(std::clock() - begin, 2 * CLOCKS_PER_SEC);
}

}  // namespace
