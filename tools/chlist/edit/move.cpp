// `chlist move`: services to another place in a view.
#include <memory>

#include "chlist/edit/edits.h"
#include "chlist/edit/placement.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"

namespace chlist {
namespace {

struct move_options {
  service_choice services;
  std::string view = "all";
  placement place;

  void must_go_together() const { services.must_be_given(); }
};

void move(const move_options &options, edited_list &list) {
  const std::int8_t view = list.view(options.view);
  move_services(view, list.services(options.services, view), options.place, list);
}

}  // namespace

edit_row move_edit() {
  auto options = std::make_shared<move_options>();
  edit_row edit = {
      .name = "move",
      .summary = "Move services to another place in a view",
      .details = {"The services stand one after another at their new place, in the order in which they are given, or, "
                  "chosen with --where, in that of the view. They keep their numbers (`chlist renumber` changes "
                  "those), and the other views keep their order: entries move in one view alone. Numbers on the "
                  "command line are those of the view. `chlist fav move` moves in a favourite group, and groups."},
      .sections = {{"Views", terms_of_views()}, section_of_conditions()},
      .examples = {"chlist move channels.dat 12 14 --before 3", "chlist move channels.dat News --to 1 --view tv",
                   "chlist move channels.dat --where 'name~\" HD$\"' --to 1 --view tv --yes"},
      .options = options_of(options->services)};
  edit.options.push_back({.names = "--view", .target = &options->view, .about = "the view (all)", .value = "VIEW"});
  edit.groups = {placement_options(options->place)};
  edit.take = taking<move_options>(options, move);
  return edit;
}

}  // namespace chlist
