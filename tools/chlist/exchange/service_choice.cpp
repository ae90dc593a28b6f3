// Services are left out before anything is numbered by its place.
#include "chlist/exchange/service_choice.h"

#include <channel/records.h>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <numeric>
#include <set>
#include <span>
#include <tuple>
#include <utility>

#include "chlist/closest.h"
#include "chlist/command.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/fields/where.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

// A service as its entry would show it.
struct shown_service {
  line_up_entry entry;
  service_row row;

  shown_service(const line_up &list, std::size_t place) {
    const line_up_service &service = list.services[place];
    entry.service = place;
    entry.number = service.number.value_or(channel_number{});
    row = {&list, &service, &entry, place};
  }
  shown_service(const shown_service &) = delete;
  shown_service &operator=(const shown_service &) = delete;
};

constexpr std::array<std::string_view, 3> chosen_by = {"network_name", "provider", "type"};

std::string value_by_name(const line_up &list, const line_up_service &service, const field &which) {
  return text_of_value(which.get({&list, &service}));
}

std::vector<std::string> values_of(const line_up &list, const field &which) {
  std::set<std::string> values;
  for (const line_up_service &service : list.services) {
    values.insert(value_by_name(list, service, which));
  }
  values.erase("");
  return {values.begin(), values.end()};
}

// Values by the field that they are of: "S19.2E", "TV".
class named_values {
 public:
  named_values(const line_up &list, const std::vector<std::string> &options, std::string_view option) : list_(list) {
    for (const std::string &each : options) {
      if (!add(each)) {
        for (const std::string_view name : split(each, ',')) {
          must_add(std::string(name), option);
        }
      }
    }
  }

  [[nodiscard]] bool has_all_of(const line_up_service &service) const {
    return std::ranges::all_of(values_, [&](const auto &each) { return has(service, each); });
  }
  [[nodiscard]] bool has_any_of(const line_up_service &service) const {
    return std::ranges::any_of(values_, [&](const auto &each) { return has(service, each); });
  }

 private:
  using values_of_field = std::pair<const field *const, std::vector<std::string>>;

  [[nodiscard]] bool has(const line_up_service &service, const values_of_field &wanted) const {
    const std::string value = value_by_name(list_, service, *wanted.first);
    return std::ranges::any_of(wanted.second, [&](const std::string &each) { return is_same_name(each, value); });
  }

  // A type is one whether or not a service has it.
  bool add(const std::string &name) {
    for (const std::string_view by : chosen_by) {
      const field &which = field_named(by);
      const bool is_word =
          std::ranges::any_of(which.values.words, [&](const word &each) { return is_same_name(each.text, name); });
      const auto values = is_word ? std::vector{name} : values_of(list_, which);
      if (std::ranges::any_of(values, [&](const std::string &each) { return is_same_name(each, name); })) {
        values_[&which].push_back(name);
        return true;
      }
    }
    return false;
  }

  void must_add(const std::string &name, std::string_view option) {
    if (add(name)) {
      return;
    }
    std::vector<std::string> known;
    for (const std::string_view by : chosen_by) {
      std::ranges::move(values_of(list_, field_named(by)), std::back_inserter(known));
    }
    throw usage_error(fmt::format("{}: {}", option, unknown_name("source, provider or type", name, known)));
  }

  const line_up &list_;
  std::map<const field *, std::vector<std::string>> values_;
};

void follow(favourite_group &group, const std::vector<std::size_t> &places) {
  for (line_up_entry &entry : group.entries) {
    entry.service = places[entry.service];
  }
  std::erase_if(group.entries, [](const line_up_entry &entry) { return entry.service == nowhere; });
}

void keep(line_up &list, const std::vector<bool> &is_kept) {
  std::vector<std::size_t> places(list.services.size(), nowhere);
  std::vector<line_up_service> kept;
  for (std::size_t place = 0; place < list.services.size(); ++place) {
    if (is_kept[place]) {
      places[place] = kept.size();
      kept.push_back(std::move(list.services[place]));
    }
  }
  list.services = std::move(kept);
  for (favourite_group &group : list.favourites) {
    const bool was_empty = group.entries.empty();
    follow(group, places);
    group.is_counted = was_empty || !group.entries.empty();
  }
  std::erase_if(list.favourites, [](const favourite_group &group) { return !group.is_counted; });
}

