// What a capture came to: of which transponder it is, what is missing, and what may explain that.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "chlist/scan/capture_reader.h"

namespace chlist {

struct capture_summary {
  std::uint16_t network_id = 0;
  std::uint16_t ts_id = 0;
  std::uint32_t frequency_khz = 0;
  bool is_vertical = false;
  std::string source;
  std::string network_name;
  std::vector<std::string> findings;  // what is missing, or was left out
  std::vector<std::string> notes;     // what may explain it
};

// What of the tables was left out or lost on the way.
void tell_reading(const read_capture &read, capture_summary &summary);

}  // namespace chlist
