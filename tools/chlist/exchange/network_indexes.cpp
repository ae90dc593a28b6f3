// The name of a network is what the source is called; "S19.2E" and "19.2E" are the same position.
#include "chlist/exchange/network_indexes.h"

#include "chlist/exchange/reception.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

std::string key_of(std::string_view name) {
  const std::string_view position = name.starts_with('S') ? name.substr(1) : name;
  if (const auto read = read_orbital_position(position)) {
    return source_of({delivery::satellite, read});
  }
  return folded(name);
}

}  // namespace

network_indexes::network_indexes(const line_up &list) {
  for (const line_up_network &network : list.networks) {
    used_.insert(network.net_index);
    if (!network.name.empty()) {
      by_name_.emplace(key_of(network.name), network.net_index);
    }
  }
}

std::optional<std::uint8_t> network_indexes::of(std::string_view source) const {
  const auto found = by_name_.find(key_of(source));
  return found != by_name_.end() ? std::optional(found->second) : std::nullopt;
}

}  // namespace chlist
