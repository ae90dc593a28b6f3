// `chlist lock`, `unlock`, `skip` and `unskip`: flags of services.
#include <channel/flags.h>

#include <memory>

#include "chlist/commands.h"
#include "chlist/edit/edit_session.h"
#include "chlist/edit/edited_services.h"

namespace chlist {
namespace {

struct flag_command {
  const char *name;
  const char *about;
  std::uint8_t bits;
  bool sets;  // without --off
  const char *example;
};

constexpr flag_command locking = {"lock", "Lock services: a receiver asks for its code", CHANNEL_FLAG_LOCKED, true,
                                  "chlist lock channels.dat 7 \"Late Films\""};
constexpr flag_command unlocking = {"unlock", "Take the lock off services", CHANNEL_FLAG_LOCKED, false,
                                    "chlist unlock channels.dat 7 --dry-run"};
constexpr flag_command skipping = {"skip", "Pass over services when zapping", CHANNEL_FLAG_SKIP, true,
                                   "chlist skip channels.dat 7 \"Shopping\""};
constexpr flag_command unskipping = {"unskip", "Stop at services again when zapping", CHANNEL_FLAG_SKIP, false,
                                     "chlist unskip channels.dat 7 --dry-run"};

struct flag_options : edit_options {
  std::vector<std::string> services;
  bool is_off = false;
};

void set_flags(const flag_options &options, const flag_command &which, edit_notes &notes) {
  const bool sets = which.sets && !options.is_off;
  for (const channel_st *service : editable_services(options.services, notes)) {
    const channel::identity id = channel::identity_of(*service);
    set_channel_flag(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation, which.bits,
                     sets ? 1 : 0);
  }
}

command command_for(const flag_command &which) {
  auto options = std::make_shared<flag_options>();
  command edit = edit_command(
      {.name = which.name,
       .summary = which.about,
       .details = {"The flag belongs to the service: it shows in all views."},
       .examples = {which.example},
       .options = {{.names = "SERVICE", .target = &options->services, .about = "the services", .is_required = true}}},
      *options);
  if (which.sets) {
    edit.examples.push_back(std::string("chlist ") + which.name + " channels.dat 7 --off");
    edit.options.insert(edit.options.begin() + 2,
                        {.names = "--off", .target = &options->is_off, .about = "take the flag away instead"});
  }
  edit.run = [options, &which] {
    return run_edit(*options, [&](edit_notes &notes) { set_flags(*options, which, notes); });
  };
  return edit;
}

}  // namespace

command lock_command() { return command_for(locking); }
command unlock_command() { return command_for(unlocking); }
command skip_command() { return command_for(skipping); }
command unskip_command() { return command_for(unskipping); }

}  // namespace chlist
