// Queries by broadcast identity. Walks over networks that share a key go on into a later one only when the earlier held
// no match. The first match in list order wins.
#include <channel/transport.h>

#include <channel/removal.h>
#include <channel/store.h>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/finders.h"
#include "channel/store/hierarchy.h"
#include "channel/store/release.h"
#include "channel/store/view.h"
#include "channel/vindex/removal.h"

using channel::channel_list;

namespace channel {
namespace {

// The first transponder that a rule matches, over the networks that another names; null when there is none.
template <class NetworkRule, class TransponderRule>
tp_ch_st *find_transponder(const NetworkRule &is_searched, const TransponderRule &matches) {
  for (network_ch_st &network : networks_of(channel_list.network_list)) {
    if (!is_searched(network)) {
      continue;
    }
    for (tp_ch_st &transponder : transponders_of(network)) {
      if (matches(transponder)) {
        return &transponder;
      }
    }
  }
  return nullptr;
}

auto with_net_index(std::uint8_t net_index) {
  return [net_index](const network_ch_st &network) { return network.net_index == net_index; };
}

tp_ch_st *find_by_ts_id(std::uint8_t net_index, std::uint16_t network_id, std::uint16_t ts_id) {
  return find_transponder([=](const network_ch_st &network) { return is_network(network, net_index, network_id); },
                          [ts_id](const tp_ch_st &transponder) { return transponder.ts_id == ts_id; });
}

// The transponder, in any network with the index, that holds the first channel with the service id.
tp_ch_st *find_by_service_id(std::uint8_t net_index, std::uint16_t service_id) {
  return find_transponder(with_net_index(net_index), [service_id](tp_ch_st &transponder) {
    return get_rch_ch_info_by_tp_ch(&transponder, service_id) != nullptr;
  });
}

void release_matching(network_ch_st &network, std::uint32_t frequency, std::uint8_t polarisation,
                      doomed_services &doomed, const char *operation) {
  for (tp_ch_st &transponder : transponders_of(network)) {
    LOG_TRACE_AS(operation, 2, "freq %lu,%lu polar %d,%d \n", static_cast<unsigned long>(transponder.frequency),
                 static_cast<unsigned long>(frequency), transponder.polarisation, polarisation);
    if (is_tuned_to(transponder, frequency, polarisation)) {
      release_transponder(transponder, doomed);
      count_down(network.tp_num);
    }
  }
}

// Services on their way out are forgotten together when the walk is done.
void release_frequency(int net_index, std::uint32_t frequency, std::uint8_t polarisation, const char *operation) {
  doomed_services doomed;
  for (network_ch_st &network : networks_of(channel_list.network_list)) {
    LOG_TRACE_AS(operation, 2, "net_index %d ,%d \n", net_index, network.net_index);
    if (network.net_index == net_index) {
      release_matching(network, frequency, polarisation, doomed, operation);
    }
  }
}

}  // namespace
}  // namespace channel

extern "C" {

tp_ch_st *get_tp_ch_info(uint8_t net_index, uint16_t network_id, uint16_t ts_id, int32_t frequency,
                         uint8_t polarisation) {
  network_ch_st *network = get_network_ch_info(net_index, network_id);
  if (network == nullptr) {
    LOG_TRACE(3, "Fail to find tp_ch net_index=%d, on_id=0x%x, ts_id=0x%x, freq=%ld, polar %d \n", net_index,
              network_id, ts_id, static_cast<long>(frequency), polarisation);
    return nullptr;
  }
  return get_tp_ch_info_by_network_ch(network, ts_id, static_cast<uint32_t>(frequency), polarisation);
}

tp_ch_st *get_tp_ch_simple(uint8_t net_index, uint32_t frequency, uint8_t polarisation) {
  tp_ch_st *found = channel::find_transponder(channel::with_net_index(net_index), [=](const tp_ch_st &transponder) {
    return channel::is_tuned_to(transponder, frequency, polarisation);
  });
  if (found == nullptr) {
    LOG_TRACE(3, "Fail to find network_ch ni=%d\n", net_index);
    LOG_TRACE(3, "Fail to find tp_ch freq=%ld polar= %d\n", channel::as_long(frequency), polarisation);
  }
  return found;
}

channel_st *get_rch_ch_info_by_tp_ch_and_avpid(tp_ch_st *tp, uint16_t video_pid, uint16_t audio_pid) {
  if (tp == nullptr) {
    return nullptr;
  }
  for (channel_st &service : channel::services_of(*tp)) {
    if (service.video_pid == video_pid || service.audio_pid == audio_pid) {
      return &service;
    }
  }
  LOG_TRACE(3, "Fail to find rchannel vpid=0x%x apid=0x%x\n", video_pid, audio_pid);
  return nullptr;
}

channel_st *get_ipchannel(uint8_t net_index, uint16_t ts_id, uint16_t service_id) {
  LOG_TRACE(2, "net_index %d, ts_id %d ,service_id %d \n", net_index, ts_id, service_id);
  tp_ch_st *transponder = channel::find_transponder(channel::with_net_index(net_index), [=](tp_ch_st &candidate) {
    return candidate.ts_id == ts_id && get_rch_ch_info_by_tp_ch(&candidate, service_id) != nullptr;
  });
  return get_rch_ch_info_by_tp_ch(transponder, service_id);
}

uint32_t get_frequency_by_ts_id(uint8_t net_index, uint16_t network_id, uint16_t ts_id) {
  const tp_ch_st *transponder = channel::find_by_ts_id(net_index, network_id, ts_id);
  return transponder != nullptr ? transponder->frequency : 0;
}

uint32_t get_polarisation_by_ts_id(uint8_t net_index, uint16_t network_id, uint16_t ts_id) {
  const tp_ch_st *transponder = channel::find_by_ts_id(net_index, network_id, ts_id);
  return transponder != nullptr ? transponder->polarisation : 0;
}

// Compatibility: the frequency is the channel's own, the polarisation its transponder's.
uint32_t get_frequency_by_service_id(uint8_t net_index, uint16_t service_id) {
  tp_ch_st *transponder = channel::find_by_service_id(net_index, service_id);
  const channel_st *service = get_rch_ch_info_by_tp_ch(transponder, service_id);
  return service != nullptr ? static_cast<uint32_t>(service->frequency) : 0;
}

uint32_t get_polarisation_by_service_id(uint8_t net_index, uint16_t service_id) {
  const tp_ch_st *transponder = channel::find_by_service_id(net_index, service_id);
  return transponder != nullptr ? transponder->polarisation : 0;
}

int get_dsmcc_channel(void) {
  const channel::view current = channel::current_view();
  if (!current) {
    LOG_ERROR(" channel_list NULL !! ");
    return -1;
  }
  for (int index = 0; index < current.size(); ++index) {
    const channel_st *service = channel::resolve(current.entries[index]);
    if (service == nullptr) {
      continue;
    }
    LOG_TRACE(2, "ch index=%d flag 0x%02x\n", index, service->flag);
    if ((service->flag & CHANNEL_FLAG_DSMCC) != 0) {
      return index;
    }
  }
  return -1;
}

int get_channel_list_version(void) { return channel_list.version; }

int remove_channel_info_by_frequency(int net_index, uint32_t frequency, uint8_t polarisation) {
  LOG_TRACE(2, "net_index %d freq %lu polar %d \n", net_index, static_cast<unsigned long>(frequency), polarisation);
  channel::release_frequency(net_index, frequency, polarisation, __func__);
  channel::show_tv_or_radio(__func__);
  remove_invalid_virtual_channel();
  return 0;
}
}
