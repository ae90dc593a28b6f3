// Captures: the tables of a transponder, as packets and as sections.
#include <utility>

#include "seeds.h"
#include "support/transport_streams.h"

namespace fuzz {
namespace {

using namespace broadcast;

const descriptor eacem = {0x5F, std::string("\0\0\0\x28", 4)};

// Each table once, with every descriptor that is read.
std::vector<std::pair<std::uint16_t, sections>> tables() {
  const stream video = {0x1B, 0x200, {component_tag(1), ca_system(0x1830, 0x601)}};
  const stream audio = {0x03, 0x201, {component_tag(2), language("deu")}};
  const stream dolby = {0x06, 0x202, {{0x6A, std::string(1, '\0')}, language("eng")}};
  const std::vector<stream> rest = {{0x06, 0x203, {teletext("deu")}},
                                    {0x06, 0x204, {subtitling("deu")}},
                                    {0x0F, 0x205, {{0x7C, "\x58"}}},
                                    {0x06, 0x206, {{0x7F, "\x15\x01"}, {0x05, "AC-3"}}}};
  std::vector<stream> streams = {video, audio, dolby};
  streams.insert(streams.end(), rest.begin(), rest.end());
  const descriptor names = {0x5D, "swe" + std::string("\1P\3"
                                                      "Ett",
                                                      6)};
  const descriptor t2 = {0x7F, std::string("\x04\x01\x00\x2A\x47\x0E\x00\x07\x03\x19\x75\x00\x00", 13)};
  return {
      {0x00, program_association(1019, {{0, 0x10}, {101, 0x100}, {102, 0x101}})},
      {0x01, conditional_access({ca_system(0x1830, 0x91)})},
      {0x100, program_map(101, 0x200, streams, {ca_system(0x500, 0x600)})},
      {0x101, program_map(102, 0x211, {{0x03, 0x211, {}}})},
      {0x11, services(1019, 1,
                      {{101,
                        {service_name(0x19, "ARD",
                                      "\x05"
                                      "Das \x86"
                                      "Erste\x87"),
                         names},
                        true},
                       {102, {service_name(2, "ARD", "Bayern 3")}}})},
      {0x11, services(1101, 1, {{501, {service_name(1, "ZDF", "ZDF")}}}, false)},
      {0x10, network(1, {network_name("ASTRA 1")},
                     {{1019,
                       1,
                       {delivery(satellite{.is_s2 = true}),
                        {0x79, std::string("\x40\x05", 2)},
                        service_list({{101, 0x19}}),
                        eacem,
                        channel_numbers({{101, 7}, {102, 7}}),
                        {0x88, std::string("\0\x65\xFC\x09", 4)}}},
                      {1101, 1, {delivery(satellite{.frequency = 0x01183650})}}})},
      {0x10, network(2, {}, {{5, 9, {delivery(cable{})}}, {6, 9, {delivery(terrestrial{})}}, {7, 9, {t2}}}, false)},
      {0x11, bouquet(77, {bouquet_name("Culture")}, {{1019, 1, {service_list({{101, 1}, {102, 2}})}}})},
      {0x14, time_and_date(0xC079124500)},
      {0x1FFB, {section(0xC8, 1, "\x01")}},
  };
}

std::string as_sections() {
  std::string input = "S";
  for (const auto &[pid, all] : tables()) {
    for (const std::string &each : all) {
      const std::string body = each.substr(0, each.size() - (pid == 0x14 ? 0 : 4));
      input += {static_cast<char>(pid >> 8U), static_cast<char>(pid & 0xFFU), static_cast<char>(body.size() >> 8U),
                static_cast<char>(body.size() & 0xFFU)};
      input += body;
    }
  }
  return input;
}

transport_stream as_packets() {
  transport_stream stream;
  for (const auto &[pid, all] : tables()) {
    stream.add(pid, all);
  }
  return stream.add_pictures(0x200, 5);
}

}  // namespace

std::vector<seed> stream_seeds() {
  std::string cut = as_packets().bytes();
  cut.erase(500, 77);
  return {{"ts_scan", "sections", as_sections()},
          {"ts_scan", "packets", as_packets().bytes()},
          {"ts_scan", "packets_with_times", as_packets().bytes(4, 0)},
          {"ts_scan", "packets_with_check_bytes", as_packets().bytes(0, 16)},
          {"ts_scan", "missing_bytes", cut},
          {"ts_scan", "noise", std::string(400, 'G') + std::string(400, 'x')}};
}

}  // namespace fuzz
