// The transponders that the release of a channel counts down, for a pass that releases many: gives what a walk over the
// networks gives, in about constant time for each network of the channel's identity.
#pragma once

#include <channel/records.h>
#include <cstddef>
#include <cstdint>

#include "channel/store/first_table.h"
#include "channel/store/service_index.h"
#include "channel/store/transponder_table.h"

namespace channel {

class transponder_matches {
 public:
  // Over the channel list in memory. Networks and transponders must stay while it lives.
  transponder_matches() : transponder_matches(count_records(channel_list.network_list)) {}

  // The first transponder of each network that is_transponder_of() a channel. Networks that a merge has doubled have
  // one each.
  template <class Action>
  void for_each(const channel_st &service, const Action &action) const {
    const place_of_network *in = networks_.find(network_key(service.net_index, service.network_id));
    for (; in != nullptr; in = in->next_of_identity) {
      if (tp_ch_st *transponder = find(*in, service); transponder != nullptr) {
        action(*transponder);
      }
    }
  }

 private:
  struct place_of_network {
    std::uint32_t number;
    const place_of_network *next_of_identity;
  };

  explicit transponder_matches(const record_counts &counts);
  void add(network_ch_st &network, place_of_network &at);
  void add(const place_of_network &on, tp_ch_st &transponder);
  [[nodiscard]] tp_ch_st *find(const place_of_network &in, const channel_st &service) const;

  transient<place_of_network> places_;
  first_table<const place_of_network> networks_;
  // A number for each network, transport stream id and polarisation that occur together.
  std::uint32_t used_scopes_ = 0;
  transient<std::uint32_t> scope_numbers_;
  first_table<const std::uint32_t> scopes_;
  transponder_table transponders_;
};

}  // namespace channel
