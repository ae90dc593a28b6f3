// The list in memory while it is edited: the services that edits name or choose, and what there is to say of the edits.
#pragma once

#include <channel/records.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/command.h"
#include "chlist/files/kept_in_step.h"
#include "chlist/json/json.h"

namespace chlist {

// What an edit did otherwise than it was asked to, one text for each: "the name is cut to 96 bytes".
using edit_notes = std::vector<std::string>;

// What an edit has to tell beside what it changes, as text in front of the differences and in its document.
struct edit_table {
  std::string text;
  json as_json;
};

// The services that an edit is for: named one by one, or chosen by a condition.
struct service_choice {
  std::vector<std::string> names;
  std::optional<std::string> where;

  // Throws usage_error when there is neither.
  void must_be_given() const;
};

// SERVICE... and --where, of which one is to be given.
std::vector<option> options_of(service_choice &choice);
option where_option(service_choice &choice);
term_section section_of_conditions();

// What was looked up for one edit is found again at once for the next: edits tell what they change of it.
class edited_list {
 public:
  edited_list();
  ~edited_list();

  // The service that a text names. Throws when there is none, or when the library, which finds services by identity,
  // finds another one: a service that occurs twice, or that is filed under a transponder that is not its own.
  channel_st &service(std::string_view text, std::int8_t view = VIEW_ALL);

  // Those that are named, in that order: one that is named twice is taken once, with a note. Or those whose entry in
  // the view meets the condition, in the view's order; behind those of ALL come the services that it does not show.
  std::vector<channel_st *> services(const service_choice &choice, std::int8_t view = VIEW_ALL);

  // In list order; throws as service() when one of them is not to be edited.
  std::vector<channel_st *> all_services();

  // The same, when it is others that change.
  std::vector<channel_st *> services_that_stay(const service_choice &choice);

  // Which of the services of the list, by their places, a condition chooses: all of them without one. The edit counts
  // by itself what changes.
  static std::vector<bool> chosen_places(const service_choice &choice);

  // Adds to the services that nobody named, and that are shown before they change.
  void count_as_chosen(std::size_t services) { chosen_ = chosen_.value_or(0) + services; }

  // The code of a view, and the index of a favourite group, by their names. Both throw when there is none.
  std::int8_t view(std::string_view name);
  std::size_t index_of_group(std::string_view name);

  // Another name; a service that is about to go; other entries or numbers in views, or other groups; and everything
  // else that services are found by.
  void was_renamed(const channel_st &service);
  void will_be_removed(const channel_st &service);
  void entries_changed();
  void services_changed();

  // Another identity, in the order in which services get them.
  void was_identified(const channel::identity &former, const channel::identity &now) {
    identities_.push_back({former, now});
    services_changed();
  }
  [[nodiscard]] const std::vector<changed_identity> &identities() const { return identities_; }

  // How many those are; none when every service was named.
  [[nodiscard]] const std::optional<std::size_t> &chosen() const { return chosen_; }

  edit_notes notes;
  std::vector<edit_table> tables;
  std::vector<std::string> lines;  // of an edit that stands for many

 private:
  std::vector<channel_st *> services_named(const std::vector<std::string> &names, std::int8_t view);
  static std::vector<channel_st *> services_where(const std::string &condition, std::int8_t view);

  class known_services;
  known_services &known();

  std::optional<std::size_t> chosen_;
  std::vector<changed_identity> identities_;
  std::unique_ptr<known_services> known_;
};

}  // namespace chlist
