// By the calendar of the C++ library.
#include "chlist/scan/broadcast_time.h"

#include <fmt/format.h>

#include <chrono>

namespace chlist {
namespace {

constexpr std::chrono::sys_days first_modified_julian_day = std::chrono::year(1858) / 11 / 17;

unsigned two_digits(std::uint64_t bits) { return static_cast<unsigned>((bits >> 4U & 0xFU) * 10 + (bits & 0xFU)); }

}  // namespace

std::optional<std::string> broadcast_time_text(std::uint64_t bits) {
  const std::chrono::year_month_day date =
      first_modified_julian_day + std::chrono::days(static_cast<int>(bits >> 24U & 0xFFFFU));
  const unsigned hour = two_digits(bits >> 16U);
  const unsigned minute = two_digits(bits >> 8U);
  const unsigned second = two_digits(bits);
  if (hour > 23 || minute > 59 || second > 60) {
    return std::nullopt;
  }
  return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02} UTC", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), hour, minute, second);
}

}  // namespace chlist
