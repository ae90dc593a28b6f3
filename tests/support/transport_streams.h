// Transport streams made table by table with the generators of libdvbpsi, so that what reads them is tested against
// something that was not made by it. Sections and packets may be damaged on their way in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace broadcast {

using sections = std::vector<std::string>;

struct descriptor {
  std::uint8_t tag = 0;
  std::string data;
};
using descriptors = std::vector<descriptor>;

struct program {
  std::uint16_t number = 0;
  std::uint16_t pid = 0;
};

struct stream {
  std::uint8_t type = 0;
  std::uint16_t pid = 0;
  descriptors about;
};

struct service {
  std::uint16_t id = 0;
  descriptors about;
  bool is_scrambled = false;
};

struct transport {
  std::uint16_t ts_id = 0;
  std::uint16_t network_id = 0;
  descriptors about;
};

// Tables. The version counts up to 31.
sections program_association(std::uint16_t ts_id, const std::vector<program> &programs, std::uint8_t version = 0);
sections program_map(std::uint16_t number, std::uint16_t pcr_pid, const std::vector<stream> &streams,
                     const descriptors &about = {}, std::uint8_t version = 0);
sections conditional_access(const descriptors &about);
sections services(std::uint16_t ts_id, std::uint16_t network_id, const std::vector<service> &all, bool is_actual = true,
                  std::uint8_t version = 0);
sections network(std::uint16_t id, const descriptors &about, const std::vector<transport> &streams,
                 bool is_actual = true, std::uint8_t version = 0);
sections bouquet(std::uint16_t id, const descriptors &about, const std::vector<transport> &streams);
sections time_and_date(std::uint64_t bits);

// Any section, with the right CRC: of what is behind the header, and which of how many it is.
std::string section(std::uint8_t table_id, std::uint16_t extension, const std::string &content,
                    std::uint8_t version = 0, std::uint8_t number = 0, std::uint8_t last = 0);
// With bytes changed, and a CRC that fits them again.
std::string with_crc(std::string section);

// Descriptors.
descriptor service_name(std::uint8_t type, const std::string &provider, const std::string &name);
descriptor network_name(const std::string &name);
descriptor bouquet_name(const std::string &name);
descriptor service_list(const std::vector<std::pair<std::uint16_t, std::uint8_t>> &services);
descriptor channel_numbers(const std::vector<std::pair<std::uint16_t, std::uint16_t>> &numbers);
descriptor language(const std::string &code);
descriptor component_tag(std::uint8_t tag);
descriptor ca_system(std::uint16_t system, std::uint16_t pid);
descriptor teletext(const std::string &language);
descriptor subtitling(const std::string &language);

struct satellite {
  std::uint32_t frequency = 0x01149375;  // digits, in steps of 10 kHz
  std::uint16_t position = 0x0192;       // digits, in tenths of a degree
  bool is_east = true;
  std::uint8_t polarisation = 0;
  bool is_s2 = false;
  std::uint8_t roll_off = 0;
  std::uint8_t modulation = 1;
  std::uint32_t symbol_rate = 0x0220000;  // digits, in steps of 100 symbols
  std::uint8_t fec = 4;
};
descriptor delivery(const satellite &by);

struct cable {
  std::uint32_t frequency = 0x03460000;  // digits, in steps of 100 Hz
  std::uint8_t modulation = 5;
  std::uint32_t symbol_rate = 0x0069000;
};
descriptor delivery(const cable &by);

struct terrestrial {
  std::uint32_t frequency = 50'600'000;  // in steps of 10 Hz
  std::uint8_t bandwidth = 0;
  std::uint8_t constellation = 2;
};
descriptor delivery(const terrestrial &by);

// Packets, which count up PID by PID.
class transport_stream {
 public:
  transport_stream &add(std::uint16_t pid, const sections &all);
  // Some packets that carry no tables.
  transport_stream &add_pictures(std::uint16_t pid, std::size_t packets);
  transport_stream &add_packet(std::uint16_t pid, const std::string &payload, bool starts_unit);

  [[nodiscard]] const std::vector<std::string> &packets() const { return packets_; }
  [[nodiscard]] std::vector<std::string> &packets() { return packets_; }
  // One behind the other, with so many bytes in front and behind each of them.
  [[nodiscard]] std::string bytes(std::size_t in_front = 0, std::size_t behind = 0) const;

 private:
  std::vector<std::string> packets_;
  std::map<std::uint16_t, unsigned> counters_;
};

}  // namespace broadcast
