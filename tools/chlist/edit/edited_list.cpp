// Who is meant, looked up in a line-up of the list in memory.
#include "chlist/edit/edited_list.h"

#include <channel/store.h>
#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "channel/store/group_table.h"
#include "chlist/edit/edited_services.h"
#include "chlist/edit/service_edits.h"
#include "chlist/fields/described.h"
#include "chlist/fields/where.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

channel_st &editable(channel_st &service) {
  if (!is_found_by_identity(service)) {
    throw std::runtime_error(fmt::format("{} cannot be edited: its identity leads to another service or to none",
                                         describe(known_as(service))));
  }
  return service;
}

// The entries of a view that show a service, and behind those of ALL the services that it does not show.
std::vector<service_row> rows_to_choose_from(const line_up &list, std::int8_t view) {
  std::vector<service_row> rows = rows_of(list, view);
  std::erase_if(rows, [](const service_row &row) { return row.service == nullptr; });
  if (view != VIEW_ALL) {
    return rows;
  }
  std::unordered_set<const line_up_service *> is_shown;
  for (const service_row &row : rows) {
    is_shown.insert(row.service);
  }
  for (const line_up_service &service : list.services) {
    if (!is_shown.contains(&service)) {
      rows.push_back({.list = &list, .service = &service});
    }
  }
  return rows;
}

std::vector<line_up_entry> &entries_to_refresh(line_up &list, std::int8_t view) {
  return const_cast<std::vector<line_up_entry> &>(entries_of(list, view));
}

}  // namespace

// A line-up of the list in memory as it was, and the records of its services, which come in the same order. What edits
// change of names, numbers and groups is brought up to date; nothing else of it is asked for.
class edited_list::known_services {
 public:
  known_services() : list_(line_up_in_memory()), records_(records_in_order()), finder_(list_) {
    for (std::size_t place = 0; place < records_.size(); ++place) {
      places_.emplace(records_[place], place);
    }
  }
  known_services(const known_services &) = delete;
  known_services &operator=(const known_services &) = delete;

  channel_st &named(std::string_view text, std::int8_t view) {
    if (!is_identity(text)) {
      refresh(view);
    }
    return *records_[finder_.one_named(text, view)];
  }

  [[nodiscard]] const line_up &groups() {
    refresh_groups();
    return list_;
  }

  void was_renamed(const channel_st &service) {
    const std::size_t place = places_.at(&service);
    list_.services[place].name = name_in(service.name[0].text);
    finder_.was_renamed(place);
  }

  void will_be_removed(const channel_st &service) {
    const auto known = places_.find(&service);
    finder_.was_removed(known->second);
    places_.erase(known);
    entries_changed();
  }

  void entries_changed() {
    are_groups_stale_ = true;
    for (const std::int8_t view : saved_views()) {
      stale_.insert(view);
    }
  }

 private:
  static bool is_identity(std::string_view text) { return read_identity(text).has_value(); }

  void refresh(std::int8_t view) {
    if (stale_.erase(view) == 0) {
      return;
    }
    std::vector<line_up_entry> &entries = entries_to_refresh(list_, view);
    entries.clear();
    for (const virtual_channel_st &entry : channel::find_view(view)) {
      const auto known = places_.find(entry.rch);
      entries.push_back({.service = known != places_.end() ? known->second : nowhere,
                         .number = {entry.major_ch_num, entry.minor_ch_num}});
    }
  }

  void refresh_groups() {
    if (!std::exchange(are_groups_stale_, false)) {
      return;
    }
    const auto count = static_cast<std::size_t>(channel::favourite_table().size());
    for (std::size_t group = 0; group < list_.favourites.size(); ++group) {
      favourite_group &refreshed = list_.favourites[group];
      refreshed.is_counted = group < count;
      refreshed.name = refreshed.is_counted ? name_in(get_channel_list()->favorite_group[group].name) : "";
    }
  }

