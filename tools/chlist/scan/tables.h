// The tables of a transport stream as they are broadcast (ISO/IEC 13818-1, 2.4.4; ETSI EN 300 468, 5.2): their records,
// with descriptors as bytes. Of each table the newest version that came whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace chlist {

// ISO/IEC 13818-1, table of PIDs, and EN 300 468, table 1.
namespace table_pid {
inline constexpr std::uint16_t program_association = 0x00;
inline constexpr std::uint16_t conditional_access = 0x01;
inline constexpr std::uint16_t network_information = 0x10;
inline constexpr std::uint16_t service_description = 0x11;  // and bouquets
inline constexpr std::uint16_t time_and_date = 0x14;
inline constexpr std::uint16_t largest_reserved = 0x1F;
inline constexpr std::uint16_t atsc = 0x1FFB;  // ATSC A/65: no table of EN 300 468
}  // namespace table_pid

namespace table_id {
inline constexpr std::uint8_t program_association = 0x00;
inline constexpr std::uint8_t conditional_access = 0x01;
inline constexpr std::uint8_t program_map = 0x02;
inline constexpr std::uint8_t network_actual = 0x40;
inline constexpr std::uint8_t network_other = 0x41;
inline constexpr std::uint8_t services_actual = 0x42;
inline constexpr std::uint8_t services_other = 0x46;
inline constexpr std::uint8_t bouquet = 0x4A;
inline constexpr std::uint8_t time_and_date = 0x70;
inline constexpr std::uint8_t time_offset = 0x73;
}  // namespace table_id

struct descriptor_bytes {
  std::uint8_t tag = 0;
  std::string data;
};
using descriptor_loop = std::vector<descriptor_bytes>;

struct program {
  std::uint16_t number = 0;  // 0: of the network information
  std::uint16_t pid = 0;
};

struct program_association {
  std::uint16_t ts_id = 0;
  std::vector<program> programs;
};

struct program_stream {
  std::uint8_t type = 0;
  std::uint16_t pid = 0;
  descriptor_loop descriptors;
};

struct program_map {
  std::uint16_t pcr_pid = 0;
  descriptor_loop descriptors;
  std::vector<program_stream> streams;
};

// A transport stream in the table of a network, or of a bouquet.
struct described_stream {
  std::uint16_t ts_id = 0;
  std::uint16_t original_network_id = 0;
  descriptor_loop descriptors;
};

struct network_or_bouquet {
  std::uint16_t id = 0;
  bool is_actual = false;
  descriptor_loop descriptors;
  std::vector<described_stream> streams;
};

struct described_service {
  std::uint16_t service_id = 0;
  bool is_scrambled = false;
  descriptor_loop descriptors;
};

struct service_description {
  std::uint16_t ts_id = 0;
  std::uint16_t original_network_id = 0;
  bool is_actual = false;
  std::vector<described_service> services;
};

struct broadcast_tables {
  std::optional<program_association> programs;
  std::map<std::uint16_t, program_map> maps;  // by program number, which is the service's id
  std::vector<network_or_bouquet> networks;
  std::vector<service_description> services;
  std::vector<network_or_bouquet> bouquets;
  descriptor_loop conditional_access;
  std::optional<std::uint64_t> time;  // 40 bits: the date as a modified Julian one, and six digits
  std::size_t changes = 0;            // tables that came in another version later
};

}  // namespace chlist
