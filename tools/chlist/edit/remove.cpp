// `chlist remove`: services and their entries out of the list.
#include <channel/removal.h>

#include <memory>

#include "chlist/commands.h"
#include "chlist/edit/edit_session.h"
#include "chlist/edit/edited_services.h"

namespace chlist {
namespace {

struct remove_options : edit_options {
  std::vector<std::string> services;
};

void remove_entries(std::int8_t code, const channel_st &service) {
  const channel::view view = channel::find_view(code);
  for (int index = index_of(view, service); index >= 0; index = index_of(view, service)) {
    vtype_remove_by_vindex(static_cast<std::int16_t>(index), code);
  }
}

// Entry by entry: a sweep would take entries along that have resolved to nothing all the time.
void remove_service(const channel_st &service) {
  must_have_frequency(service);
  for (const std::int8_t code : saved_views()) {
    remove_entries(code, service);
  }
  const channel::identity id = channel::identity_of(service);
  remove_channel_st(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation);
}

}  // namespace

command remove_command() {
  auto options = std::make_shared<remove_options>();
  command edit = edit_command(
      {.name = "remove",
       .summary = "Remove services from the list",
       .details =
           {"A service goes with its entries in all views and favourite groups. The numbers of the others stay as they "
            "are; its network, its transponder and its provider stay as well, even when they have no service left."},
       .examples = {"chlist remove channels.dat \"Shopping 24\" 7-2",
                    "chlist remove channels.dat 1:2:3:11727480H:5 -o smaller.dat"},
       .options = {{.names = "SERVICE", .target = &options->services, .about = "the services", .is_required = true}}},
      *options);
  edit.run = [options] {
    return run_edit(*options, [&](edit_notes &notes) {
      for (const channel_st *service : editable_services(options->services, notes)) {
        remove_service(*service);
      }
    });
  };
  return edit;
}

}  // namespace chlist
