// Finding a service by its identity, for operations that each report misses in their own words.
#pragma once

#include <channel/store.h>

#include "channel/identity.h"
#include "channel/store/hierarchy.h"

namespace channel {

// What get_channel_st finds, and logs.
channel_st *resolve(const identity &id);

// The real channel of a view entry, found again from its identity; the entry's cached pointer is not used.
inline channel_st *resolve(const virtual_channel_st &entry) { return resolve(identity_of(entry)); }

// A service and the transponder that it hangs from; both null when there is none.
struct located_service {
  tp_ch_st *transponder = nullptr;
  channel_st *service = nullptr;
};

// The first service with the identity's service id on a transponder with its transport stream id; neither frequency nor
// polarisation is looked at.
inline located_service locate_on_any_transponder(network_ch_st &network, const identity &id) {
  for (tp_ch_st &transponder : transponders_of(network)) {
    if (transponder.ts_id == id.ts_id) {
      if (channel_st *service = get_rch_ch_info_by_tp_ch(&transponder, id.service_id); service != nullptr) {
        return {&transponder, service};
      }
    }
  }
  return {};
}

// The service of an identity; frequency 0 stands for any transponder with the transport stream id. What is missing is
// told to misses: no_network(), no_transponder() or no_service().
template <class Misses>
located_service locate(const identity &id, const Misses &misses) {
  network_ch_st *network = get_network_ch_info(id.net_index, id.network_id);
  if (network == nullptr) {
    misses.no_network(id);
    return {};
  }
  located_service found;
  if (id.frequency == 0) {
    found = locate_on_any_transponder(*network, id);
  } else {
    found.transponder = get_tp_ch_info_by_network_ch(network, id.ts_id, id.frequency, id.polarisation);
    if (found.transponder == nullptr) {
      misses.no_transponder(id);
      return {};
    }
    found.service = get_rch_ch_info_by_tp_ch(found.transponder, id.service_id);
  }
  if (found.service == nullptr) {
    misses.no_service(id);
    return {};
  }
  return found;
}

// What get_channel_st says of what is missing.
struct resolving {
  static constexpr char operation[] = "get_channel_st";

  static void no_network(const identity &id);
  static void no_transponder(const identity &id);
  static void no_service(const identity &id);
};

// What the operations that flag and remove a channel say of what is missing.
struct misses_of {
  const char *operation;
  // Compatibility: only the removal names the polarisation, and of a transponder alone.
  bool names_polarisation = false;

  void no_network(const identity &id) const { tell("network_ch", id); }
  void no_transponder(const identity &id) const;
  void no_service(const identity &id) const { tell("rchannel", id); }

 private:
  void tell(const char *missing, const identity &id) const;
};

// What get_network_ch_info and get_tp_ch_info_by_network_ch say of a miss.
void log_missing_network(std::uint8_t net_index, std::uint16_t network_id);
void log_missing_transponder(std::uint16_t ts_id, std::uint32_t frequency, std::uint8_t polarisation);

}  // namespace channel
