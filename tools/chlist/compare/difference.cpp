// Holds two line-ups against each other, record by record.
#include "chlist/compare/difference.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <tuple>
#include <unordered_map>

#include "chlist/compare/moved.h"
#include "chlist/fields/described.h"
#include "chlist/fields/record_fields.h"
#include "chlist/fields/service_fields.h"
#include "chlist/line_up/selection.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

void note(std::vector<field_change> &fields, std::string_view name, std::string_view title, const json &before,
          const json &after) {
  if (before != after) {
    fields.push_back({name, title, std::nullopt, before, after});
  }
}

// The fields that make a service what it is. Those of its entries and of its network are compared by themselves; the
// number of a service type says no more than its name.
bool is_compared(const field &each) {
  return each.owner != field_owner::entry && each.name != "favourites" && each.name != "network_name" &&
         each.name != "service_type";
}

// The groups that stand for each other. What became of their names and ids is told of the groups, not of each service.
class kept_groups {
 public:
  kept_groups(const line_up &before, const line_up &after, const pairing &pairs) {
    const std::vector<group_row> groups_before = rows_of_groups(before);
    const std::vector<group_row> groups_after = rows_of_groups(after);
    for (const auto &[was, is] : pairs.both) {
      ids_.emplace(groups_before[was].table, groups_before[was].id, groups_after[is].id);
    }
  }

  [[nodiscard]] bool tell(const field &which, const line_up_service &was, const line_up_service &is) const {
    return std::ranges::any_of(all_group_kinds(), [&](const group_facts &each) {
      const bool is_of_it = which.name.starts_with(each.one);  // "provider", "provider_id"
      return is_of_it && ids_.contains({each.one, was.fields.*each.id, is.fields.*each.id});
    });
  }

 private:
  std::set<std::tuple<std::string_view, int, int>> ids_;
};

// The entries of a line-up by the services that they show, and its views by name.
class shown_entries {
 public:
  explicit shown_entries(const line_up &list) : list_(list), entries_(list.services.size()) {
    const std::vector<named_view> views = views_of(list);
    for (std::size_t view = 0; view < views.size(); ++view) {
      for (const line_up_entry &entry : views[view].entries) {
        if (entry.service != nowhere) {
          entries_[entry.service].push_back({view, &entry});
        }
      }
    }
  }

  [[nodiscard]] const line_up &list() const { return list_; }

  // What the entries of a service show in each view: nothing, a value, or the values of several entries.
  [[nodiscard]] std::map<std::size_t, json> values(std::size_t service, const field &which) const {
    std::map<std::size_t, json> values;
    for (const auto &[view, entry] : entries_[service]) {
      json cell = which.get({&list_, &list_.services[service], entry});
      json &value = values[view];
      if (value.is_null()) {
        value = std::move(cell);
      } else {
        value = value.is_array() ? value : json::array({value});
        value.push_back(std::move(cell));
      }
    }
    return values;
  }

 private:
  struct place {
    std::size_t view;
    const line_up_entry *entry;
  };

  const line_up &list_;
  std::vector<std::vector<place>> entries_;
};

using shown_values = std::map<std::size_t, json>;

json value_in(const shown_values &values, std::size_t view) {
  const auto found = values.find(view);
  return found != values.end() ? found->second : json();
}

// A view in both line-ups, or in one: then its place in the other is nowhere.
struct compared_view {
  std::size_t before = nowhere;
  std::size_t after = nowhere;
  view_name name;
};

// In the order of the second line-up, those that it lacks behind them.
std::vector<compared_view> views_to_compare(const line_up &before, const line_up &after, const pairing &pairs) {
  std::vector<compared_view> made;
  for (const named_view &view : views_of(after)) {
    made.push_back({nowhere, made.size(), view.name});
  }
  for (const auto &[was, is] : pairs.both) {
    made[is].before = was;
  }
  const std::vector<named_view> views_before = views_of(before);
  for (const std::size_t removed : pairs.removed) {
    made.push_back({removed, nowhere, views_before[removed].name});
  }
  return made;
}

class service_comparison {
 public:
  service_comparison(const line_up &before, const line_up &after, const paired_records &pairs,
                     const std::vector<compared_view> &views)
      : before_(before), after_(after), groups_(before, after, pairs.groups), views_(views) {}

  [[nodiscard]] std::vector<field_change> added(std::size_t service) const {
    std::vector<field_change> fields;
    note_by_view(fields, field_named("number"), {}, after_.values(service, field_named("number")));
    return fields;
  }
  [[nodiscard]] std::vector<field_change> removed(std::size_t service) const {
    std::vector<field_change> fields;
    note_by_view(fields, field_named("number"), before_.values(service, field_named("number")), {});
    return fields;
  }
  [[nodiscard]] std::vector<field_change> changed(std::size_t was, std::size_t is) const {
    std::vector<field_change> fields;
    note_own(fields, was, is);
    for (const std::string_view name : {"number", "minor", "tag", "favourite_key"}) {
      const field &which = field_named(name);
      note_by_view(fields, which, before_.values(was, which), after_.values(is, which));
    }
    return fields;
  }

