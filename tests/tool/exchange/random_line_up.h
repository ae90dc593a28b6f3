// Line-ups of random services for tests of formats, and what counts of losses say.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include "chlist/exchange/loss_counts.h"

namespace tool_test {

inline std::size_t count_of(const chlist::loss_counts &lost, std::string_view what) {
  for (const auto &row : lost.rows()) {
    if (row.what == what) {
      return row.count;
    }
  }
  return 0;
}

class random_line_up {
 public:
  explicit random_line_up(unsigned seed) : random_(seed) {}

  chlist::line_up make(int services, int groups) {
    chlist::line_up made;
    for (int i = 0; i < services; ++i) {
      made.services.push_back(service(i));
    }
    for (int i = 0; i < groups && services > 0; ++i) {
      made.favourites.push_back(group(made));
    }
    return made;
  }

 private:
  int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random_); }
  bool now_and_then() { return below(4) == 0; }
  std::uint16_t id() { return static_cast<std::uint16_t>(below(0x10000)); }
  std::uint16_t pid() { return now_and_then() ? std::uint16_t{0xFFFF} : static_cast<std::uint16_t>(1 + below(0x1FFF)); }

  std::string text() {
    static constexpr std::string_view letters[] = {"a", "Z", " ",  "\"", ",", "[", "]",   ":", ";",
                                                   "#", "=", "p:", "ø",  "ä", "Ł", "end", "'", "/"};
    std::string made;
    for (int i = below(8); i > 0; --i) {
      made += letters[below(std::size(letters))];
    }
    return made;
  }

  // Ids repeat, so that transponders of different places share them; the service id is the service's own.
  chlist::line_up_service service(int place) {
    static constexpr const char *sources[] = {"S19.2E", "S30.0W", "S0.0E", "C", "T", "S#1", "S", "Network", "", "C2"};
    chlist::line_up_service made;
    made.name = text();
    made.provider = text();
    made.source = sources[below(std::size(sources))];
    made.fields.source_type = 1;
    made.fields.service_id = static_cast<std::uint16_t>(place);
    made.fields.network_id = static_cast<std::uint16_t>(below(3));
    made.fields.ts_id = now_and_then() ? id() : static_cast<std::uint16_t>(below(3));
    made.fields.frequency = 500'000 + 1000 * below(4) + (made.source.starts_with("S") ? 10'000'000 : 0);
    made.fields.polarisation = static_cast<std::uint8_t>(below(2));
    made.fields.service_type = static_cast<std::uint8_t>(below(40));
    made.fields.video_pid = pid();
    made.fields.audio_pid = pid();
    made.fields.pcr_pid = pid();
    made.fields.flag = static_cast<std::uint8_t>(below(4) * CHANNEL_FLAG_LOCKED);
    made.is_listed = !now_and_then();
    if (made.is_listed) {
      made.number = {place + 1 + (now_and_then() ? below(50) : 0), now_and_then() ? below(3) : 0};
    }
    return made;
  }

  chlist::favourite_group group(const chlist::line_up &from) {
    chlist::favourite_group made{text(), {}};
    for (int i = below(6); i > 0; --i) {
      const auto place = static_cast<std::size_t>(below(static_cast<int>(from.services.size())));
      made.entries.push_back({place, {}});
    }
    return made;
  }

  std::mt19937 random_;
};

}  // namespace tool_test
