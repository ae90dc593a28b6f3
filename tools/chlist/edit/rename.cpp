// `chlist rename`: another name for a service.
#include <channel/flags.h>
#include <fmt/format.h>

#include <memory>
#include <stdexcept>

#include "chlist/commands.h"
#include "chlist/edit/edit_session.h"
#include "chlist/edit/edited_services.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/text/plain_text.h"

namespace chlist {
namespace {

struct rename_options : edit_options {
  std::string service;
  std::string name;
  bool is_short = false;
};

void rename(const rename_options &options, edit_notes &notes) {
  const channel_st &service = editable_service(options.service);
  must_be_plain(options.name, "the name");
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

command rename_command() {
  auto options = std::make_shared<rename_options>();
  command edit = edit_command(
      {.name = "rename",
       .summary = "Give a service another name",
       .details = {"The name is replaced; one that is longer than the 96 bytes that a list holds is cut in front of a "
                   "character, with a note. One that is not UTF-8, or holds a line end or another control character, "
                   "is refused. All views show the service's one name, so nothing else follows."},
       .examples = {"chlist rename channels.dat 7 \"News HD\"",
                    "chlist rename channels.dat \"News HD\" News --short --dry-run"},
       .options = {{.names = "SERVICE", .target = &options->service, .about = "the service", .is_required = true},
                   {.names = "NAME", .target = &options->name, .about = "its new name", .is_required = true},
                   {.names = "--short",
                    .target = &options->is_short,
                    .about = "the second, short name instead of the first"}}},
      *options);
  edit.run = [options] { return run_edit(*options, [&](edit_notes &notes) { rename(*options, notes); }); };
  return edit;
}

}  // namespace chlist
