// `chlist order`: the order of one list on another.
#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>

#include "chlist/edit/edited_services.h"
#include "chlist/edit/edits.h"
#include "chlist/edit/favourite_groups.h"
#include "chlist/edit/paired_lists.h"
#include "chlist/edit/renumbering.h"
#include "chlist/edit/service_edits.h"
#include "chlist/edit/view_order.h"
#include "chlist/exchange/any_list.h"
#include "chlist/fields/described.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

struct order_options {
  std::filesystem::path reference;
  service_choice services;  // by a condition
  std::string rest = "append";
  bool takes_names = false;
  bool takes_numbers = false;
  bool takes_favourites = false;
  bool takes_locks = false;
  bool is_of_any_quality = false;
  bool shows_all = false;
};

// Services that do not meet the condition are neither paired nor left over.
paired_lists paired_with(const line_up &reference, const order_options &options) {
  const search_reach reach = options.is_of_any_quality ? search_reach::other_picture : search_reach::other_receiver;
  paired_lists pairs = pair_with_reference(reference, line_up_in_memory(), reach);
  pairs.keep_to(edited_list::chosen_places(options.services));
  return pairs;
}

// The numbers and the ranks that a reference gives to services of the list.
class reference_order {
 public:
  reference_order(const line_up &reference, const order_options &options, edited_list &list)
      : options_(options), list_(list), records_(records_in_order()), pairs_(paired_with(reference, options)) {
    list_.tables.push_back(table_of_pairs(pairs_, options.reference.string(), options.shows_all));
    take_order();
  }

  void apply() {
    list_.count_as_chosen(ranks_.size());
    treat_rest();
    take_names_and_locks();
    if (options_.takes_numbers) {
      take_numbers();
    }
    for (const std::int8_t view : {VIEW_ALL, VIEW_TV, VIEW_RADIO}) {
      arrange(view, ranks_);
    }
    if (options_.takes_favourites) {
      take_favourites();
    }
    list_.entries_changed();
    tell_doubts();
  }

 private:
  // The service of the list that an entry of the reference stands for, if there is one.
  [[nodiscard]] channel_st *partner_of(const line_up_entry &entry) const {
    const std::size_t partner = entry.service != nowhere ? pairs_.partners[entry.service] : nowhere;
    return partner != nowhere ? records_[partner] : nullptr;
  }

  void take_order() {
    for (const line_up_entry &entry : pairs_.reference.view(view_kind::all).entries) {
      if (const channel_st *service = partner_of(entry); service != nullptr) {
        if (ranks_.try_emplace(service, ranks_.size()).second && entry.number.major > 0) {
          numbers_.emplace(service, entry.number);
        }
      }
    }
  }

  // Services that the ALL view of the reference lacks have the last rank in common, and so the order that they have.
  void rank_behind(const channel_st &service) { ranks_.emplace(&service, records_.size()); }

  [[nodiscard]] bool can_be_edited(const channel_st &service) const {
    if (!is_found_by_identity(service)) {
      list_.notes.push_back(fmt::format("{} stays as it is: its identity leads to another service or to none",
                                        describe(known_as(service))));
      return false;
    }
    return true;
  }

  [[nodiscard]] channel_st &record_at(std::size_t place) const { return *records_[place]; }

  void treat_rest() {
    if (options_.rest == "keep") {
      return;
    }
    for (const kept_service &each : pairs_.again.found) {
      rank_behind(record_at(each.after));
    }
    for (const std::size_t place : pairs_.again.added) {
      rank_behind(record_at(place));
    }
    for (const std::size_t place : pairs_.only_in_list()) {
      if (options_.rest != "append" && can_be_edited(record_at(place))) {
        put_aside(record_at(place));
      }
    }
  }

  void put_aside(const channel_st &service) {
    list_.count_as_chosen(1);
    if (options_.rest == "hide") {
      set_flag(service, CHANNEL_FLAG_SKIP, true);
    } else {
      ranks_.erase(&service);
      remove_service(service, list_);
    }
  }