  line_up list_;
  std::vector<channel_st *> records_;
  std::unordered_map<const channel_st *, std::size_t> places_;
  service_finder finder_;
  std::unordered_set<std::int8_t> stale_;  // views
  bool are_groups_stale_ = false;
};

void service_choice::must_be_given() const {
  if (names.empty() && !where) {
    throw usage_error("SERVICE or --where is required");
  }
}

option where_option(service_choice &choice) {
  return {.names = "--where",
          .target = &choice.where,
          .about = "the services that meet a condition, instead of naming them",
          .value = "CONDITION"};
}

std::vector<option> options_of(service_choice &choice) {
  option where = where_option(choice);
  where.excluded = {"SERVICE"};
  return {{.names = "SERVICE", .target = &choice.names, .about = "the services"}, where};
}

term_section section_of_conditions() { return {"Conditions", terms_of_conditions()}; }

edited_list::edited_list() = default;
edited_list::~edited_list() = default;

edited_list::known_services &edited_list::known() {
  if (known_ == nullptr) {
    known_ = std::make_unique<known_services>();
  }
  return *known_;
}

void edited_list::was_renamed(const channel_st &service) { known().was_renamed(service); }
void edited_list::will_be_removed(const channel_st &service) { known().will_be_removed(service); }
void edited_list::services_changed() { known_.reset(); }

void edited_list::entries_changed() {
  if (known_ != nullptr) {
    known_->entries_changed();
  }
}

std::int8_t edited_list::view(std::string_view name) { return view_named(known().groups(), name); }
std::size_t edited_list::index_of_group(std::string_view name) { return favourite_group_named(known().groups(), name); }

channel_st &edited_list::service(std::string_view text, std::int8_t view) {
  return editable(known().named(text, view));
}

std::vector<channel_st *> edited_list::services(const service_choice &choice, std::int8_t view) {
  if (!choice.where) {
    return services_named(choice.names, view);
  }
  std::vector<channel_st *> found = services_where(*choice.where, view);
  count_as_chosen(found.size());
  return found;
}

std::vector<channel_st *> edited_list::services_that_stay(const service_choice &choice) {
  return choice.where ? services_where(*choice.where, VIEW_ALL) : services_named(choice.names, VIEW_ALL);
}

std::vector<bool> edited_list::chosen_places(const service_choice &choice) {
  const std::vector<channel_st *> records = records_in_order();
  std::vector<bool> is_chosen(records.size(), !choice.where);
  if (choice.where) {
    const std::vector<channel_st *> found = services_where(*choice.where, VIEW_ALL);
    const std::unordered_set<const channel_st *> wanted(found.begin(), found.end());
    for (std::size_t place = 0; place < records.size(); ++place) {
      is_chosen[place] = wanted.contains(records[place]);
    }
  }
  return is_chosen;
}

std::vector<channel_st *> edited_list::all_services() {
  std::vector<channel_st *> all = records_in_order();
  std::ranges::for_each(all, [](channel_st *each) { editable(*each); });
  return all;
}

std::vector<channel_st *> edited_list::services_named(const std::vector<std::string> &names, std::int8_t view) {
  std::vector<channel_st *> found;
  std::unordered_set<const channel_st *> taken;
  for (const std::string &name : names) {
    channel_st &named = service(name, view);
    if (taken.insert(&named).second) {
      found.push_back(&named);
    } else {
      notes.push_back(fmt::format("{} is named twice: taken once", name_for_message(named)));
    }
  }
  return found;
}

std::vector<channel_st *> edited_list::services_where(const std::string &condition, std::int8_t view) {
  const where wanted(condition);
  const line_up list = line_up_in_memory();
  const std::vector<channel_st *> records = records_in_order();
  std::vector<channel_st *> found;
  std::unordered_set<const channel_st *> taken;
  for (const service_row &row : rows_to_choose_from(list, view)) {
    channel_st *record = records[static_cast<std::size_t>(row.service - list.services.data())];
    if (wanted.takes(row) && taken.insert(record).second) {
      found.push_back(&editable(*record));
    }
  }
  return found;
}

}  // namespace chlist
