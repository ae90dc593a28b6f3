// Services for the list builder, by their number, and a builder that takes them.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/vdr/vdr.h"
#include "support/log_capture.h"
#include "support/store_builder.h"

namespace tool_test {

enum class kind { tv, radio, data };

// The n-th of many services: 100 on each transponder.
inline chlist::vdr_service service_at(int n, kind what = kind::tv) {
  chlist::vdr_service service;
  service.line = static_cast<std::size_t>(n) + 1;
  service.name = "Service " + std::to_string(n);
  service.source = "S13.5E";
  service.frequency_khz = 10'700'000 + static_cast<std::uint32_t>(n / 100) * 10'000;
  service.service_id = static_cast<std::uint16_t>(n);
  service.network_id = 158;
  service.transport_id = static_cast<std::uint16_t>(n / 100);
  service.video_pid = what == kind::tv ? 101 : 0;
  if (what != kind::data) {
    service.audio = {{102, "", 0}};
  }
  return service;
}

class list_builder_test : public test_support::store_test {
 protected:
  channel_st &add(const chlist::vdr_service &service) {
    EXPECT_EQ(refusal(service), std::nullopt);
    return *list.vch[list.vnumber - 1].rch;
  }

  // Why a service is left out; nothing when it is not.
  std::optional<std::string> refusal(const chlist::vdr_service &service) {
    return builder.add(chlist::line_up_service_of(service));
  }

  test_support::log_capture quiet{-1};
  chlist::list_builder builder;
};

}  // namespace tool_test
