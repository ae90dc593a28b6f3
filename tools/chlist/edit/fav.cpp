// `chlist fav`: favourite groups and what is in them.
#include <channel/favourites.h>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <stdexcept>

#include "chlist/commands.h"
#include "chlist/edit/edits.h"
#include "chlist/edit/favourite_groups.h"
#include "chlist/edit/placement.h"

namespace chlist {
namespace {

struct fav_options {
  std::string group;
  std::string name;
  service_choice services;
  placement place;
  bool closes_gaps = false;
};

// One subcommand: what it edits, and which arguments it has.
struct fav_edit {
  const char *name;
  const char *about;
  bool has_group = false;
  bool has_name = false;
  enum { none, some, any } services = none;
  const char *details;
  std::vector<std::string> examples;
  void (*apply)(const fav_options &options, edited_list &list);
};

void new_group(const fav_options &options, edited_list &list) {
  const std::string_view name = group_name_from(options.name, list.notes);
  must_be_new_group(name);
  if (!add_group(name)) {
    throw std::runtime_error(fmt::format("no favourite group can be added: there are {}, the most that a list holds",
                                         get_fav_group_number()));
  }
}

void rename_group(const fav_options &options, edited_list &list) {
  const favourites group = favourites_named(options.group, list);
  const std::string_view name = group_name_from(options.name, list.notes);
  must_be_new_group(name, group.index);
  rename_favorite_group(group.id, name.data(), static_cast<std::int16_t>(name.size()));
}

void delete_group(const fav_options &options, edited_list &list) {
  const favourites group = favourites_named(options.group, list);
  const current_group current;
  remove_fav_group(group.id);
  current.follow();
}

void add_services(const fav_options &options, edited_list &list) {
  const favourites group = favourites_named(options.group, list);
  for (const channel_st *service : list.services(options.services)) {
    switch (add_to_group(group, *service)) {
      case group_addition::is_in_no_view:
        throw std::runtime_error(fmt::format("{} has no entry in any view", name_for_message(*service)));
      case group_addition::group_is_full:
        throw std::runtime_error(fmt::format("{} cannot be added: {} is full, it holds {}", name_for_message(*service),
                                             title_of(group.view()), get_fav_vch_number(group.index)));
      case group_addition::was_there:
        list.notes.push_back(fmt::format("{} is in {} already", name_for_message(*service), title_of(group.view())));
        break;
      case group_addition::done:
        break;
    }
  }
}

void remove_entry(const favourites &group, int index, bool closes_gap) {
  if (!closes_gap) {
    remove_fav_virtual_channel(group.id, static_cast<std::int16_t>(index));
    return;
  }
  const virtual_channel_st entry = *get_fav_vch(group.index, static_cast<std::int16_t>(index));
  remove_fav_virtual_channel_by_ts_info(entry.vch_tag, group.id, entry.net_index, entry.frequency, entry.polarisation,
                                        entry.network_id, entry.ts_id, entry.service_id);
}

void remove_services(const fav_options &options, edited_list &list) {
  const favourites group = favourites_named(options.group, list);
  const channel::view view = channel::find_view(group.view());
  for (const channel_st *service : list.services(options.services, group.view())) {
    int index = index_of(view, *service);
    if (index < 0) {
      throw std::runtime_error(
          fmt::format("{} has no entry in {}", name_for_message(*service), title_of(group.view())));
    }
    for (; index >= 0; index = index_of(view, *service)) {
      remove_entry(group, index, options.closes_gaps);
    }
  }
}

void move_in_group(const fav_options &options, edited_list &list) {
  const favourites group = favourites_named(options.group, list);
  if (options.services.where || !options.services.names.empty()) {
    move_services(group.view(), list.services(options.services, group.view()), options.place, list);
    return;
  }
  if (!options.place.to) {
    throw std::runtime_error("a group moves --to a position among the groups");
  }
  const current_group current;
  move_group(group, *options.place.to);
  current.follow();
}

const std::vector<fav_edit> &fav_edits() {
  static const std::vector<fav_edit> edits = {
      {.name = "new",
       .about = "Add a favourite group",
       .has_name = true,
       .details = "The group is empty and comes behind the others: at most 20, each with a name of its own of at most "
                  "95 bytes.",
       .examples = {"chlist fav new channels.dat Films"},
       .apply = new_group},
      {.name = "add",
       .about = "Add services to a favourite group",
       .has_group = true,
       .services = fav_edit::some,
       .details = "Services come to the end of the group, at most 40 in all, with the numbers that they have in ALL. "
                  "One that is in the group already stays where it is, with a note.",
       .examples = {"chlist fav add channels.dat Films 7 \"Film Club\"",
                    "chlist fav add channels.dat Films --where 'genre=Movie scrambled=no'"},
       .apply = add_services},
      {.name = "remove",
       .about = "Remove services from a favourite group",
       .has_group = true,
       .services = fav_edit::some,
       .details = "The services stay in the list. The numbers and position keys of the others stay as they are, unless "
                  "--close-gaps lowers each that is greater than the removed one's by one. Numbers on the command line "
                  "are those of the group.",
       .examples = {"chlist fav remove channels.dat Films 7", "chlist fav remove channels.dat Films 7 --close-gaps"},
       .apply = remove_services},
      {.name = "move",
       .about = "Move services in a favourite group, or the group",
       .has_group = true,
       .services = fav_edit::any,
       .details =
           "Numbers and position keys stay with the entries. Without a SERVICE the group itself moves --to a position "
           "among the groups, 1 to 20; a receiver whose current view is a group goes on showing the same one.",
       .examples = {"chlist fav move channels.dat Films 7 12 --to 1", "chlist fav move channels.dat Films --to 1"},
       .apply = move_in_group},
      {.name = "rename",
       .about = "Give a favourite group another name",
       .has_group = true,
       .has_name = true,
       .details = "A name has at most 95 bytes and belongs to one group, whatever its case.",
       .examples = {"chlist fav rename channels.dat Films Movies"},
       .apply = rename_group},
      {.name = "delete",
       .about = "Delete a favourite group",
       .has_group = true,
       .details = "Its services stay in the list. The groups behind it move up by one; a receiver whose current view "
                  "is a group goes on showing the same one, or ALL when it is this one.",
       .examples = {"chlist fav delete channels.dat Films"},
       .apply = delete_group},
  };
  return edits;
}

std::vector<option> options_of(const fav_edit &which, fav_options &options) {
  std::vector<option> own;
  if (which.has_group) {
    own.push_back({.names = "GROUP",
                   .target = &options.group,
                   .about = "the group: its name, or its position, 1 to 20",
                   .is_required = true});
  }
  if (which.has_name) {
    own.push_back({.names = "NAME", .target = &options.name, .about = "the group's new name", .is_required = true});
  }
  if (which.services != fav_edit::none) {
    std::ranges::move(chlist::options_of(options.services), std::back_inserter(own));
  }
  if (which.apply == remove_services) {
    own.push_back({.names = "--close-gaps",
                   .target = &options.closes_gaps,
                   .about = "lower the numbers and position keys behind the removed"});
  }
  return own;
}

edit_row row_for(const fav_edit &which) {
  auto options = std::make_shared<fav_options>();
  edit_row edit = {.parent = "fav",
                   .name = which.name,
                   .summary = which.about,
                   .details = {which.details},
                   .examples = which.examples,
                   .options = options_of(which, *options)};
  if (which.services != fav_edit::none) {
    edit.sections = {section_of_conditions()};
  }
  if (which.apply == move_in_group) {
    edit.groups = {placement_options(options->place)};
  }
  edit.take = taking<fav_options>(options, [&which](const fav_options &own, edited_list &list) {
    if (which.services == fav_edit::some) {
      own.services.must_be_given();
    }
    which.apply(own, list);
    list.entries_changed();
  });
  return edit;
}

}  // namespace

std::vector<edit_row> favourite_edits() {
  std::vector<edit_row> rows;
  std::ranges::transform(fav_edits(), std::back_inserter(rows), row_for);
  return rows;
}

command fav_command() {
  command fav = {
      .name = "fav",
      .summary = "Show and edit favourite groups",
      .details =
          {"A list has up to 20 favourite groups of up to 40 services each. Each command has a help of its own."},
      .exit_codes = {{"0", "done, or there is nothing to change"},
                     {"1", "done, with notes on standard error"},
                     {"2", "nothing was written, or only the report could not be"}},
      .examples = {"chlist fav new channels.dat Films", "chlist fav add channels.dat Films 12 \"News HD\"",
                   "chlist fav list channels.dat"}};
  std::ranges::transform(favourite_edits(), std::back_inserter(fav.commands), edit_command);
  fav.commands.push_back(fav_list_command());
  return fav;
}

}  // namespace chlist
