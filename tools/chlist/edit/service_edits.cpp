// Every call goes by the identity of the service.
#include "chlist/edit/service_edits.h"

#include <channel/flags.h>
#include <channel/removal.h>
#include <channel/store.h>
#include <fmt/format.h>

#include <stdexcept>

#include "channel/identity.h"
#include "chlist/edit/edited_services.h"
#include "chlist/exchange/group_names.h"
#include "chlist/text/plain_text.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

void remove_entries(std::int8_t code, const channel_st &service) {
  const channel::view view = channel::find_view(code);
  for (int index = index_of(view, service); index >= 0; index = index_of(view, service)) {
    vtype_remove_by_vindex(static_cast<std::int16_t>(index), code);
  }
}

}  // namespace

bool is_found_by_identity(const channel_st &service) {
  const channel::identity id = channel::identity_of(service);
  return get_channel_st(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation) ==
         &service;
}

void set_flag(const channel_st &service, std::uint8_t bits, bool sets) {
  const channel::identity id = channel::identity_of(service);
  set_channel_flag(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation, bits,
                   sets ? 1 : 0);
}

void set_name(const channel_st &service, name_place place, const std::string &wanted, edited_list &list) {
  must_be_plain(wanted, "the name");
  const std::string_view name = cut_utf8(wanted, sizeof service.name[0].text);
  if (name.empty()) {
    throw std::runtime_error("a name has one byte at least");
  }
  if (name.size() != wanted.size()) {
    list.notes.push_back(fmt::format("the name is cut to {} of its {} bytes", name.size(), wanted.size()));
  }
  const channel::identity id = channel::identity_of(service);
  const int done =
      rename_channel_info(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation,
                          place == name_place::first ? 0 : 1, name.data(), static_cast<std::int16_t>(name.size()));
  if (done != 0) {
    throw std::runtime_error(fmt::format("{} cannot be renamed", name_for_message(service)));
  }
  list.was_renamed(service);
}

// Entry by entry: a sweep would take entries along that have resolved to nothing all the time.
void remove_service(const channel_st &service, edited_list &list) {
  must_have_frequency(service);
  list.will_be_removed(service);
  for (const std::int8_t code : saved_views()) {
    remove_entries(code, service);
  }
  const channel::identity id = channel::identity_of(service);
  remove_channel_st(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation);
}

}  // namespace chlist
