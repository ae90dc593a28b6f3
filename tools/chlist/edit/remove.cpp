// `chlist remove` and `chlist keep`: services and their entries out of the list.
#include <memory>
#include <stdexcept>
#include <unordered_set>

#include "chlist/edit/edits.h"
#include "chlist/edit/service_edits.h"

namespace chlist {
namespace {

struct remove_options {
  service_choice services;

  void must_go_together() const { services.must_be_given(); }
};

void remove(const remove_options &options, edited_list &list) {
  for (const channel_st *service : list.services(options.services)) {
    remove_service(*service, list);
  }
}

// Those that go are chosen by what stays, which nobody sees in the words of the command.
void keep(const remove_options &options, edited_list &list) {
  const std::vector<channel_st *> kept = list.services_that_stay(options.services);
  if (kept.empty()) {
    throw std::runtime_error("no service is chosen: nothing would be left of the list");
  }
  const std::unordered_set<const channel_st *> stays(kept.begin(), kept.end());
  std::vector<channel_st *> gone = list.all_services();
  std::erase_if(gone, [&stays](const channel_st *service) { return stays.contains(service); });
  list.count_as_chosen(gone.size());
  for (const channel_st *service : gone) {
    remove_service(*service, list);
  }
}

}  // namespace

edit_row remove_edit() {
  auto options = std::make_shared<remove_options>();
  return {.name = "remove",
          .summary = "Remove services from the list",
          .details = {"A service goes with its entries in all views and favourite groups. The numbers of the others "
                      "stay as they are; its network, its transponder and its provider stay as well, even when they "
                      "have no service left."},
          .sections = {section_of_conditions()},
          .examples = {"chlist remove channels.dat \"Shopping 24\" 7-2",
                       "chlist remove channels.dat 1:2:3:11727480H:5 -o smaller.dat",
                       "chlist remove channels.dat --where 'type=data or name~\"^test\"'"},
          .options = options_of(options->services),
          .take = taking<remove_options>(options, remove)};
}

edit_row keep_edit() {
  auto options = std::make_shared<remove_options>();
  return {.name = "keep",
          .summary = "Remove all services but some",
          .details = {"The counterpart of `chlist remove`: all services go but those that are named or chosen, in the "
                      "same way. More than one that would go are shown and asked about, as those that --where chooses; "
                      "what keeps no service is refused."},
          .sections = {section_of_conditions()},
          .examples = {"chlist keep channels.dat --where 'scrambled=no (type=TV or type=\"HD TV\")' --dry-run",
                       "chlist keep channels.dat 1 2 3 --yes"},
          .options = options_of(options->services),
          .take = taking<remove_options>(options, keep)};
}

}  // namespace chlist
