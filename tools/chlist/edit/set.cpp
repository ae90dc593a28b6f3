// `chlist set`: the fields of a service that can be set on a command line, those of the table of fields that are
// numbers, and its groups, which go by the tables of the list.
#include <channel/flags.h>
#include <channel/groups.h>
#include <channel/providers.h>
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "channel/identity.h"
#include "channel/store/group_table.h"
#include "chlist/closest.h"
#include "chlist/edit/edited_services.h"
#include "chlist/edit/edits.h"
#include "chlist/edit/service_edits.h"
#include "chlist/edit/service_identity.h"
#include "chlist/exchange/group_names.h"
#include "chlist/fields/identity_fields.h"
#include "chlist/fields/ranges.h"
#include "chlist/fields/service_fields.h"
#include "chlist/text/broadcast_text.h"
#include "chlist/text/plain_text.h"
#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

void apply_flags(const channel_st &service, std::uint8_t bits, bool set) {
  if (bits == 0) {
    return;
  }
  set_flag(service, bits, set);
}

// Ids of groups begin at 0.
constexpr std::int16_t no_group = -1;

std::optional<std::int16_t> group_id_from(std::string_view text) {
  std::int16_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

// A value is an id when the table has it, and a name otherwise.
const group_st *find_group(std::int8_t kind, std::string_view value) {
  if (const auto wanted = group_id_from(value)) {
    if (const group_st *group = get_group_st_by_id(kind, *wanted)) {
      return group;
    }
  }
  std::uint16_t count = 0;
  const group_st *groups = get_group_list(kind, &count);
  const std::span<const group_st> table(groups, groups == nullptr ? 0 : count);
  const auto found =
      std::ranges::find_if(table, [&](const group_st &group) { return is_same_name(name_in(group.name), value); });
  return found == table.end() ? nullptr : &*found;
}

// A number is an id that is not there.
std::int16_t new_provider(std::string_view value) {
  must_be_plain(value, "provider: the name");
  if (group_id_from(value)) {
    throw std::runtime_error(fmt::format("provider={}: the list has no provider with this id", shown(value)));
  }
  const std::string_view name = cut_utf8(value, longest_group_name);
  group_st added = {};
  added.name_len = static_cast<std::int16_t>(name.size());
  std::ranges::copy(name, added.name);
  const int given = name.size() == value.size() ? add_provider_info(added) : -1;
  if (given < 0) {
    throw std::runtime_error(
        fmt::format("provider={}: the list has no such provider, and takes none anew: a name has at most {} bytes, the "
                    "table {} providers",
                    shown(value), longest_group_name, +MAX_PROVIDER));
  }
  return static_cast<std::int16_t>(given);
}

void put_group(channel_st &service, std::int8_t kind, std::int16_t group) {
  virtual_channel_st entry = {};
  entry.rch = &service;
  set_group_id(kind, &entry, group);
}

// A group that a service is in. A provider that the list does not have is made; genres and countries are the
// receiver's.
struct group_field {
  std::string_view name;
  std::int8_t kind;
  std::string_view range;
};

constexpr std::string_view of_table = "a name or an id of the list's table, or none";

constexpr group_field groups_that_are_set[] = {
    {"provider", GROUP_PROVIDER, "a name or an id of the list's table, a new name, or none"},
    {"genre", GROUP_GENRE, of_table},
    {"country", GROUP_COUNTRY, of_table},
};

void set_group(channel_st &service, const group_field &which, std::string_view value) {
  const group_st *group = find_group(which.kind, value);
  if (value.empty()) {
    throw std::runtime_error(fmt::format("{}={}: VALUE is {}", which.name, shown(value), which.range));
  }
  if (spells_unset(ranges::name_of_group, value)) {
    put_group(service, which.kind, no_group);
  } else if (group == nullptr && which.kind != GROUP_PROVIDER) {
    throw std::runtime_error(
        fmt::format("{}={}: the list has no such {}; VALUE is a name or an id of its table, or none", which.name,
                    shown(value), which.name));
  } else {
    put_group(service, which.kind, group != nullptr ? group->id : new_provider(value));
  }
}

bool is_settable(const field &each) { return each.set_number != nullptr; }

// Each field with its range, for the help.
std::vector<term> terms_of_fields() {
  std::vector<term> terms;
  for (const group_field &each : groups_that_are_set) {
    terms.push_back({std::string(each.name), std::string(each.range)});
  }
  for (const field &each : service_fields()) {
    if (is_settable(each)) {
      terms.push_back({std::string(each.name), std::string(each.values.text)});
    }
  }
  return terms;
}

// "net_index, network_id, ... and service_id".
std::string names_of_identity() {
  std::vector<std::string> names;
  for (const auto &each : identity_fields()) {
    names.emplace_back(each.name);
  }
  return joined(std::span(names).first(names.size() - 1), ", ") + " and " + names.back();
}

// Names go by `chlist rename`, which knows their two places and character tables.
void must_not_be_a_name(const field &which) {
  const bool is_short = which.text == &line_up_service::short_name;
  if (is_short || which.text == &line_up_service::name) {
    throw std::runtime_error(
        fmt::format("{} is no field that set changes: `chlist rename{}` does", which.name, is_short ? " --short" : ""));
  }
}

// What makes the identity is put together first and changed at once.
class edited_service {
 public:
  explicit edited_service(channel_st &record) : record_(record) { edited_.fields = record; }

  void set(std::string_view assignment) {
    const std::size_t equals = assignment.find('=');
    const std::string_view name = assignment.substr(0, equals);
    const field *which = find_field(name);
    const auto *const group = std::ranges::find(groups_that_are_set, name, &group_field::name);
    const bool is_a_group = group != std::end(groups_that_are_set);
    if (equals == std::string_view::npos) {
      throw std::runtime_error(fmt::format("{} sets no field: it takes FIELD=VALUE", shown(assignment)));
    }
    if (which != nullptr) {
      must_not_be_a_name(*which);
    }
    if (!is_a_group && (which == nullptr || !is_settable(*which))) {
      throw std::runtime_error(unknown_name("field", name, words_of(terms_of_fields())));
    }
    const std::string_view value = assignment.substr(equals + 1);
    if (is_a_group) {
      set_group(record_, *group, value);
    } else {
      set_field(edited_, *which, value);
      assigned_.emplace_back(which, value);
    }
  }

  void apply_to(edited_list &list) {
    const channel::identity former = channel::identity_of(record_);
    const channel::identity wanted = edited_.id();
    apply_flags(record_, static_cast<std::uint8_t>(edited_.fields.flag & ~record_.flag), true);
    apply_flags(record_, static_cast<std::uint8_t>(record_.flag & ~edited_.fields.flag), false);
    apply_values();
    change_identity(record_, wanted);
    if (former != wanted) {
      list.was_identified(former, wanted);
    }
  }

 private:
  // The fields that are the service's own, whichever the table has.
  void apply_values() {
    line_up_service own;
    own.fields = record_;
    for (const auto &[which, value] : assigned_) {
      if (which->owner == field_owner::service) {
        set_field(own, *which, value);
      }
    }
    record_ = own.fields;
  }

  channel_st &record_;
  line_up_service edited_;
  std::vector<std::pair<const field *, std::string>> assigned_;
};

struct set_options {
  std::optional<std::string> service;
  service_choice services;  // by a condition
  std::vector<std::string> assignments;

  // With --where the first word sets a field as well: no service is named.
  [[nodiscard]] bool is_first_a_field() const { return services.where && service; }

  [[nodiscard]] service_choice choice() const {
    return services.where || !service ? services : service_choice{.names = {*service}, .where = {}};
  }

  [[nodiscard]] std::vector<std::string> all_assignments() const {
    std::vector<std::string> all = assignments;
    all.insert(all.begin(), is_first_a_field() ? 1 : 0, service.value_or(""));
    return all;
  }

  void must_go_together() const {
    choice().must_be_given();
    if (all_assignments().empty()) {
      throw usage_error("FIELD=VALUE is required");
    }
  }
};

void set(const set_options &options, edited_list &list) {
  for (channel_st *service : list.services(options.choice())) {
    edited_service edited(*service);
    for (const std::string &assignment : options.all_assignments()) {
      edited.set(assignment);
    }
    edited.apply_to(list);
  }
}

}  // namespace

edit_row set_edit() {
  auto options = std::make_shared<set_options>();
  return {
      .name = "set",
      .summary = "Set fields of services",
      .details =
          {"The identity is " + names_of_identity() +
           ". A service whose identity changes is filed under the network and transponder that it "
           "then belongs to, which are made when they are not there, and its entries in all views and favourite groups "
           "follow; those that it leaves stay, even without services. A transponder is the same when its polarisation "
           "is and its frequency differs by less than 2500. Views do not follow the service type. A receiver sets the "
           "country of every service to 0 when it loads the file."},
      .sections = {{"Fields and their values", terms_of_fields()}, section_of_conditions()},
      .examples = {"chlist set channels.dat \"News HD\" provider=\"Sky North\" video_pid=512 audio_pid=none",
                   "chlist set channels.dat 7 frequency=11954000 polarisation=V --dry-run",
                   "chlist set channels.dat --where 'frequency=11954000 polarisation=V' provider=\"Sky North\""},
      .options = {{.names = "SERVICE", .target = &options->service, .about = "the service"},
                  {.names = "FIELD=VALUE", .target = &options->assignments, .about = "the fields"},
                  where_option(options->services)},
      .take = taking<set_options>(options, set)};
}

}  // namespace chlist
