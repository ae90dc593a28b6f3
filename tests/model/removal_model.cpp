// Removal in the model, and the sweep.
#include "model.h"
#include "slots.h"

namespace model_tests {

void model::sweep() {
  for (auto &[code, each] : views) {
    if (code != 4) {
      remove_if(each, [this](const entry &shown) { return resolve(shown.id) == nullptr; });
    }
  }
}

void model::show_tv_or_radio() {
  if (views.at(1).count >= 1) {
    change_vindex_type(1);
  } else if (views.at(2).count >= 1) {
    change_vindex_type(2);
  }
}

int model::vtype_remove_by_vindex(int vindex, int type) {
  view *cleaned = find_view(type);
  if (cleaned == nullptr || vindex < 0 || vindex >= cleaned->count) {
    return -1;
  }
  remove_at(*cleaned, vindex);
  return 0;
}

int model::vtype_remove_by_net_index(int net_index, int type) {
  view *cleaned = find_view(type);
  if (cleaned == nullptr) {
    return -1;
  }
  remove_if(*cleaned, [net_index](const entry &shown) { return shown.id.net_index == net_index; });
  return 0;
}

int model::vtype_remove_vch(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                            int polarisation, int type) {
  const int left =
      vtype_remove_virtual_channel_st(tag, net_index, network_id, ts_id, frequency, service_id, polarisation, type);
  return left < 0 ? -1 : 0;
}

int model::vtype_remove_virtual_channel_st(int tag, int net_index, int network_id, int ts_id, int frequency,
                                           int service_id, int polarisation, int type) {
  const identity id = make_identity(net_index, network_id, ts_id, frequency, service_id, polarisation);
  view *cleaned = find_view(type);
  if (cleaned == nullptr) {
    return -1;
  }
  remove_if(*cleaned, [&](const entry &shown) { return shown.tag == tag && same_service(shown.id, id); });
  return cleaned->count;
}

int model::remove_invalid_virtual_channel() {
  sweep();
  return 0;
}

int model::remove_channel_st(int net_index, int network_id, int ts_id, int frequency, int service_id,
                             int polarisation) {
  transponder *holder = nullptr;
  const service *found =
      resolve(make_identity(net_index, network_id, ts_id, frequency, service_id, polarisation), &holder);
  if (found == nullptr) {
    return -1;
  }
  forget(found->serial);
  holder->services.erase(holder->services.begin() + (found - holder->services.data()));
  holder->count = std::max(holder->count - 1, 0);
  if (frequency == 0) {
    sweep();
  }
  return 0;
}

int model::remove_virtual_channel_st(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                                     int polarisation) {
  for (const int code : view_codes()) {
    if (code != 4) {
      vtype_remove_virtual_channel_st(tag, net_index, network_id, ts_id, frequency, service_id, polarisation, code);
    }
  }
  if (vtype_get_vch_index_by_ts_info(tag, net_index, network_id, ts_id, frequency, service_id, polarisation, 0) < 0) {
    remove_channel_st(net_index, network_id, ts_id, frequency, service_id, polarisation);
  }
  sweep();
  return 0;
}

int model::remove_channel_info_by_net_index(int net_index) {
  for (const network &each : networks) {
    if (each.net_index == net_index) {
      for (const transponder &below : each.transponders) {
        forget_all(below);
      }
      --network_count;
    }
  }
  std::erase_if(networks, [net_index](const network &each) { return each.net_index == net_index; });
  show_tv_or_radio();
  sweep();
  return 0;
}

int model::remove_channel_info_by_frequency(int net_index, int frequency, int polarisation) {
  for (network &each : networks) {
    if (each.net_index != net_index) {
      continue;
    }
    std::erase_if(each.transponders, [&](const transponder &below) {
      const bool dropped =
          same_frequency(below.frequency, static_cast<std::uint32_t>(frequency)) && below.polarisation == polarisation;
      if (dropped) {
        forget_all(below);
        --each.count;
      }
      return dropped;
    });
  }
  show_tv_or_radio();
  sweep();
  return 0;
}

}  // namespace model_tests