 private:
  void note_own(std::vector<field_change> &fields, std::size_t was, std::size_t is) const {
    const service_row before = {&before_.list(), &before_.list().services[was]};
    const service_row after = {&after_.list(), &after_.list().services[is]};
    for (const field &each : service_fields()) {
      if (is_compared(each) && !groups_.tell(each, *before.service, *after.service)) {
        note(fields, each.name, each.title, each.get(before), each.get(after));
      }
    }
  }

  // What an entry has beside its number is told of views that have the service before and after.
  void note_by_view(std::vector<field_change> &fields, const field &which, const shown_values &was,
                    const shown_values &is) const {
    const bool is_number = which.name == "number";
    for (const compared_view &view : views_) {
      const json before = value_in(was, view.before);
      const json after = value_in(is, view.after);
      if (before != after && (is_number || !(before.is_null() || after.is_null()))) {
        fields.push_back({which.name, which.title, view.name, before, after});
      }
    }
  }

  shown_entries before_;
  shown_entries after_;
  kept_groups groups_;
  const std::vector<compared_view> &views_;
};

change change_of(change_kind kind, const line_up_service &service) {
  return {kind,
          "service",
          fmt::format("{} ({})", shown(service.name), identity_text(service.id())),
          json_of(known_as(service)),
          {}};
}

std::vector<change> service_changes(const line_up &before, const line_up &after, const paired_records &paired,
                                    const std::vector<compared_view> &views) {
  const service_comparison comparison(before, after, paired, views);
  const pairing &pairs = paired.services;
  std::vector<change> changes;
  for (const std::size_t added : pairs.added) {
    changes.push_back(change_of(change_kind::added, after.services[added]));
    changes.back().fields = comparison.added(added);
  }
  for (const std::size_t removed : pairs.removed) {
    changes.push_back(change_of(change_kind::removed, before.services[removed]));
    changes.back().fields = comparison.removed(removed);
  }
  for (const auto &[was, is] : pairs.both) {
    change found = change_of(change_kind::changed, after.services[is]);
    found.fields = comparison.changed(was, is);
    if (!found.fields.empty()) {
      changes.push_back(std::move(found));
    }
  }
  return changes;
}

// Records of one kind around the services: their fields, and what names one, as text and in JSON.
template <class Row>
struct compared_records {
  std::string_view what;
  std::span<const record_field<Row>> (*fields)();
  std::string (*text)(const Row &row);
  json (*subject)(const Row &row);
};

constexpr compared_records<network_row> compared_networks = {
    "network", network_fields,
    [](const network_row &row) { return fmt::format("network {}:{}", row.id().net_index, row.id().network_id); },
    [](const network_row &row) { return json_of_fields(identity_fields(identity_part::network), row.id()); }};

constexpr compared_records<transponder_row> compared_transponders = {
    "transponder", transponder_fields,
    [](const transponder_row &row) {
      const std::string id = identity_text(row.id());
      return "transponder " + id.substr(0, id.rfind(':'));
    },
    [](const transponder_row &row) { return json_of_transponder(row.id()); }};

constexpr compared_records<group_row> compared_groups = {
    "group", group_fields, [](const group_row &row) { return fmt::format("{} {}", row.table, row.number()); },
    [](const group_row &row) {
      json subject = json::object();
      for (const record_field<group_row> &each : group_fields()) {
        if (each.role == field_role::key) {
          subject[std::string(each.name)] = each.get(row);
        }
      }
      return subject;
    }};

template <class Row>
change change_of(change_kind kind, const compared_records<Row> &of, const Row &row) {
  return {kind, of.what, of.text(row), of.subject(row), {}};
}

// What a record is called is told of one that comes or goes, too.
template <class Row>
void note_name(std::vector<field_change> &fields, const compared_records<Row> &of, const Row *before,
               const Row *after) {
  for (const record_field<Row> &each : of.fields()) {
    if (each.name == "name") {
      note(fields, each.name, each.title, before != nullptr ? each.get(*before) : json(),
           after != nullptr ? each.get(*after) : json());
    }
  }
}

template <class Row>
void note_records(std::vector<change> &changes, const compared_records<Row> &of, const std::vector<Row> &before,
                  const std::vector<Row> &after, const pairing &pairs) {
  for (const std::size_t added : pairs.added) {
    changes.push_back(change_of(change_kind::added, of, after[added]));
    note_name<Row>(changes.back().fields, of, nullptr, &after[added]);
  }
  for (const std::size_t removed : pairs.removed) {
    changes.push_back(change_of(change_kind::removed, of, before[removed]));
    note_name<Row>(changes.back().fields, of, &before[removed], nullptr);
  }
  for (const auto &[was, is] : pairs.both) {
    change found = change_of(change_kind::changed, of, after[is]);
    for (const record_field<Row> &each : of.fields()) {
      if (each.role == field_role::own) {
        note(found.fields, each.name, each.title, each.get(before[was]), each.get(after[is]));
      }
    }
    if (!found.fields.empty()) {
      changes.push_back(std::move(found));
    }
  }
}

