// What is known of the list that a damaged file held: the identities in its views, and the transponders and networks
// that services name. A record that agrees with a witness is one, wherever it stands.
#pragma once

#include <channel/records.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "channel/identity.h"

namespace chlist {

// Too few ids to know a service by: a stretch of one byte or of two in turn, as of a wiped memory, or zeros with a
// number somewhere.
bool says_nothing(const channel::identity &id);
bool is_pattern(const channel::identity &id);

// Values at frequencies, found again within the library's tolerance in about constant time, however many there are.
class frequency_table {
 public:
  void add(std::uint64_t ids, std::uint32_t frequency);
  [[nodiscard]] bool holds(std::uint64_t ids, std::uint32_t frequency) const;

 private:
  struct key {
    std::uint64_t ids;
    std::uint32_t band;
    bool operator==(const key &) const = default;
  };
  struct hash {
    std::size_t operator()(const key &of) const;
  };

  [[nodiscard]] bool holds_in(const key &place, std::uint32_t frequency) const;

  static constexpr std::size_t filter_size = std::size_t{1} << 20U;
  static std::size_t filter_place(std::uint64_t ids);

  std::unordered_map<key, std::uint32_t, hash> first_;
  std::vector<bool> may_hold_ = std::vector<bool>(filter_size);
};

class witnesses {
 public:
  // An entry of a view; one without any identity says nothing.
  void add_entry(const channel::identity &id);
  void add_service(const channel::identity &id);

  [[nodiscard]] bool list(const channel::identity &id) const;
  [[nodiscard]] bool know_transponder(const channel::identity &id) const;
  // The transponder as its own record names it.
  [[nodiscard]] bool know_transponder(std::uint16_t ts_id, std::uint32_t frequency, std::uint8_t polarisation) const;
  [[nodiscard]] bool know_network(std::uint8_t net_index, std::uint16_t network_id) const;

 private:
  frequency_table entries_;
  frequency_table in_networks_;
  frequency_table transponders_;
  frequency_table networks_;
};

}  // namespace chlist
