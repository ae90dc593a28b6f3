// `chlist duplicates`: services that are there more than once, and what becomes of those that are not preferred.
#include <fmt/format.h>

#include <memory>
#include <string_view>
#include <utility>

#include "chlist/compare/duplicates.h"
#include "chlist/edit/edited_services.h"
#include "chlist/edit/edits.h"
#include "chlist/edit/service_edits.h"
#include "chlist/edit/view_order.h"
#include "chlist/fields/described.h"
#include "chlist/first_of_a_kind.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"
#include "chlist/position.h"
#include "chlist/text/shown.h"
#include "chlist/text_table.h"

namespace chlist {
namespace {

struct duplicates_options {
  service_choice services;  // by a condition
  std::string by = "ids";
  std::string preferred = "hd,free,lower-number";
  bool skips = false;
  bool removes = false;
  bool orders = false;
  bool shows_all = false;

  // What becomes of the services that are not preferred.
  [[nodiscard]] std::string_view fate() const {
    return skips ? "skipped" : removes ? "removed" : orders ? "behind it" : "duplicate";
  }

  void must_go_together() const { merits_named(preferred); }
};

struct found_duplicates {
  line_up list;
  std::vector<duplicate_group> groups;

  [[nodiscard]] std::size_t duplicates() const {
    std::size_t count = 0;
    for (const duplicate_group &group : groups) {
      count += group.size() - 1;
    }
    return count;
  }
};

// The preferred one takes the first of the positions that the group has in a view, the others follow.
void order_group(const duplicate_group &group, const std::vector<channel_st *> &records) {
  service_ranks ranks;
  for (const std::size_t place : group) {
    ranks.try_emplace(records[place], ranks.size());
  }
  for (const std::int8_t view : {VIEW_ALL, VIEW_TV, VIEW_RADIO}) {
    arrange(view, ranks);
  }
}

void put_aside(const duplicates_options &options, const channel_st &service, edited_list &list) {
  if (!is_found_by_identity(service)) {
    list.notes.push_back(fmt::format("{} stays as it is: its identity leads to another service or to none",
                                     describe(known_as(service))));
  } else if (options.skips) {
    set_flag(service, CHANNEL_FLAG_SKIP, true);
  } else {
    remove_service(service, list);
  }
}

void treat(const duplicates_options &options, const found_duplicates &found, edited_list &list) {
  const std::vector<channel_st *> records = records_in_order();
  list.count_as_chosen(found.duplicates());
  for (const duplicate_group &group : found.groups) {
    if (options.orders) {
      order_group(group, records);
      continue;
    }
    for (std::size_t i = 1; i < group.size(); ++i) {
      put_aside(options, *records[group[i]], list);
    }
  }
  list.entries_changed();
}

// The first number of a service in ALL; a dash when it has none.
std::string number_in_all(const line_up &list, std::size_t service) {
  for (const line_up_entry &entry : list.view(view_kind::all).entries) {
    if (entry.service == service) {
      return text_of(entry.number);
    }
  }
  return "-";
}

void add_rows(text_table &table, const duplicates_options &options, const found_duplicates &found, std::size_t index) {
  const duplicate_group &group = found.groups[index];
  for (const std::size_t place : group) {
    const line_up_service &service = found.list.services[place];
    table.add({std::to_string(position_of(index)), std::string(place == group.front() ? "stays" : options.fate()),
               number_in_all(found.list, place), harmless(service.name), identity_text(service.id()),
               service.has_flag(CHANNEL_FLAG_FTA) ? "yes" : "no"});
  }
}

std::string text_of_duplicates(const duplicates_options &options, const found_duplicates &found) {
  std::string text =
      fmt::format("{} of the same service, by {}: {} besides those that stay\n", counted(found.groups.size(), "group"),
                  options.by, counted(found.duplicates(), "service"));
  text_table table({{"group", true}, {""}, {"number", true}, {"name", false, true}, {"identity"}, {"scrambled"}});
  first_of_a_kind shown_groups(options.shows_all);
  for (std::size_t index = 0; index < found.groups.size(); ++index) {
    if (shown_groups.takes("groups")) {
      add_rows(table, options, found, index);
    }
  }
  if (!found.groups.empty()) {
    text += table.text();
  }
  for (const auto &[kind, count] : shown_groups.left_out()) {
    text += fmt::format("and {} more {} (--all)\n", count, kind);
  }
  return text;
}

json json_of_duplicates(const found_duplicates &found) {
  json groups = json::array();
  for (const duplicate_group &group : found.groups) {
    json others = json::array();
    for (std::size_t i = 1; i < group.size(); ++i) {
      others.push_back(json_of(known_as(found.list.services[group[i]])));
    }
    groups.push_back({{"stays", json_of(known_as(found.list.services[group.front()]))}, {"duplicates", others}});
  }
  return groups;
}

void find_and_treat(const duplicates_options &options, edited_list &list) {
  found_duplicates found = {.list = line_up_in_memory(), .groups = {}};
  found.groups = find_duplicates(found.list, sameness_named(options.by), merits_named(options.preferred),
                                 edited_list::chosen_places(options.services));
  list.tables.push_back(
      {text_of_duplicates(options, found), {{"by", options.by}, {"duplicate_groups", json_of_duplicates(found)}}});
  if (options.skips || options.removes || options.orders) {
    treat(options, found, list);
  }
}

}  // namespace

edit_row duplicates_edit() {
  auto options = std::make_shared<duplicates_options>();
  return {.name = "duplicates",
          .summary = "Find services that are there more than once",
          .details =
              {"Groups of the same service are shown, and which one of each stays. Nothing is written without "
               "--skip, --remove or --order; each of these can be looked at with --dry-run. Ten groups are shown "
               "unless --all asks for the others.",
               "What stays has most of what is preferred, the first word counting most; of equals it is the first "
               "in ALL. --order gives it the first of the positions that its group has in ALL, and in the TV or "
               "radio view, and the others those behind; numbers stay with their services. With --where only services "
               "that meet the condition are looked at."},
          .sections = {{"By what services are the same", kinds_of_sameness()},
                       {"What is preferred", kinds_of_merit()},
                       section_of_conditions()},
          .examples = {"chlist duplicates channels.dat", "chlist duplicates channels.dat --by name --prefer hd --order",
                       "chlist duplicates channels.dat --by name+quality --prefer free,lower-number --skip --dry-run"},
          .options = {{.names = "--by",
                       .target = &options->by,
                       .about = "by what services are the same (ids)",
                       .value = "WHAT",
                       .choices = words_of(kinds_of_sameness())},
                      where_option(options->services),
                      {.names = "--prefer",
                       .target = &options->preferred,
                       .about = "what stays, words with commas between them (hd,free,lower-number)",
                       .value = "WORDS"},
                      {.names = "--skip",
                       .target = &options->skips,
                       .about = "pass over the others when zapping",
                       .excluded = {"--remove", "--order"}},
                      {.names = "--remove",
                       .target = &options->removes,
                       .about = "remove the others from the list",
                       .excluded = {"--order"}},
                      {.names = "--order", .target = &options->orders, .about = "move the others behind what stays"},
                      {.names = "--all", .target = &options->shows_all, .about = "show every group"}},
          .take = taking<duplicates_options>(options, find_and_treat)};
}

}  // namespace chlist
