// `chlist sort`: another order of views.
#include <channel/sorting.h>
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "chlist/commands.h"
#include "chlist/edit/edit_session.h"
#include "chlist/edit/edited_services.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"

namespace chlist {
namespace {

constexpr const char *sort_details =
    "Entries move as a whole, so services keep their numbers: a receiver shows the new order in its lists. Without\n"
    "--view the ALL, TV, radio, USER and promotion views are sorted and the favourite groups stay as they are. The\n"
    "promotion view cannot be sorted alone.\n"
    "\n"
    "Keys:\n"
    "  number       the channel number, then the minor one\n"
    "  name         the name, without regard to case\n"
    "  transponder  the frequency, then the service id\n"
    "  service_id   the service id\n"
    "  order_key    the key of the user's own order (`chlist set FILE SERVICE order_key=N`)\n";

constexpr const char *sort_examples = "  chlist sort channels.dat --by name\n"
                                      "  chlist sort channels.dat --by number --view tv --view fav:Films";

struct sort_key {
  const char *name;
  std::int8_t type;
};

constexpr sort_key sort_keys[] = {{"number", SORT_NUMBER},
                                  {"name", SORT_CH_NAME},
                                  {"transponder", SORT_TRANSPONDER},
                                  {"service_id", SORT_SERVICE_ID},
                                  {"order_key", SORT_USER_TYPE}};

struct sort_options : edit_options {
  std::string key;
  std::vector<std::string> views;
};

std::vector<std::string> key_names() {
  std::vector<std::string> names;
  std::ranges::transform(sort_keys, std::back_inserter(names), &sort_key::name);
  return names;
}

std::int8_t sortable_view(const std::string &name) {
  const std::int8_t view = view_named(line_up_in_memory(), name);
  if (view == VIEW_PROMOTION) {
    throw std::runtime_error("the promotion view cannot be sorted alone");
  }
  return view;
}

void sort(const sort_options &options) {
  const std::int8_t how = std::ranges::find(sort_keys, options.key, &sort_key::name)->type;
  if (options.views.empty()) {
    sort_vindex_ex(how);
  }
  for (const std::string &view : options.views) {
    sort_vch_type(how, sortable_view(view));
  }
}

}  // namespace

command sort_command() {
  auto options = std::make_shared<sort_options>();
  command edit =
      edit_command({.name = "sort",
                    .summary = "Sort views",
                    .details = sort_details,
                    .examples = sort_examples,
                    .options = {{.names = "--by",
                                 .target = &options->key,
                                 .about = "what to sort by",
                                 .is_required = true,
                                 .choices = key_names()},
                                {.names = "--view",
                                 .target = &options->views,
                                 .about = "the view: all, tv, radio, user or fav:GROUP; may be given again"}}},
                   *options);
  edit.run = [options] { return run_edit(*options, [&](edit_notes & /*notes*/) { sort(*options); }); };
  return edit;
}

}  // namespace chlist