  void take_names_and_locks() {
    for (const kept_service &each : pairs_.again.found) {
      const line_up_service &model = pairs_.reference.services[each.before];
      const line_up_service &own = pairs_.list.services[each.after];
      const bool renames = options_.takes_names && ((!model.name.empty() && model.name != own.name) ||
                                                    (!model.short_name.empty() && model.short_name != own.short_name));
      const bool locks =
          options_.takes_locks && model.has_flag(CHANNEL_FLAG_LOCKED) != own.has_flag(CHANNEL_FLAG_LOCKED);
      if ((!renames && !locks) || !can_be_edited(*records_[each.after])) {
        continue;
      }
      if (renames) {
        take_names(model, own, *records_[each.after]);
      }
      if (locks) {
        set_flag(*records_[each.after], CHANNEL_FLAG_LOCKED, model.has_flag(CHANNEL_FLAG_LOCKED));
      }
    }
  }

  void take_names(const line_up_service &model, const line_up_service &own, const channel_st &service) {
    if (!model.name.empty() && model.name != own.name) {
      set_name(service, name_place::first, model.name, list_);
    }
    if (!model.short_name.empty() && model.short_name != own.short_name) {
      set_name(service, name_place::second, model.short_name, list_);
    }
  }

  // A service that the reference has no number for keeps its own, unless it is taken now: it gets the next one that is
  // free behind all others.
  void take_numbers() {
    std::set<const channel_st *> numbered;
    std::vector<std::optional<channel_number>> wanted;
    std::set<std::pair<int, int>> taken;
    int largest = 0;
    for (const virtual_channel_st &entry : channel::find_view(VIEW_ALL)) {
      const auto found = numbers_.find(entry.rch);
      const bool is_given = found != numbers_.end() && numbered.insert(entry.rch).second;
      wanted.push_back(is_given ? std::optional(found->second) : std::nullopt);
      largest = std::max({largest, int{entry.major_ch_num}, is_given ? found->second.major : 0});
      if (is_given) {
        taken.emplace(found->second.major, found->second.minor);
      }
    }
    std::vector<channel_number> numbers;
    for (const virtual_channel_st &entry : channel::find_view(VIEW_ALL)) {
      const std::optional<channel_number> &given = wanted[numbers.size()];
      const bool is_free = !taken.contains({entry.major_ch_num, entry.minor_ch_num});
      numbers.push_back(given ? *given : is_free ? number_of(entry) : next_number(largest));
    }
    renumber_all_with_followers(numbers, list_.notes);
  }

  static channel_number next_number(int &largest) {
    if (largest == largest_channel_number) {
      throw std::runtime_error(fmt::format(
          "no number is free above {} for the services whose numbers REF gives to others", largest_channel_number));
    }
    return {++largest, 0};
  }

  void take_favourites() {
    for (const favourite_group &model : pairs_.reference.favourites) {
      if (model.is_counted && !model.name.empty()) {
        take_favourites(model);
      }
    }
  }

  void take_favourites(const favourite_group &model) {
    std::optional<favourites> group = group_of_name(model.name);
    if (!group) {
      group = add_group(group_name_from(model.name, list_.notes));
    }
    if (!group) {
      list_.notes.push_back(fmt::format("there is no room for the favourite group {}", shown(model.name)));
      return;
    }
    service_ranks ranks;
    std::size_t left_out = 0;
    for (const line_up_entry &entry : model.entries) {
      const channel_st *service = partner_of(entry);
      if (service != nullptr) {
        ranks.try_emplace(service, ranks.size());
        left_out += add_to_group(*group, *service) == group_addition::group_is_full ? 1 : 0;
      }
    }
    for (const virtual_channel_st &entry : channel::find_view(group->view())) {
      if (entry.rch != nullptr) {
        ranks.try_emplace(entry.rch, records_.size());
      }
    }
    arrange(group->view(), ranks);
    if (left_out > 0) {
      list_.notes.push_back(
          fmt::format("{} has no room for {}", title_of(group->view()), counted(left_out, "service")));
    }
  }

  void tell_doubts() {
    if (const std::size_t doubts = pairs_.again.doubtful.size(); doubts > 0) {
      list_.notes.push_back(fmt::format("{} of {} could be another one, or any of several: not ordered",
                                        counted(doubts, "service"), options_.reference.string()));
    }
  }

