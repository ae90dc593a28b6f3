// A line-up of captures: transponders that several tell of are one, services get what the tables say of them, and the
// numbers that the network gives.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/loss_counts.h"
#include "chlist/line_up/line_up.h"
#include "chlist/scan/capture_reader.h"
#include "chlist/scan/capture_summary.h"

namespace chlist {

// Where somebody tuned to for a capture.
struct tuned_place {
  std::uint32_t frequency_khz = 0;
  std::optional<unsigned> polarisation;  // by the two bits of EN 300 468; none of cables and antennas
};

// "11493H", "10773.25V", "346": MHz, and of a satellite the polarisation H, V, L or R.
std::optional<tuned_place> read_tuned_place(std::string_view text);

struct capture {
  std::string name;
  std::optional<tuned_place> tuned;  // what the network says, unless it is told
  read_capture read;
};

struct scan_options {
  std::string source;          // what all captures are received from; empty: as the network says
  bool leaves_others = false;  // services of transponders of which there is no capture
};

struct scanned_line_up {
  line_up list;                           // in the order of its numbers
  std::vector<capture_summary> captures;  // in their order
};

scanned_line_up line_up_of(const std::vector<capture> &captures, const scan_options &options, loss_counts &lost);

}  // namespace chlist