// The rows of views in numbers that both line-ups share: a service has its place in the second one, and entries without
// a service are numbered behind them, by what they show and look for.
class shared_numbers {
 public:
  shared_numbers(const line_up &after, const pairing &services) : services_(after.services) {
    for (const auto &[was, is] : services.both) {
      place_after_[was] = is;
    }
  }

  // Services that the second line-up lacks are left out.
  std::vector<std::size_t> row_before(const std::vector<line_up_entry> &entries) {
    std::vector<std::size_t> row;
    for (const line_up_entry &entry : entries) {
      if (entry.service == nowhere) {
        row.push_back(number_of(unresolved_text(entry)));
      } else if (const auto found = place_after_.find(entry.service); found != place_after_.end()) {
        row.push_back(found->second);
      }
    }
    return row;
  }

  std::vector<std::size_t> row_after(const std::vector<line_up_entry> &entries) {
    std::vector<std::size_t> row;
    for (const line_up_entry &entry : entries) {
      row.push_back(entry.service != nowhere ? entry.service : number_of(unresolved_text(entry)));
    }
    return row;
  }

  [[nodiscard]] bool is_service(std::size_t number) const { return number < services_.size(); }
  [[nodiscard]] const std::string &name_of(std::size_t number) const {
    return is_service(number) ? services_[number].name : entries_[number - services_.size()];
  }

  static std::string unresolved_text(const line_up_entry &entry) {
    return fmt::format("{} {}", text_of(entry.number), identity_text(entry.id));
  }

 private:
  std::size_t number_of(const std::string &entry) {
    const auto [known, is_new] = numbers_.try_emplace(entry, services_.size() + entries_.size());
    if (is_new) {
      entries_.push_back(entry);
    }
    return known->second;
  }

  const std::vector<line_up_service> &services_;
  std::unordered_map<std::size_t, std::size_t> place_after_;
  std::unordered_map<std::string, std::size_t> numbers_;
  std::vector<std::string> entries_;
};

std::vector<std::string> unresolved_in(const std::vector<line_up_entry> &entries) {
  std::vector<std::string> texts;
  for (const line_up_entry &entry : entries) {
    if (entry.service == nowhere) {
      texts.push_back(shared_numbers::unresolved_text(entry));
    }
  }
  return texts;
}

void note_moves(std::vector<field_change> &fields, const std::vector<line_up_entry> &before,
                const std::vector<line_up_entry> &after, shared_numbers &numbers) {
  json services = json::array();
  json entries = json::array();
  for (const std::size_t number : moved_between(numbers.row_before(before), numbers.row_after(after))) {
    (numbers.is_service(number) ? services : entries).push_back(numbers.name_of(number));
  }
  note(fields, "moved", "", json::array(), services);
  note(fields, "unresolved_moved", "", json::array(), entries);
}

void note_views(std::vector<change> &changes, const line_up &before, const line_up &after, const pairing &services,
                const std::vector<compared_view> &views) {
  static const std::vector<line_up_entry> none;
  shared_numbers numbers(after, services);
  const std::vector<named_view> views_before = views_of(before);
  const std::vector<named_view> views_after = views_of(after);
  for (const compared_view &view : views) {
    const auto &was = view.before != nowhere ? views_before[view.before].entries : none;
    const auto &is = view.after != nowhere ? views_after[view.after].entries : none;
    change found = {change_kind::changed, "view", label_of(view.name) + " view", json_of(view.name), {}};
    note(found.fields, "unresolved", "entries without a service", unresolved_in(was), unresolved_in(is));
    note_moves(found.fields, was, is, numbers);
    if (!found.fields.empty()) {
      changes.push_back(std::move(found));
    }
  }
}

void note_settings(std::vector<change> &changes, const line_up_settings &before, const line_up_settings &after) {
  for (const record_field<line_up_settings> &each : setting_fields()) {
    change found = {change_kind::changed, "setting", std::string(each.title), {{"setting", each.name}}, {}};
    note(found.fields, "value", "", each.get(before), each.get(after));
    if (!found.fields.empty()) {
      changes.push_back(std::move(found));
    }
  }
}

}  // namespace

std::vector<change> differences(const line_up &before, const line_up &after, const paired_records &pairs) {
  const std::vector<compared_view> views = views_to_compare(before, after, pairs.views);
  std::vector<change> changes = service_changes(before, after, pairs, views);
  note_records(changes, compared_networks, rows_of_networks(before), rows_of_networks(after), pairs.networks);
  note_records(changes, compared_transponders, rows_of_transponders(before), rows_of_transponders(after),
               pairs.transponders);
  note_views(changes, before, after, pairs.services, views);
  note_records(changes, compared_groups, rows_of_groups(before), rows_of_groups(after), pairs.groups);
  note_settings(changes, before.settings, after.settings);
  return changes;
}

std::vector<change> differences(const line_up &before, const line_up &after) {
  return differences(before, after, pair_by_identity(before, after));
}

}  // namespace chlist
