// `chlist set`: fields of a service.
#include <fmt/format.h>

#include <memory>

#include "chlist/edit/edit_commands.h"
#include "chlist/edit/edited_services.h"
#include "chlist/edit/service_identity.h"
#include "chlist/edit/set_fields.h"

namespace chlist {
namespace {

constexpr const char *details =
    "Fields and their values:\n"
    "{}"
    "\n"
    "The last six make the identity. A service whose identity changes is filed under the network and transponder that\n"
    "it then belongs to, which are made when they are not there, and its entries in all views and favourite groups\n"
    "follow; those that it leaves stay, even without services. A transponder is the same when its polarisation is and\n"
    "its frequency differs by less than 2500. Views do not follow the service type. A receiver sets the country of "
    "every\n"
    "service to 0 when it loads the file.\n";

constexpr const char *examples =
    "  chlist set channels.dat \"News HD\" provider=\"Sky North\" video_pid=512 audio_pid=none\n"
    "  chlist set channels.dat 7 frequency=11954000 polarisation=V --dry-run";

struct set_options : edit_options {
  std::string service;
  std::vector<std::string> assignments;
};

void set(const set_options &options) {
  channel_st &service = editable_service(options.service);
  edited_service edited = {service, channel::identity_of(service)};
  for (const std::string &assignment : options.assignments) {
    set_field(edited, assignment);
  }
  change_identity(service, edited.id);
}

}  // namespace

void add_set(CLI::App &app, int &exit_code) {
  auto options = std::make_shared<set_options>();
  CLI::App *command = add_edit_command(app, "set", "Set fields of a service", *options);
  command->add_option("SERVICE", options->service, "the service")->required();
  command->add_option("FIELD=VALUE", options->assignments, "the fields")->required();
  finish_edit_command(*command, *options, fmt::format(fmt::runtime(details), fields_help()), examples);
  command->callback(
      [options, &exit_code] { exit_code = run_edit(*options, [&](edit_notes & /*notes*/) { set(*options); }); });
}

}  // namespace chlist
