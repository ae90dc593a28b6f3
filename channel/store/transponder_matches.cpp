// Only what stands in one network, with one transport stream id and one polarisation, is compared by frequency: that is
// a scope of the table of transponders.
#include "channel/store/transponder_matches.h"

#include <utility>

#include "channel/store/hierarchy.h"

namespace channel {
namespace {

std::uint64_t scope_key(std::uint32_t network, std::uint16_t ts_id, std::uint8_t polarisation) {
  return std::uint64_t{network} << 24U | std::uint64_t{ts_id} << 8U | polarisation;
}

}  // namespace

transponder_matches::transponder_matches(const record_counts &counts)
    : places_(allocate_array<place_of_network>(counts.networks + 1)), networks_(counts.networks),
      scope_numbers_(allocate_array<std::uint32_t>(counts.transponders + 1)), scopes_(counts.transponders),
      transponders_(counts.transponders, 0) {
  std::uint32_t number = 0;
  for (network_ch_st &network : networks_of(channel_list.network_list)) {
    place_of_network &at = places_.get()[number];
    at.number = number++;
    add(network, at);
  }
}

void transponder_matches::add(network_ch_st &network, place_of_network &at) {
  const place_of_network *&first = networks_.at(network_key(network.net_index, network.network_id));
  at.next_of_identity = std::exchange(first, &at);
  for (tp_ch_st &transponder : transponders_of(network)) {
    add(at, transponder);
  }
}

void transponder_matches::add(const place_of_network &on, tp_ch_st &transponder) {
  const std::uint32_t *&scope = scopes_.at(scope_key(on.number, transponder.ts_id, transponder.polarisation));
  if (scope == nullptr) {
    scope_numbers_.get()[used_scopes_] = used_scopes_;
    scope = &scope_numbers_.get()[used_scopes_++];
  }
  transponders_.add(*scope, transponder);
}

tp_ch_st *transponder_matches::find(const place_of_network &in, const channel_st &service) const {
  const std::uint32_t *scope = scopes_.find(scope_key(in.number, service.ts_id, service.polarisation));
  if (scope == nullptr) {
    return nullptr;
  }
  const auto *found = transponders_.find_within_tolerance(*scope, service.frequency);
  return found != nullptr ? found->transponder : nullptr;
}

}  // namespace channel
