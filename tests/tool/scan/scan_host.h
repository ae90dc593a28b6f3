// `chlist scan` in a scratch directory, and captures for it.
#pragma once

#include <string>
#include <vector>

#include "support/transport_streams.h"
#include "tool/exchange/import_host.h"

namespace scan_test {

using namespace broadcast;

inline constexpr std::uint16_t pmt_pid = 0x100;  // of service 101, of the others behind it

inline std::string word(unsigned value) { return {static_cast<char>(value >> 8U), static_cast<char>(value & 0xFFU)}; }

// Two of television and one of radio on one transponder of a satellite.
struct astra {
  std::uint16_t ts_id = 1019;
  std::uint16_t network_id = 1;
  broadcast::satellite by;
  std::vector<service> all = {{101, {service_name(0x01, "ARD", "Das Erste")}},
                              {102, {service_name(0x19, "ARD", "arte HD")}, true},
                              {103, {service_name(0x02, "ARD", "Bayern 3")}}};
  descriptors about_network;  // further ones of the transport stream
  std::vector<transport> others;

  [[nodiscard]] std::vector<program> programs() const {
    std::vector<program> made = {{0, 0x10}};
    for (const service &each : all) {
      made.push_back({each.id, static_cast<std::uint16_t>(pmt_pid + each.id - 101)});
    }
    return made;
  }

  // The video on one PID, the audio on the next; radio has that alone.
  [[nodiscard]] static sections map_of(const service &each) {
    const auto video = static_cast<std::uint16_t>(0x200 + 0x10 * (each.id - 101));
    const bool is_radio = !each.about.empty() && each.about[0].data[0] == '\x02';
    std::vector<stream> streams;
    if (!is_radio) {
      streams.push_back({0x1B, video, {component_tag(1)}});
    }
    streams.push_back({0x03, static_cast<std::uint16_t>(video + 1), {component_tag(2), language("deu")}});
    return program_map(each.id, is_radio ? static_cast<std::uint16_t>(video + 1) : video, streams,
                       each.is_scrambled ? descriptors{ca_system(0x1830, 0x600)} : descriptors{});
  }

  [[nodiscard]] sections its_network() const {
    descriptors about = {delivery(by)};
    about.insert(about.end(), about_network.begin(), about_network.end());
    std::vector<transport> streams = {{ts_id, network_id, about}};
    streams.insert(streams.end(), others.begin(), others.end());
    return network(1, {network_name("ASTRA 1")}, streams);
  }

  [[nodiscard]] transport_stream capture() const {
    transport_stream made;
    made.add(0x00, program_association(ts_id, programs()));
    for (const program &each : programs()) {
      if (each.number != 0) {
        made.add(each.pid, map_of(all[each.number - 101U]));
      }
    }
    made.add(0x11, services(ts_id, network_id, all)).add(0x10, its_network());
    return made.add_pictures(0x200, 20);
  }
};

class scan_host : public tool_test::import_test {
 protected:
  void write_capture(const std::string &name, const transport_stream &stream) const {
    tool_test::write_file(path(name), stream.bytes());
  }

  tool_test::program_result scan(const std::vector<std::string> &more = {}) const {
    return run({"scan", "a.ts", "-o", "list.dat"}, more);
  }

  // The service with a number in ALL of the list that was loaded.
  static const channel_st &service_at(std::int16_t number) {
    static const channel_st none = {};
    const channel_st *found = get_channel(get_channel_index(number));
    EXPECT_NE(found, nullptr) << number;
    return found != nullptr ? *found : none;
  }

  static std::vector<std::string> names() {
    std::vector<std::string> all;
    for (std::int16_t at = 0; at < get_channel_list()->vnumber; ++at) {
      all.emplace_back(get_channel(at)->name[0].text);
    }
    return all;
  }
};

}  // namespace scan_test