constexpr std::array<std::string_view, preferences> names_of_preferences = {"favourites", "numbered", "free"};

// What the tables of a list hold a service by, as far as it is told before the service is filed.
auto identity_of(const line_up_service &service) {
  const channel_st &fields = service.fields;
  return std::tuple(service.source, fields.net_index, fields.network_id, fields.ts_id, fields.frequency,
                    fields.polarisation, fields.service_id);
}

template <class Item>
std::span<const Item> first_of(const std::vector<Item> &items, std::size_t most) {
  return std::span(items).first(std::min(items.size(), most));
}

// Groups and services beyond those that a list has room for count for nothing: they do not come anyway.
std::vector<bool> held_by_favourites(const line_up &list) {
  std::vector<bool> is_favourite(list.services.size(), false);
  for (const favourite_group &group : first_of(list.favourites, MAX_FAV)) {
    for (const line_up_entry &entry : first_of(group.entries, MAX_FAV_NUM)) {
      is_favourite[entry.service] = true;
    }
  }
  return is_favourite;
}

}  // namespace

std::size_t choose_services(line_up &list, const service_options &options) {
  const std::vector<where> conditions(options.where.begin(), options.where.end());
  const named_values only(list, options.only, "--only");
  const named_values without(list, options.without, "--without");
  std::vector<bool> is_kept;
  for (std::size_t place = 0; place < list.services.size(); ++place) {
    const shown_service shown(list, place);
    const line_up_service &service = list.services[place];
    is_kept.push_back(only.has_all_of(service) && !without.has_any_of(service) &&
                      std::ranges::all_of(conditions, [&](const where &each) { return each.takes(shown.row); }));
  }
  const auto left_out = static_cast<std::size_t>(std::ranges::count(is_kept, false));
  if (left_out > 0) {
    keep(list, is_kept);
  }
  return left_out;
}

preference_order preferences_named(const std::string &names) {
  std::vector<preference> order;
  const auto add = [&order](preference each) {
    if (std::ranges::find(order, each) == order.end()) {
      order.push_back(each);
    }
  };
  for (const std::string_view name : split(names, ',')) {
    const auto *const found = std::ranges::find(names_of_preferences, name);
    if (found == names_of_preferences.end()) {
      throw usage_error("--prefer: " +
                        unknown_name("preference", name, {names_of_preferences.begin(), names_of_preferences.end()}));
    }
    add(static_cast<preference>(found - names_of_preferences.begin()));
  }
  std::ranges::for_each(usual_preferences, add);
  preference_order made{};
  std::ranges::copy(order, made.begin());
  return made;
}

std::string text_of(const preference_order &order) {
  std::string text;
  for (const preference each : order) {
    text += fmt::format("{}{}", text.empty() ? "" : ", ", names_of_preferences[static_cast<std::size_t>(each)]);
  }
  return text;
}

std::vector<std::size_t> preferred_first(const line_up &list, const preference_order &order) {
  const std::vector<bool> is_favourite = held_by_favourites(list);
  const auto is_less = [&](std::size_t place) {
    const line_up_service &service = list.services[place];
    const std::array<bool, preferences> is_not = {!is_favourite[place], !service.number,
                                                  service.has_flag(CHANNEL_FLAG_FTA)};
    std::array<bool, preferences> ranks{};
    std::ranges::transform(order, ranks.begin(), [&](preference by) { return is_not[static_cast<std::size_t>(by)]; });
    return ranks;
  };
  std::vector<std::size_t> places(list.services.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  std::ranges::stable_sort(places, {}, is_less);
  return places;
}

std::vector<bool> that_fit(const line_up &list, const std::vector<std::size_t> &preferred) {
  std::vector<bool> fits(list.services.size(), true);
  std::set<decltype(identity_of(list.services.front()))> taken;
  for (const std::size_t place : preferred) {
    const line_up_service &service = list.services[place];
    if (service.is_listed && !taken.contains(identity_of(service))) {
      fits[place] = taken.size() < MAX_CHANNEL;
      if (fits[place]) {
        taken.insert(identity_of(service));
      }
    }
  }
  return fits;
}

}  // namespace chlist
