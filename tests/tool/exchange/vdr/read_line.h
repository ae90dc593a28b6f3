// Reads single lines for the tests of the channels.conf reader.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/vdr/vdr_channels_conf.h"
#include "tool/exchange/vdr/service_line.h"

namespace tool_test {

using pid_list = std::vector<std::uint16_t>;

// The service of a line that is right; fails the test when it is not.
inline chlist::vdr_service read(const service_line &line) {
  chlist::vdr_line_up line_up = chlist::parse_vdr_channels_conf(line.text());
  for (const auto &skipped : line_up.skipped) {
    ADD_FAILURE() << line.text() << skipped.reason;
  }
  return line_up.services.size() == 1 ? line_up.services.front() : chlist::vdr_service{};
}

// Why a line is skipped; empty when it is not.
inline std::string refusal(const service_line &line) {
  const chlist::vdr_line_up line_up = chlist::parse_vdr_channels_conf(line.text());
  EXPECT_EQ(line_up.services.size() + line_up.skipped.size(), 1U);
  return line_up.skipped.empty() ? "" : line_up.skipped.front().reason;
}

inline std::string refusal_of_text(std::string_view text) {
  const chlist::vdr_line_up line_up = chlist::parse_vdr_channels_conf(text);
  return line_up.skipped.size() == 1 ? line_up.skipped.front().reason : "";
}

inline pid_list pids(const std::vector<chlist::vdr_stream> &streams) {
  pid_list found;
  std::transform(streams.begin(), streams.end(), std::back_inserter(found),
                 [](const chlist::vdr_stream &stream) { return stream.pid; });
  return found;
}

}  // namespace tool_test
