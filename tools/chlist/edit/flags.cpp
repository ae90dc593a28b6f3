// `chlist lock`, `unlock`, `skip` and `unskip`: flags of services.
#include <channel/flags.h>

#include <memory>

#include "chlist/edit/edit_commands.h"
#include "chlist/edit/edited_services.h"

namespace chlist {
namespace {

struct flag_command {
  const char *name;
  const char *about;
  std::uint8_t bits;
  bool sets;  // without --off
  const char *examples;
};

constexpr const char *details = "The flag belongs to the service: it shows in all views.\n";

constexpr flag_command lock_command = {"lock", "Lock services: a receiver asks for its code", CHANNEL_FLAG_LOCKED, true,
                                       "  chlist lock channels.dat 7 \"Late Films\"\n"
                                       "  chlist lock channels.dat 7 --off"};
constexpr flag_command unlock_command = {"unlock", "Take the lock off services", CHANNEL_FLAG_LOCKED, false,
                                         "  chlist unlock channels.dat 7 --dry-run"};
constexpr flag_command skip_command = {"skip", "Pass over services when zapping", CHANNEL_FLAG_SKIP, true,
                                       "  chlist skip channels.dat 7 \"Shopping\"\n"
                                       "  chlist skip channels.dat 7 --off"};
constexpr flag_command unskip_command = {"unskip", "Stop at services again when zapping", CHANNEL_FLAG_SKIP, false,
                                         "  chlist unskip channels.dat 7 --dry-run"};

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

void add_flag_command(CLI::App &app, int &exit_code, const flag_command &which) {
  auto options = std::make_shared<flag_options>();
  CLI::App *command = add_edit_command(app, which.name, which.about, *options);
  command->add_option("SERVICE", options->services, "the services")->required();
  if (which.sets) {
    command->add_flag("--off", options->is_off, "take the flag away instead");
  }
  finish_edit_command(*command, *options, details, which.examples);
  command->callback([options, &which, &exit_code] {
    exit_code = run_edit(*options, [&](edit_notes &notes) { set_flags(*options, which, notes); });
  });
}

}  // namespace

void add_lock(CLI::App &app, int &exit_code) { add_flag_command(app, exit_code, lock_command); }
void add_unlock(CLI::App &app, int &exit_code) { add_flag_command(app, exit_code, unlock_command); }
void add_skip(CLI::App &app, int &exit_code) { add_flag_command(app, exit_code, skip_command); }
void add_unskip(CLI::App &app, int &exit_code) { add_flag_command(app, exit_code, unskip_command); }

}  // namespace chlist
