// Holds two snapshots against each other, record by record.
#include "chlist/see/difference.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <unordered_map>

#include "chlist/see/compared_columns.h"
#include "chlist/see/moved.h"
#include "chlist/see/pairing.h"
#include "chlist/see/settings.h"
#include "chlist/service/selection.h"

namespace chlist {
namespace {

void note(std::vector<field_change> &fields, std::string_view name, std::string_view title, const json &before,
          const json &after) {
  if (before != after) {
    fields.push_back({name, title, std::nullopt, before, after});
  }
}

// What the entries of a service show in a view: nothing, a value, or the values of several entries.
using shown_values = std::map<std::size_t, json>;

template <class Value>
shown_values values_by_view(const list_snapshot::service &service, Value list_snapshot::entry::*field) {
  shown_values values;
  for (const list_snapshot::entry &entry : service.entries) {
    json &value = values[entry.view];
    if (value.is_null()) {
      value = entry.*field;
    } else {
      value = value.is_array() ? value : json::array({value});
      value.push_back(entry.*field);
    }
  }
  return values;
}

json value_in(const shown_values &values, std::size_t view) {
  const auto found = values.find(view);
  return found != values.end() ? found->second : json();
}

// The services of a snapshot before and after an edit, and how views are called.
class service_comparison {
 public:
  explicit service_comparison(const list_snapshot &after) : views_(after.views) {}

  void note_numbers(std::vector<field_change> &fields, const list_snapshot::service &before,
                    const list_snapshot::service &after) const {
    note_by_view(fields, "number", before, after, &list_snapshot::entry::number, false);
  }

  void note_all(std::vector<field_change> &fields, const list_snapshot::service &before,
                const list_snapshot::service &after) const {
    note_columns(fields, before.values, after.values);
    note_numbers(fields, before, after);
    note_by_view(fields, "minor", before, after, &list_snapshot::entry::minor, true);
    note_by_view(fields, "tag", before, after, &list_snapshot::entry::tag, true);
    note_by_view(fields, "favourite_key", before, after, &list_snapshot::entry::favourite_key, true);
  }

 private:
  static void note_columns(std::vector<field_change> &fields, const std::vector<json> &before,
                           const std::vector<json> &after) {
    const auto columns = compared_columns();
    const auto differs = [&](std::string_view name) {
      const auto at = std::ranges::find(columns, name, &column::name) - columns.begin();
      return before[static_cast<std::size_t>(at)] != after[static_cast<std::size_t>(at)];
    };
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const std::string_view id = id_behind(columns[i]->name);
      if (id.empty() || differs(id)) {
        note(fields, columns[i]->name, columns[i]->title, before[i], after[i]);
      }
    }
  }

  // What an entry has beside its number is told of views that have the service before and after.
  template <class Value>
  void note_by_view(std::vector<field_change> &fields, std::string_view name, const list_snapshot::service &before,
                    const list_snapshot::service &after, Value list_snapshot::entry::*field, bool in_both) const {
    const shown_values was = values_by_view(before, field);
    const shown_values is = values_by_view(after, field);
    for (std::size_t view = 0; view < views_.size(); ++view) {
      const json old_value = value_in(was, view);
      const json new_value = value_in(is, view);
      if (old_value != new_value && !(in_both && (old_value.is_null() || new_value.is_null()))) {
        fields.push_back({name, column_named(name).title, views_[view].name, old_value, new_value});
      }
    }
  }

  const std::vector<list_snapshot::view> &views_;
};

change change_of(change_kind kind, const list_snapshot::service &service) {
  json subject = json_of(service.known);
  return {
      kind, "service", fmt::format("{} ({})", shown(service.known.name), identity_text(service.known.id)), subject, {}};
}

std::vector<change> service_changes(const list_snapshot &before, const list_snapshot &after, const pairing &pairs) {
  const service_comparison comparison(after);
  const list_snapshot::service nothing;
  std::vector<change> changes;
  for (const std::size_t added : pairs.added) {
    changes.push_back(change_of(change_kind::added, after.services[added]));
    comparison.note_numbers(changes.back().fields, nothing, after.services[added]);
  }
  for (const std::size_t removed : pairs.removed) {
    changes.push_back(change_of(change_kind::removed, before.services[removed]));
    comparison.note_numbers(changes.back().fields, before.services[removed], nothing);
  }
  for (const auto &[was, is] : pairs.both) {
    change found = change_of(change_kind::changed, after.services[is]);
    comparison.note_all(found.fields, before.services[was], after.services[is]);
    if (!found.fields.empty()) {
      changes.push_back(std::move(found));
    }
  }
  return changes;
}

change change_of(change_kind kind, const list_snapshot::network &network) {
  return {kind,
          "network",
          fmt::format("network {}:{}", network.id.net_index, network.id.network_id),
          {{"net_index", network.id.net_index}, {"network_id", network.id.network_id}},
          {}};
}

change change_of(change_kind kind, const list_snapshot::transponder &transponder) {
  json subject = json_of(known_service{"", transponder.id});
  subject.erase("name");
  subject.erase("service_id");
  const std::string id = identity_text(transponder.id);
  return {kind, "transponder", "transponder " + id.substr(0, id.rfind(':')), subject, {}};
}

change change_of(change_kind kind, const list_snapshot::group &group) {
  return {kind,
          "group",
          fmt::format("{} {}", group.table, group.number),
          {{"table", group.table}, {"number", group.number}},
          {}};
}

void note_fields(std::vector<field_change> &fields, const list_snapshot::network &before,
                 const list_snapshot::network &after) {
  note(fields, "name", "name", before.name, after.name);
}

void note_fields(std::vector<field_change> &fields, const list_snapshot::transponder &before,
                 const list_snapshot::transponder &after) {
  note(fields, "ts_id", "ts", before.id.ts_id, after.id.ts_id);
  note(fields, "frequency", "frequency", before.id.frequency, after.id.frequency);
}

void note_fields(std::vector<field_change> &fields, const list_snapshot::group &before,
                 const list_snapshot::group &after) {
  note(fields, "name", "name", before.name, after.name);
  note(fields, "id", "id", before.id, after.id);
}

json name_of(const list_snapshot::network &network) { return network.name; }
json name_of(const list_snapshot::transponder & /*transponder*/) { return {}; }
json name_of(const list_snapshot::group &group) { return group.name; }

template <class Record>
void note_records(std::vector<change> &changes, const std::vector<Record> &before, const std::vector<Record> &after,
                  const pairing &pairs) {
  for (const std::size_t added : pairs.added) {
    changes.push_back(change_of(change_kind::added, after[added]));
    note(changes.back().fields, "name", "name", nullptr, name_of(after[added]));
  }
  for (const std::size_t removed : pairs.removed) {
    changes.push_back(change_of(change_kind::removed, before[removed]));
    note(changes.back().fields, "name", "name", name_of(before[removed]), nullptr);
  }
  for (const auto &[was, is] : pairs.both) {
    change found = change_of(change_kind::changed, after[is]);
    note_fields(found.fields, before[was], after[is]);
    if (!found.fields.empty()) {
      changes.push_back(std::move(found));
    }
  }
}

// The rows of views in numbers that both snapshots share: a service has its place in the second one, and the entries
// without a service are numbered behind them.
class shared_numbers {
 public:
  shared_numbers(const list_snapshot &before, const list_snapshot &after, const pairing &services)
      : services_before_(before.services.size()), services_after_(after.services) {
    for (const auto &[was, is] : services.both) {
      place_after_[was] = is;
    }
  }

