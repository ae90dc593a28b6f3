// `chlist rename`: another name for a service.
#include <channel/flags.h>
#include <fmt/format.h>

#include <memory>
#include <stdexcept>

#include "chlist/edit/edit_commands.h"
#include "chlist/edit/edited_services.h"
#include "chlist/exchange/list_builder.h"

namespace chlist {
namespace {

constexpr const char *details = "The name is replaced; one that is longer than the 96 bytes that a list holds is cut "
                                "in front of a character, with\n"
                                "a note. All views show the service's one name, so nothing else follows.\n";

constexpr const char *examples = "  chlist rename channels.dat 7 \"News HD\"\n"
                                 "  chlist rename channels.dat \"News HD\" News --short --dry-run";

struct rename_options : edit_options {
  std::string service;
  std::string name;
  bool is_short = false;
};

void rename(const rename_options &options, edit_notes &notes) {
  const channel_st &service = editable_service(options.service);
  const std::string_view name = cut_utf8(options.name, sizeof service.name[0].text);
  if (name.empty()) {
    throw std::runtime_error("a name has one byte at least");
  }
  if (name.size() != options.name.size()) {
    notes.push_back(fmt::format("the name is cut to {} of its {} bytes", name.size(), options.name.size()));
  }
  const channel::identity id = channel::identity_of(service);
  const int done =
      rename_channel_info(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation,
                          options.is_short ? 1 : 0, name.data(), static_cast<std::int16_t>(name.size()));
  if (done != 0) {
    throw std::runtime_error(fmt::format("{} cannot be renamed", name_for_message(service)));
  }
}

}  // namespace

void add_rename(CLI::App &app, int &exit_code) {
  auto options = std::make_shared<rename_options>();
  CLI::App *command = add_edit_command(app, "rename", "Give a service another name", *options);
  command->add_option("SERVICE", options->service, "the service")->required();
  command->add_option("NAME", options->name, "its new name")->required();
  command->add_flag("--short", options->is_short, "the second, short name instead of the first");
  finish_edit_command(*command, *options, details, examples);
  command->callback(
      [options, &exit_code] { exit_code = run_edit(*options, [&](edit_notes &notes) { rename(*options, notes); }); });
}

}  // namespace chlist
