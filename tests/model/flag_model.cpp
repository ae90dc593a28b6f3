// Flags, names and group ids of channels in the model.
#include <cstring>

#include "model.h"
#include "slots.h"

namespace model_tests {
namespace {

constexpr int no_channel = 255;
constexpr int skip_flag = 0x08;
constexpr int dsmcc_flag = 0x20;

int apply(service *flagged, int bits, bool set) {
  if (flagged == nullptr) {
    return -1;
  }
  flagged->flag = set ? flagged->flag | bits : flagged->flag & ~bits;
  return 0;
}

}  // namespace

// Positions behind the count resolve what stands there.
service *model::service_at(view *searched, int vindex) {
  return searched != nullptr && vindex >= 0 && vindex < 5000 ? resolve(slot(*searched, vindex).id) : nullptr;
}

int model::set_channel_flag(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
                            int bits, int set) {
  service *found = resolve(make_identity(net_index, network_id, ts_id, frequency, service_id, polarisation));
  return apply(found, bits, set != 0) == 0 ? 1 : 0;
}

int model::flag_current(int bits, bool set) {
  for (int i = 0; i < std::min(views.at(0).count, current().count); ++i) {
    apply(service_at(&current(), i), bits, set);
  }
  return 0;
}

int model::set_channel_flag_by_bit(int bits) { return flag_current(bits, true); }

int model::clear_channel_flag_by_bit(int bits) { return flag_current(bits, false); }

int model::set_channel_flag_by_vindex(int vindex, int bits, int set) {
  return vindex < current().count ? apply(service_at(&current(), vindex), bits, set != 0) : -1;
}

int model::get_channel_flag_by_vindex(int vindex) {
  const service *found = vindex < current().count ? service_at(&current(), vindex) : nullptr;
  return found != nullptr ? found->flag : no_channel;
}

int model::vtype_set_channel_flag_by_vindex(int vindex, int bits, int set, int type) {
  view *named = find_view(type);
  return named != nullptr && vindex < capacity_of(type) ? apply(service_at(named, vindex), bits, set != 0) : -1;
}

int model::vtype_get_channel_flag_by_vindex(int vindex, int type) {
  view *named = find_view(type);
  const service *found = named != nullptr && vindex < capacity_of(type) ? service_at(named, vindex) : nullptr;
  return found != nullptr ? found->flag : no_channel;
}

int model::check_skip_channel_index(int vindex) {
  const service *found = vindex < current().count ? service_at(&current(), vindex) : nullptr;
  return found != nullptr && (found->flag & skip_flag) != 0 ? 1 : 0;
}

int model::check_available_channel(int vindex) {
  const service *found = vindex < current().count ? service_at(&current(), vindex) : nullptr;
  if (found == nullptr) {
    return 0;
  }
  const entry &shown = slot(current(), vindex);
  return shown.major != 0 || shown.minor != 0 ? 1 : 0;
}

int model::get_dsmcc_channel() {
  for (int i = 0; i < current().count; ++i) {
    const service *found = service_at(&current(), i);
    if (found != nullptr && (found->flag & dsmcc_flag) != 0) {
      return i;
    }
  }
  return -1;
}

int model::rename(service *renamed, int slot, int name, int length, bool keeps_length) {
  if (renamed == nullptr || slot > 1) {
    return -1;
  }
  const auto index = static_cast<std::size_t>(slot);
  renamed->names[index].clear();
  if (length < 1) {
    return -1;
  }
  renamed->names[index] = std::string(name_number(name)).substr(0, static_cast<std::size_t>(length));
  if (!keeps_length) {
    renamed->name_lengths[index] = length;
  }
  return 0;
}

int model::rename_channel(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
                          int slot, int name, int length) {
  return rename(resolve(make_identity(net_index, network_id, ts_id, frequency, service_id, polarisation)), slot, name,
                length, false);
}

int model::rename_at(int vindex, int slot, int name, int length, int type) {
  view *named = find_view(type);
  service *found = named != nullptr && vindex < capacity_of(type) ? service_at(named, vindex) : nullptr;
  return rename(found, slot, name, length, true);
}

int model::set_user_order(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
                          int key) {
  service *found = resolve(make_identity(net_index, network_id, ts_id, frequency, service_id, polarisation));
  if (found == nullptr) {
    return -1;
  }
  found->user_order_key = key;
  return 0;
}

int model::set_group_id(int kind, int type, int vindex, int id) {
  view *named = find_view(type);
  const bool is_slot = named != nullptr && vindex >= 0 && vindex < capacity_of(type);
  service *found = is_slot ? service_of(slot(*named, vindex).rch) : nullptr;
  if (found == nullptr) {
    return -1;
  }
  switch (kind) {
    case 1:
      return found->id.net_index = id & 0xFF;
    case 2:
      return found->genre_id = id;
    case 3:
      return found->provider_id = id;
    case 4:
      return found->country_id = id;
    default:
      return -1;
  }
}

}  // namespace model_tests
