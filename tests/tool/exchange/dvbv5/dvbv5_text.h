// Line-ups from texts of the DVBv5 format and texts from line-ups, whatever is lost on the way.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "chlist/exchange/dvbv5/dvbv5.h"
#include "tool/exchange/random_line_up.h"

namespace tool_test::dvbv5 {

using chlist::channel_number;
using chlist::line_up;
using chlist::line_up_service;
using chlist::loss_counts;
using tool_test::count_of;

inline line_up parse(std::string_view text) {
  loss_counts lost;
  return chlist::parse_dvbv5(text, lost);
}

inline std::string written(const line_up &list) { return chlist::write_dvbv5(list, {}).files.at(0).text; }

}  // namespace tool_test::dvbv5