  // Services that the second snapshot lacks are left out.
  std::vector<std::size_t> row_before(const list_snapshot::view &view) {
    std::vector<std::size_t> row;
    for (const std::size_t thing : view.row) {
      if (thing >= services_before_) {
        row.push_back(number_of(view.unresolved[thing - services_before_]));
      } else if (const auto found = place_after_.find(thing); found != place_after_.end()) {
        row.push_back(found->second);
      }
    }
    return row;
  }

  std::vector<std::size_t> row_after(const list_snapshot::view &view) {
    std::vector<std::size_t> row = view.row;
    for (std::size_t &thing : row) {
      thing = is_service(thing) ? thing : number_of(view.unresolved[thing - services_after_.size()]);
    }
    return row;
  }

  [[nodiscard]] bool is_service(std::size_t number) const { return number < services_after_.size(); }
  [[nodiscard]] const std::string &name_of(std::size_t number) const {
    return is_service(number) ? services_after_[number].known.name : entries_[number - services_after_.size()];
  }

 private:
  std::size_t number_of(const std::string &entry) {
    const auto [known, is_new] = numbers_.try_emplace(entry, services_after_.size() + entries_.size());
    if (is_new) {
      entries_.push_back(entry);
    }
    return known->second;
  }

  std::size_t services_before_;
  const std::vector<list_snapshot::service> &services_after_;
  std::unordered_map<std::size_t, std::size_t> place_after_;
  std::unordered_map<std::string, std::size_t> numbers_;
  std::vector<std::string> entries_;
};

void note_moves(std::vector<field_change> &fields, const list_snapshot::view &before, const list_snapshot::view &after,
                shared_numbers &numbers) {
  json services = json::array();
  json entries = json::array();
  for (const std::size_t number : moved_between(numbers.row_before(before), numbers.row_after(after))) {
    (numbers.is_service(number) ? services : entries).push_back(numbers.name_of(number));
  }
  note(fields, "moved", "moved", json::array(), services);
  note(fields, "unresolved_moved", "moved", json::array(), entries);
}

void note_views(std::vector<change> &changes, const list_snapshot &before, const list_snapshot &after,
                const pairing &services) {
  shared_numbers numbers(before, after, services);
  for (std::size_t i = 0; i < after.views.size(); ++i) {
    const list_snapshot::view &was = before.views[i];
    const list_snapshot::view &is = after.views[i];
    change found = {change_kind::changed, "view", label_of(is.name) + " view", json_of(is.name), {}};
    note(found.fields, "unresolved", "entries without a service", was.unresolved, is.unresolved);
    note_moves(found.fields, was, is, numbers);
    if (!found.fields.empty()) {
      changes.push_back(std::move(found));
    }
  }
}

void note_settings(std::vector<change> &changes, const list_snapshot &before, const list_snapshot &after) {
  const auto settings = all_settings();
  for (std::size_t i = 0; i < settings.size(); ++i) {
    change found = {
        change_kind::changed, "setting", std::string(settings[i].title), {{"setting", settings[i].name}}, {}};
    note(found.fields, "value", "", before.settings[i], after.settings[i]);
    if (!found.fields.empty()) {
      changes.push_back(std::move(found));
    }
  }
}

}  // namespace

std::vector<change> differences(const list_snapshot &before, const list_snapshot &after) {
  const pairing services = pair_services(before, after);
  std::vector<change> changes = service_changes(before, after, services);
  note_records(changes, before.networks, after.networks, pair_networks(before, after));
  note_records(changes, before.transponders, after.transponders, pair_transponders(before, after));
  note_views(changes, before, after, services);
  note_records(changes, before.groups, after.groups, pair_groups(before, after));
  note_settings(changes, before, after);
  return changes;
}

}  // namespace chlist
