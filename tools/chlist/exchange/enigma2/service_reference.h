// How Enigma2 names a service: by its ids and the namespace of its transponder, as
// "1:0:TYPE:SID:TSID:ONID:NAMESPACE:0:0:0:" in bouquets.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace chlist {

struct transponder_reference {
  std::uint32_t name_space = 0;
  std::uint16_t transport_id = 0;
  std::uint16_t network_id = 0;

  auto operator<=>(const transponder_reference &) const = default;

  [[nodiscard]] std::uint64_t packed() const {
    return std::uint64_t{name_space} << 32U | std::uint64_t{transport_id} << 16U | network_id;
  }

  struct hash {
    std::size_t operator()(const transponder_reference &reference) const {
      return std::hash<std::uint64_t>()(reference.packed());
    }
  };
};

struct service_reference {
  transponder_reference transponder;
  std::uint16_t service_id = 0;

  auto operator<=>(const service_reference &) const = default;

  struct hash {
    std::size_t operator()(const service_reference &reference) const {
      return std::hash<std::uint64_t>()(reference.transponder.packed() * 0x9E3779B97F4A7C15U + reference.service_id);
    }
  };
};

// What a line of a bouquet refers to.
struct bouquet_reference {
  static constexpr unsigned directory = 1;
  static constexpr unsigned marker = 64;
  static constexpr unsigned group = 128;
  static constexpr unsigned numbered_marker = 256;

  unsigned kind = 1;  // 1: a DVB service, or something made of them
  unsigned flags = 0;
  service_reference service;
  std::string path;  // of what is no DVB service; the rest of the line
  bool has_name = false;

  [[nodiscard]] bool is_service() const { return kind == 1 && flags == 0 && path.empty(); }
  [[nodiscard]] bool is_marker() const { return (flags & marker) != 0; }
};

// Throws bad_line.
bouquet_reference read_bouquet_reference(std::string_view text);

// "1:0:1:bb9:7da:9e:870000:0:0:0:"
std::string bouquet_line(const service_reference &service, std::uint8_t service_type);

}  // namespace chlist
