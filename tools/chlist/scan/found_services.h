// What the tables of all captures say, service by service: transport streams by their source and ids, services by their
// id within one. The tables of a service's own transport stream count more than those of another, later captures more
// than earlier ones.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "chlist/scan/descriptors.h"
#include "chlist/scan/logical_channels.h"
#include "chlist/scan/tables.h"

namespace chlist {

struct scanned_stream {
  std::uint16_t network_id = 0;  // the original one
  std::uint16_t ts_id = 0;
  std::string source;
  delivery_facts where;
};

struct scanned_service {
  std::size_t stream = 0;
  std::uint16_t service_id = 0;
  std::optional<described_service> described;
  bool is_described_at_home = false;
  std::optional<std::uint16_t> map_pid;
  std::optional<program_map> map;
  std::optional<std::uint8_t> listed_type;  // of a list of services
  number_claim claim;
  bool is_hidden = false;
};

// A group of services that a bouquet makes.
struct scanned_bouquet {
  std::string name;                   // as it is broadcast
  std::vector<std::size_t> services;  // places
};

class found_services {
 public:
  // The place of a transport stream. One that is known without its frequency gets it.
  std::size_t stream(const scanned_stream &found);
  // Nothing when there is no such transport stream, or service.
  [[nodiscard]] std::optional<std::size_t> find_stream(const std::string &source, std::uint16_t network_id,
                                                       std::uint16_t ts_id) const;
  [[nodiscard]] std::optional<std::size_t> find(std::size_t stream, std::uint16_t service_id) const;

  scanned_service &service(std::size_t stream, std::uint16_t service_id);
  void describe(std::size_t stream, const service_description &table);
  void add_bouquet(const std::string &source, const network_or_bouquet &table);
  // What a network says of its services: their types and their numbers.
  void add_network(const std::string &source, const network_or_bouquet &table);

  [[nodiscard]] const std::vector<scanned_stream> &streams() const { return streams_; }
  [[nodiscard]] const std::vector<scanned_service> &services() const { return services_; }
  [[nodiscard]] const std::vector<scanned_bouquet> &bouquets() const { return bouquets_; }

 private:
  void claim(std::size_t stream, const logical_channel &channel);
  [[nodiscard]] std::vector<std::size_t> services_of(const std::string &source, const described_stream &stream) const;

  std::vector<scanned_stream> streams_;
  std::multimap<std::tuple<std::string, std::uint16_t, std::uint16_t>, std::size_t> stream_places_;
  std::vector<scanned_service> services_;
  std::map<std::pair<std::size_t, std::uint16_t>, std::size_t> places_;
  std::vector<scanned_bouquet> bouquets_;
  std::set<std::pair<std::string, std::size_t>> in_bouquets_;  // by the name of the bouquet
};

}  // namespace chlist
