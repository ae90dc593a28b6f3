// The letters of polarisations.
#pragma once

#include <cstdint>
#include <string_view>

namespace chlist {

struct filed_polarisation {
  std::string_view text;
  std::uint8_t polarisation = 0;
};

// A channel list tells two polarisations apart: left-hand circular is filed as horizontal, right-hand as vertical. The
// first letter of a polarisation is the one that is shown.
inline constexpr filed_polarisation filed_polarisations[] = {{"H", 0}, {"V", 1}, {"L", 0}, {"R", 1}};

}  // namespace chlist
