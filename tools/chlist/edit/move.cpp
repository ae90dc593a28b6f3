// `chlist move`: services to another place in a view.
#include <memory>

#include "chlist/commands.h"
#include "chlist/edit/edit_session.h"
#include "chlist/edit/placement.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"

namespace chlist {
namespace {

struct move_options : edit_options {
  std::vector<std::string> services;
  std::string view = "all";
  placement place;
};

void move(const move_options &options, edit_notes &notes) {
  const std::int8_t view = view_named(line_up_in_memory(), options.view);
  const std::vector<channel_st *> services = editable_services(options.services, notes, view);
  move_services(view, services, options.place);
}

}  // namespace

command move_command() {
  auto options = std::make_shared<move_options>();
  command edit = edit_command(
      {.name = "move",
       .summary = "Move services to another place in a view",
       .details = {"The services stand one after another at their new place, in the order in which they are given. "
                   "They keep their numbers (`chlist renumber` changes those), and the other views keep their order: "
                   "entries move in one view alone. Numbers on the command line are those of the view. `chlist fav "
                   "move` moves in a favourite group, and groups."},
       .sections = {{"Views", terms_of_views()}},
       .examples = {"chlist move channels.dat 12 14 --before 3", "chlist move channels.dat News --to 1 --view tv"},
       .options = {{.names = "SERVICE", .target = &options->services, .about = "the services", .is_required = true},
                   {.names = "--view", .target = &options->view, .about = "the view (all)", .value = "VIEW"}}},
      *options);
  edit.groups = {placement_options(options->place)};
  edit.run = [options] { return run_edit(*options, [&](edit_notes &notes) { move(*options, notes); }); };
  return edit;
}

}  // namespace chlist
