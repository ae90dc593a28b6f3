// `chlist sort`: another order of views.
#include <channel/sorting.h>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <span>
#include <stdexcept>
#include <unordered_set>

#include "channel/store/view.h"
#include "channel/vindex/sorting.h"
#include "chlist/edit/edited_services.h"
#include "chlist/edit/edits.h"
#include "chlist/fields/view_rows.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"

namespace chlist {
namespace {

struct sort_options {
  std::string key;
  std::vector<std::string> views;
  service_choice services;
};

// Those that are sorted when nobody names any.
constexpr std::int8_t usual_views[] = {VIEW_ALL, VIEW_TV, VIEW_RADIO, VIEW_USER, VIEW_PROMOTION};

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

// Entries of the services share the positions that they have; all others stay.
void sort_some(std::int8_t how, std::int8_t view, const std::unordered_set<const channel_st *> &services) {
  std::vector<virtual_channel_st> sorted;
  std::vector<virtual_channel_st *> positions;
  for (virtual_channel_st &entry : channel::find_view(view)) {
    if (services.contains(entry.rch)) {
      sorted.push_back(entry);
      positions.push_back(&entry);
    }
  }
  channel::qsort_virtual_channel(sorted, how);
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    *positions[i] = sorted[i];
  }
}

void sort_chosen(std::int8_t how, const sort_options &options, edited_list &list) {
  const std::vector<channel_st *> chosen = list.services(options.services);
  const std::unordered_set<const channel_st *> services(chosen.begin(), chosen.end());
  std::vector<std::int8_t> views;
  std::ranges::transform(options.views, std::back_inserter(views),
                         [&list](const std::string &view) { return sortable_view(view, list); });
  for (const std::int8_t view : views.empty() ? std::span<const std::int8_t>(usual_views) : std::span(views)) {
    sort_some(how, view, services);
  }
}

void sort_whole(std::int8_t how, const sort_options &options, edited_list &list) {
  if (options.views.empty()) {
    sort_vindex_ex(how);
  }
  for (const std::string &view : options.views) {
    sort_vch_type(how, sortable_view(view, list));
  }
}

void sort(const sort_options &options, edited_list &list) {
  const std::int8_t how = std::ranges::find(all_sorts(), options.key, &view_sort::name)->type;
  (options.services.where ? sort_chosen : sort_whole)(how, options, list);
  list.entries_changed();
}

}  // namespace

edit_row sort_edit() {
  auto options = std::make_shared<sort_options>();
  return {.name = "sort",
          .summary = "Sort views",
          .details =
              {"Entries move as a whole, so services keep their numbers: a receiver shows the new order in its "
               "lists. Without --view the ALL, TV, radio, USER and promotion views are sorted and the favourite "
               "groups stay as they are. The promotion view cannot be sorted alone. --where sorts the services that it "
               "chooses among the positions that they have."},
          .sections = {{"Sorts", sort_keys()}, {"Views", terms_of_views()}, section_of_conditions()},
          .examples = {"chlist sort channels.dat --by name",
                       "chlist sort channels.dat --by number --view tv --view fav:Films",
                       "chlist sort channels.dat --by name --where 'type=radio' --yes"},
          .options = {{.names = "--by",
                       .target = &options->key,
                       .about = "what to sort by",
                       .value = "SORT",
                       .is_required = true,
                       .choices = words_of(sort_keys())},
                      {.names = "--view",
                       .target = &options->views,
                       .about = "the view, but not promo; may be given again",
                       .value = "VIEW"},
                      where_option(options->services)},
          .take = taking<sort_options>(options, sort)};
}

}  // namespace chlist
