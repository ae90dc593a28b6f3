// Views of channels with flags, for the sort that partitions by one of them.
#pragma once

#include <channel/channel.h>

#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace test_support {

inline constexpr std::uint8_t locked = 0x02;
inline constexpr std::uint8_t fta = 0x04;

class sorting_by_flag_test : public store_test {
 protected:
  // Fills a view with one channel for each flag byte.
  std::vector<channel_st *> fill_flags(std::int8_t view, const std::vector<std::uint8_t> &flags) {
    std::vector<channel_st *> services = fill_view(view, static_cast<int>(flags.size()));
    for (std::size_t i = 0; i < flags.size(); ++i) {
      services[i]->flag = flags[i];
    }
    return services;
  }
};

}  // namespace test_support
