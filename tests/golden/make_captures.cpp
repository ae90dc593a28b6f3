// Writes the captures of samples/, made of the tables that a moment of a broadcast holds: two transponders of one
// satellite, on one day and on the next, when a service has moved, another has a new name, and one is gone.
//   make_captures FOLDER           writes them
//   make_captures --check FOLDER   compares them with what is there
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "support/transport_streams.h"

namespace {

using namespace broadcast;

constexpr std::uint16_t network_id = 158;
constexpr std::uint16_t low = 2010;
constexpr std::uint16_t high = 2012;
const descriptor eacem = {0x5F, std::string("\0\0\0\x28", 4)};

struct one_service {
  std::uint16_t id;
  std::uint8_t type;
  std::string provider;
  std::string name;
  std::uint16_t number;
  bool is_scrambled = false;
};

using services_of_transponder = std::vector<one_service>;

struct day {
  std::uint64_t time;
  services_of_transponder at_low;
  services_of_transponder at_high;
};

const one_service kanal = {3101, 0x01, "Fjordkast",
                           "\x15Kanal Morgenr\xC3\xB8"
                           "de",
                           5};
const std::string citta_viva = "Citt\xC1"
                               "a Viva";  // in the table of ISO/IEC 6937, the accent in front
const one_service lantern = {3801, 0x02, "Lanterna TV", "Radio Lantern", 900};

const day today = {0xEFB6181500,
                   {{3001, 0x19, "Northlight", "Northlight One HD", 1},
                    {3002, 0x19, "Northlight", "Northlight Two HD", 2, true},
                    lantern},
                   {kanal, {3102, 0x01, "Lanterna TV", citta_viva, 6}, {3103, 0x01, "Quayside", "Harbour 7", 7}}};

const day next_day = {
    0xEFB7181500,
    {{3001, 0x19, "Northlight", "Northlight One HD", 1}, lantern, {3102, 0x01, "Lanterna TV", citta_viva, 6}},
    {kanal, {3103, 0x01, "Quayside", "Harbour Seven", 7}, {3104, 0x01, "Quayside", "Harbour Kids", 8}}};

transport of_network(std::uint16_t ts_id, const descriptor &delivery, const services_of_transponder &all) {
  std::vector<std::pair<std::uint16_t, std::uint16_t>> numbers;
  for (const one_service &each : all) {
    numbers.emplace_back(each.id, each.number);
  }
  return {ts_id, network_id, {delivery, eacem, channel_numbers(numbers)}};
}

sections network_of(const day &when) {
  const satellite one = {.frequency = 0x01130600, .position = 0x0135, .is_s2 = true, .modulation = 2};
  const satellite other = {.frequency = 0x01134500, .position = 0x0135, .polarisation = 1, .symbol_rate = 0x0275000};
  return network(network_id, {network_name("Fjord 13.5E")},
                 {of_network(low, delivery(one), when.at_low), of_network(high, delivery(other), when.at_high)});
}

sections map_of(const one_service &each, std::uint16_t video) {
  const auto audio = static_cast<std::uint16_t>(video + 1);
  const bool is_radio = each.type == 0x02;
  std::vector<stream> streams = {{0x03, audio, {component_tag(2), language("nor")}}};
  if (!is_radio) {
    const std::uint8_t type = each.type == 0x19 ? 0x1B : 0x02;
    streams.insert(streams.begin(), {type, video, {component_tag(1)}});
  }
  return program_map(each.id, is_radio ? audio : video, streams,
                     each.is_scrambled ? descriptors{ca_system(0x0B00, 0x700)} : descriptors{});
}

transport_stream capture_of(const day &when, std::uint16_t ts_id, const services_of_transponder &all) {
  std::vector<program> programs = {{0, 0x10}};
  std::vector<service> described;
  std::vector<std::pair<std::uint16_t, sections>> maps;
  for (const one_service &each : all) {
    const auto place = static_cast<std::uint16_t>(programs.size());
    const auto map_pid = static_cast<std::uint16_t>(0x100 + place);
    programs.push_back({each.id, map_pid});
    described.push_back({each.id, {service_name(each.type, each.provider, each.name)}, each.is_scrambled});
    maps.emplace_back(map_pid, map_of(each, static_cast<std::uint16_t>(0x190 + 0x10 * place)));
  }
  transport_stream made;
  made.add(0x00, program_association(ts_id, programs)).add(0x11, services(ts_id, network_id, described));
  for (const auto &[pid, map] : maps) {
    made.add(pid, map);
  }
  return made.add(0x10, network_of(when))
      .add(0x01, conditional_access({ca_system(0x0B00, 0x91)}))
      .add(0x14, time_and_date(when.time))
      .add_pictures(0x1FFF, 4);
}

bool take(const std::string &path, const std::string &bytes, bool is_check) {
  if (is_check) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {}) == bytes;
  }
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  return file.flush().good();
}

}  // namespace

int main(int argc, char **argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  const bool is_check = arguments.size() == 2 && arguments[0] == "--check";
  if (arguments.size() != (is_check ? 2U : 1U)) {
    std::fprintf(stderr, "usage: make_captures [--check] FOLDER\n");
    return 2;
  }
  for (const auto &[name, when] : {std::pair("today", &today), std::pair("next-day", &next_day)}) {
    const std::string folder = arguments.back() + '/';
    for (const auto &[frequency, capture] : {std::pair("11306h", capture_of(*when, low, when->at_low)),
                                             std::pair("11345v", capture_of(*when, high, when->at_high))}) {
      const std::string path = folder + frequency + '-' + name + ".ts";
      if (!take(path, capture.bytes(), is_check)) {
        std::fprintf(stderr, is_check ? "%s is not as it is made\n" : "%s cannot be written\n", path.c_str());
        return 1;
      }
    }
  }
  return 0;
}
