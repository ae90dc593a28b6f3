// `chlist move`: services to another place in a view.
#include <memory>

#include "chlist/edit/edit_commands.h"
#include "chlist/edit/placement.h"
#include "chlist/service/selection.h"

namespace chlist {
namespace {

constexpr const char *details =
    "The services stand one after another at their new place, in the order in which they are given. They keep their\n"
    "numbers (`chlist renumber` changes those), and the other views keep their order: entries move in one view alone.\n"
    "Numbers on the command line are those of the view. `chlist fav move` moves in a favourite group, and groups.\n";

constexpr const char *examples = "  chlist move channels.dat 12 14 --before 3\n"
                                 "  chlist move channels.dat News --to 0 --view tv";

struct move_options : edit_options {
  std::vector<std::string> services;
  std::string view = "all";
  placement place;
};

void move(const move_options &options, edit_notes &notes) {
  const std::int8_t view = view_named(options.view);
  const std::vector<channel_st *> services = editable_services(options.services, notes, view);
  move_services(view, services, options.place);
}

}  // namespace

void add_move(CLI::App &app, int &exit_code) {
  auto options = std::make_shared<move_options>();
  CLI::App *command = add_edit_command(app, "move", "Move services to another place in a view", *options);
  command->add_option("SERVICE", options->services, "the services")->required();
  add_placement_options(*command, options->place);
  command->add_option("--view", options->view, "the view: all, tv, radio, user, promo or fav:GROUP (default all)");
  finish_edit_command(*command, *options, details, examples);
  command->callback(
      [options, &exit_code] { exit_code = run_edit(*options, [&](edit_notes &notes) { move(*options, notes); }); });
}

}  // namespace chlist
