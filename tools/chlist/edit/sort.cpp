// `chlist sort`: another order of views.
#include <channel/sorting.h>
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "chlist/edit/edited_services.h"
#include "chlist/edit/edits.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"
#include "chlist/listing/view_rows.h"

namespace chlist {
namespace {

struct sort_options {
  std::string key;
  std::vector<std::string> views;
};

// A favourite key is the order that a group has.
std::vector<term> sort_keys() {
  std::vector<term> keys = terms_of_sorts();
  std::erase_if(keys, [](const term &key) { return key.word == "favourite_key"; });
  return keys;
}

std::int8_t sortable_view(const std::string &name, edited_list &list) {
  const std::int8_t view = list.view(name);
  if (view == VIEW_PROMOTION) {
    throw std::runtime_error("the promotion view cannot be sorted alone");
  }
  return view;
}

void sort(const sort_options &options, edited_list &list) {
  const std::int8_t how = std::ranges::find(all_sorts(), options.key, &view_sort::name)->type;
  if (options.views.empty()) {
    sort_vindex_ex(how);
  }
  for (const std::string &view : options.views) {
    sort_vch_type(how, sortable_view(view, list));
  }
  list.entries_changed();
}

}  // namespace

edit_row sort_edit() {
  auto options = std::make_shared<sort_options>();
  return {.name = "sort",
          .summary = "Sort views",
          .details = {"Entries move as a whole, so services keep their numbers: a receiver shows the new order in its "
                      "lists. Without --view the ALL, TV, radio, USER and promotion views are sorted and the favourite "
                      "groups stay as they are. The promotion view cannot be sorted alone."},
          .sections = {{"Sorts", sort_keys()}, {"Views", terms_of_views()}},
          .examples = {"chlist sort channels.dat --by name",
                       "chlist sort channels.dat --by number --view tv --view fav:Films"},
          .options = {{.names = "--by",
                       .target = &options->key,
                       .about = "what to sort by",
                       .value = "SORT",
                       .is_required = true,
                       .choices = words_of(sort_keys())},
                      {.names = "--view",
                       .target = &options->views,
                       .about = "the view, but not promo; may be given again",
                       .value = "VIEW"}},
          .take = taking<sort_options>(options, sort)};
}

}  // namespace chlist
