// A service line of a channels.conf by its fields; what a test does not name does not matter to it.
#pragma once

#include <string>

namespace tool_test {

struct service_line {
  std::string name = "Service";
  std::string frequency = "12000";
  std::string parameters = "HC34M2S0";
  std::string source = "S13.5E";
  std::string symbol_rate = "27500";
  std::string video = "101";
  std::string audio = "102";
  std::string teletext = "0";
  std::string ca_ids = "0";
  std::string service_id = "1";
  std::string network_id = "1";
  std::string transport_id = "1";
  std::string radio_id = "0";

  [[nodiscard]] std::string text() const {
    return name + ':' + frequency + ':' + parameters + ':' + source + ':' + symbol_rate + ':' + video + ':' + audio +
           ':' + teletext + ':' + ca_ids + ':' + service_id + ':' + network_id + ':' + transport_id + ':' + radio_id +
           '\n';
  }
};

}  // namespace tool_test