  const order_options &options_;
  edited_list &list_;
  std::vector<channel_st *> records_;  // by the places of the list
  paired_lists pairs_;
  service_ranks ranks_;
  std::map<const channel_st *, channel_number> numbers_;
};

// REF is read before FILE is: reading a list of another format takes the list in memory.
std::function<list_edit()> taking_order(const std::shared_ptr<order_options> &options) {
  return [options]() -> list_edit {
    const order_options taken = std::exchange(*options, {});
    return [taken, reference = read_any_list(taken.reference)](edited_list &list) {
      list.notes.insert(list.notes.end(), reference.notes.begin(), reference.notes.end());
      reference_order(reference.list, taken, list).apply();
    };
  };
}

std::vector<term> kinds_of_rest() {
  return {{"keep", "stay at their positions, the others around them"},
          {"append", "come behind the others, in the order that they have"},
          {"hide", "the same, and are passed over when zapping"},
          {"remove", "go, as `chlist remove` takes them out"}};
}

std::vector<term> ways_of_pairing() {
  return {{"identity", "source, network, transponder and service id, as a receiver finds services"},
          {"ids", "source, network and service id on another transponder, and no other name"},
          {"name", "source, type and name, without regard to case and accents"},
          {"name on another source", "type and name"},
          {"name without quality", "with --any-quality: the name without SD, HD, FHD, UHD, 4K or 8K at its end"}};
}

}  // namespace

edit_row order_edit() {
  auto options = std::make_shared<order_options>();
  return {
      .name = "order",
      .summary = "Give a list the order of another one",
      .details = {"The ALL view gets the order that REF's has, and the TV and radio views follow. REF is a channel "
                  "file or a list of any format that `chlist import` reads. Entries move as a whole, so services keep "
                  "their numbers unless --numbers takes those of REF; a service that REF does not have and whose "
                  "number is taken by that gets the next one that is free behind all others.",
                  "Services are paired in the ways below, one after the other. What could be several services, and "
                  "what has the ids of one and another name, is not guessed: it is told, neither ordered nor hidden "
                  "nor removed, and the exit code is 1. A table tells what was paired how, ten of a kind.",
                  "--favourites adds REF's favourite groups, and what is in them to groups of the same name: in REF's "
                  "order, in front of what else is in these.",
                  "With --where only services of FILE that meet the condition take part: all others stay where they "
                  "are, and keep their numbers unless --numbers gives those to others."},
      .sections = {{"Ways of pairing", ways_of_pairing()},
                   {"Services that REF does not have", kinds_of_rest()},
                   section_of_conditions()},
      .examples = {"chlist order channels.dat --like mine.dat --dry-run",
                   "chlist order channels.dat --like channels.conf --numbers --favourites",
                   "chlist order channels.dat --like userbouquets.csv --any-quality --rest hide"},
      .options = {{.names = "--like",
                   .target = &options->reference,
                   .about = "the list whose order is to be had",
                   .value = "REF",
                   .is_required = true},
                  where_option(options->services),
                  {.names = "--names", .target = &options->takes_names, .about = "take REF's names as well"},
                  {.names = "--numbers",
                   .target = &options->takes_numbers,
                   .about = "take REF's numbers, those of its ALL view"},
                  {.names = "--favourites",
                   .target = &options->takes_favourites,
                   .about = "take REF's favourite groups"},
                  {.names = "--locks",
                   .target = &options->takes_locks,
                   .about = "lock what is locked in REF, and nothing else of what was paired"},
                  {.names = "--any-quality",
                   .target = &options->is_of_any_quality,
                   .about = "pair \"News\" with \"News HD\" when there is no other"},
                  {.names = "--rest",
                   .target = &options->rest,
                   .about = "what becomes of services that REF does not have (append)",
                   .value = "WHAT",
                   .choices = words_of(kinds_of_rest())},
                  {.names = "--all", .target = &options->shows_all, .about = "show every pair"}},
      .take = taking_order(options)};
}

}  // namespace chlist
