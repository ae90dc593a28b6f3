// The library has no call that changes an identity: a service that leaves its transponder is filed anew, as a copy, and
// the record that stood at the former place is removed.
#include "chlist/edit/service_identity.h"

#include <channel/removal.h>
#include <channel/store.h>
#include <fmt/format.h>

#include <cstdlib>
#include <stdexcept>

#include "channel/store/finders.h"
#include "channel/store/view.h"
#include "chlist/edit/edited_services.h"
#include "chlist/fields/described.h"

namespace chlist {
namespace {

tp_ch_st *transponder_for(const channel::identity &id) {
  network_ch_st *network = get_network_ch_info(id.net_index, id.network_id);
  return network == nullptr ? nullptr : get_tp_ch_info_by_network_ch(network, id.ts_id, id.frequency, id.polarisation);
}

// Fields that stay keep what the record has there: the frequencies of an entry and its service may differ a little.
template <class Record>
void write_changes(Record &record, const channel::identity &former, const channel::identity &wanted) {
  const auto write = [](auto &field, auto before, auto after) {
    if (before != after) {
      field = after;
    }
  };
  write(record.net_index, former.net_index, wanted.net_index);
  write(record.network_id, former.network_id, wanted.network_id);
  write(record.ts_id, former.ts_id, wanted.ts_id);
  write(record.frequency, former.frequency, wanted.frequency);
  write(record.service_id, former.service_id, wanted.service_id);
  write(record.polarisation, former.polarisation, wanted.polarisation);
}

void take_entries_along(const channel_st &from, channel_st &to, const channel::identity &former,
                        const channel::identity &wanted) {
  for (const std::int8_t code : saved_views()) {
    for (virtual_channel_st &entry : channel::find_view(code)) {
      if (entry.rch == &from) {
        write_changes(entry, former, wanted);
        entry.rch = &to;
      }
    }
  }
}

void must_be_free(const channel::identity &wanted, const channel_st &service) {
  tp_ch_st *transponder = transponder_for(wanted);
  const channel_st *other = get_rch_ch_info_by_tp_ch(transponder, wanted.service_id);
  if (other != nullptr && other != &service) {
    throw std::runtime_error(fmt::format("the identity belongs to {} already", describe(known_as(*other))));
  }
}

// A record that add_rch_info() does not file is left in no list.
channel_st &file_copy(const channel_st &service, const channel::identity &former, const channel::identity &wanted,
                      const char *network_name) {
  channel_st *copy = alloc_channel_info();
  const list_head own_link = copy->list;
  *copy = service;
  copy->list = own_link;
  write_changes(*copy, former, wanted);
  add_rch_info(copy, network_name);
  if (copy->list.next == &copy->list) {
    std::free(copy);
    throw std::runtime_error("the list takes no more networks, transponders or services");
  }
  return *copy;
}

void file_anew(const channel_st &service, const channel::identity &former, const channel::identity &wanted) {
  must_have_frequency(service);
  const network_ch_st *network = get_network_ch_info(former.net_index, former.network_id);
  channel_st &copy = file_copy(service, former, wanted, network->network_name);
  take_entries_along(service, copy, former, wanted);
  remove_channel_st(former.net_index, former.network_id, former.ts_id, former.frequency, former.service_id,
                    former.polarisation);
}

}  // namespace

void change_identity(channel_st &service, const channel::identity &wanted) {
  const channel::identity former = channel::identity_of(service);
  if (former == wanted) {
    return;
  }
  must_be_free(wanted, service);
  if (transponder_for(wanted) == channel::locate(former, channel::resolving{}).transponder) {
    write_changes(service, former, wanted);
    take_entries_along(service, service, former, wanted);
  } else {
    file_anew(service, former, wanted);
  }
}

}  // namespace chlist
