// `chlist set`: fields of a service.
#include <memory>

#include "chlist/commands.h"
#include "chlist/edit/edit_session.h"
#include "chlist/edit/edited_services.h"
#include "chlist/edit/service_identity.h"
#include "chlist/edit/set_fields.h"

namespace chlist {
namespace {

struct set_options : edit_options {
  std::string service;
  std::vector<std::string> assignments;
};

void set(const set_options &options) { set_fields(editable_service(options.service), options.assignments); }

}  // namespace

command set_command() {
  auto options = std::make_shared<set_options>();
  command edit = edit_command(
      {.name = "set",
       .summary = "Set fields of a service",
       .details =
           {"The last six fields make the identity. A service whose identity changes is filed under the network and "
            "transponder that it then belongs to, which are made when they are not there, and its entries in all views "
            "and favourite groups follow; those that it leaves stay, even without services. A transponder is the same "
            "when its polarisation is and its frequency differs by less than 2500. Views do not follow the service "
            "type. A receiver sets the country of every service to 0 when it loads the file."},
       .sections = {{"Fields and their values", terms_of_fields()}},
       .examples = {"chlist set channels.dat \"News HD\" provider=\"Sky North\" video_pid=512 audio_pid=none",
                    "chlist set channels.dat 7 frequency=11954000 polarisation=V --dry-run"},
       .options =
           {{.names = "SERVICE", .target = &options->service, .about = "the service", .is_required = true},
            {.names = "FIELD=VALUE", .target = &options->assignments, .about = "the fields", .is_required = true}}},
      *options);
  edit.run = [options] { return run_edit(*options, [&](edit_notes & /*notes*/) { set(*options); }); };
  return edit;
}

}  // namespace chlist
