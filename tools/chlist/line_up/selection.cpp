// Numbers, names and identities, each looked up in a line-up.
#include "chlist/line_up/selection.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <span>
#include <stdexcept>
#include <utility>

#include "chlist/closest.h"
#include "chlist/position.h"
#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr std::size_t most_candidates = 20;

struct number_text {
  std::int16_t major = 0;
  std::optional<std::int16_t> minor;
};

std::optional<std::int16_t> read_number(std::string_view digits) {
  std::int16_t number = 0;
  const char *end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  const bool is_number = stop == end && error == std::errc() && number >= 0;
  return is_number ? std::optional(number) : std::nullopt;
}

// "7" or "7-2".
std::optional<number_text> read_channel_number(std::string_view text) {
  const std::size_t dash = std::min(text.find('-'), text.size());
  const std::optional<std::int16_t> major = read_number(text.substr(0, dash));
  if (!major.has_value() || dash == text.size()) {
    return major.has_value() ? std::optional(number_text{*major, std::nullopt}) : std::nullopt;
  }
  const std::optional<std::int16_t> minor = read_number(text.substr(dash + 1));
  return minor.has_value() ? std::optional(number_text{*major, minor}) : std::nullopt;
}

bool is_on_transponder(const channel::identity &id, const channel::identity &wanted) {
  return wanted.frequency == 0
             ? id.ts_id == wanted.ts_id
             : channel::same_frequency(id.frequency, wanted.frequency) && id.polarisation == wanted.polarisation;
}

// What of an identity is always compared exactly.
std::uint64_t ids_of(const channel::identity &id) {
  return std::uint64_t{static_cast<std::uint8_t>(id.net_index)} << 32 |
         std::uint64_t{static_cast<std::uint16_t>(id.network_id)} << 16 | static_cast<std::uint16_t>(id.service_id);
}

// Those of the entries that a rule names, each once.
template <class Rule>
std::vector<std::size_t> services_shown(const line_up &list, std::int8_t view, const Rule &is_meant) {
  std::vector<std::size_t> services;
  for (const line_up_entry &entry : entries_of(list, view)) {
    if (entry.service != nowhere && is_meant(entry.number) &&
        std::ranges::find(services, entry.service) == services.end()) {
      services.push_back(entry.service);
    }
  }
  return services;
}

// A number alone means the entries without a minor one, if there are such.
std::vector<std::size_t> with_number(const line_up &list, const number_text &wanted, std::int8_t view) {
  const channel_number exact{wanted.major, wanted.minor.value_or(0)};
  std::vector<std::size_t> services =
      services_shown(list, view, [&](const channel_number &number) { return number == exact; });
  if (services.empty() && !wanted.minor.has_value()) {
    services = services_shown(list, view, [&](const channel_number &number) { return number.major == wanted.major; });
  }
  return services;
}

// The numbers under which a view has a service: "7, 7-2"; a dash when it has none.
std::string numbers_in(const line_up &list, std::int8_t view, std::size_t service) {
  std::string numbers;
  for (const line_up_entry &entry : entries_of(list, view)) {
    if (entry.service == service) {
      numbers += fmt::format("{}{}", numbers.empty() ? "" : ", ", text_of(entry.number));
    }
  }
  return numbers.empty() ? "-" : numbers;
}

std::string candidates_text(const line_up &list, const std::vector<std::size_t> &services, std::int8_t view) {
  std::string text;
  for (const std::size_t place : std::span(services).first(std::min(services.size(), most_candidates))) {
    const line_up_service &service = list.services[place];
    text += fmt::format("\n  {:>6}  {}  {}", numbers_in(list, view, place), identity_text(service.id()),
                        shown(service.name));
  }
  if (services.size() > most_candidates) {
    text += fmt::format("\n  and {} more", services.size() - most_candidates);
  }
  return text;
}

constexpr std::string_view favourite_prefix = "fav:";

// Null of a favourite group, and of a code that no view has.
const view_facts *facts_with_code(std::int8_t code) {
  const auto views = all_views();
  const auto found = std::ranges::find(views, code, &view_facts::code);
  return found != views.end() ? &*found : nullptr;
}

bool is_favourites(std::int8_t view) { return view >= VIEW_FAVOURITE && view <= VIEW_FAVOURITE_LAST; }

// The group with a name, else the one at a position.
std::optional<std::int8_t> favourites_named(const line_up &list, std::string_view text) {
  const auto is_meant = [text](const favourite_group &group) {
    return group.is_counted && !text.empty() && is_same_name(group.name, text);
  };
  const auto named = std::ranges::find_if(list.favourites, is_meant);
  if (std::ranges::count_if(list.favourites, is_meant) > 1) {
    throw std::runtime_error(fmt::format("several favourite groups are named {}: name one by its position, fav:{}",
                                         shown(text), position_of(named - list.favourites.begin())));
  }
  if (named != list.favourites.end()) {
    return static_cast<std::int8_t>(VIEW_FAVOURITE + (named - list.favourites.begin()));
  }
  const std::optional<std::size_t> group = index_at(read_number(text).value_or(0), MAX_FAV);
  return group ? std::optional(static_cast<std::int8_t>(VIEW_FAVOURITE + *group)) : std::nullopt;
}

// Those that there are; of groups without a name their positions.
std::vector<std::string> names_of_groups(const line_up &list) {
  std::vector<std::string> names;
  for (const favourite_group &group : list.favourites) {
    if (group.is_counted) {
      names.push_back(group.name.empty() ? std::to_string(position_of(names.size())) : group.name);
    }
  }
  return names;
}

std::vector<std::string> names_of_views(const line_up &list) {
  std::vector<std::string> names;
  for (const view_facts &each : all_views()) {
    names.emplace_back(each.typed);
  }
  names.emplace_back("fav:1 to fav:20");
  for (const favourite_group &group : list.favourites) {
    if (!group.name.empty()) {
      names.push_back(std::string(favourite_prefix) + group.name);
    }
  }
  return names;
}

}  // namespace

std::string text_of(const channel_number &number) {
  return number.minor == 0 ? std::to_string(number.major) : fmt::format("{}-{}", number.major, number.minor);
}

void service_finder::learn_ids() {
  if (std::exchange(knows_ids_, true)) {
    return;
  }
  for (std::size_t place = 0; place < list_.services.size(); ++place) {
    by_ids_[ids_of(list_.services[place].id())].push_back(place);
  }
}

void service_finder::learn_names() {
  while (names_.size() < list_.services.size()) {
    const std::string &name = names_.emplace_back(folded(list_.services[names_.size()].name)).value();
    by_name_[name].push_back(names_.size() - 1);
  }
}

void service_finder::forget_name(std::size_t place) {
  learn_names();
  std::erase(by_name_[names_[place].value_or("")], place);
  names_[place].reset();
}

void service_finder::was_renamed(std::size_t place) {
  forget_name(place);
  names_[place] = folded(list_.services[place].name);
  places &same = by_name_[*names_[place]];
  same.insert(std::ranges::upper_bound(same, place), place);
}

void service_finder::was_removed(std::size_t place) {
  learn_ids();
  forget_name(place);
  std::erase(by_ids_[ids_of(list_.services[place].id())], place);
}

// A search by identity stops at the first.
service_finder::places service_finder::with_identity(std::string_view text) {
  const std::optional<channel::identity> id = read_identity(text);
  if (!id) {
    return {};
  }
  learn_ids();
  const auto same_ids = by_ids_.find(ids_of(*id));
  if (same_ids == by_ids_.end()) {
    return {};
  }
  const auto found = std::ranges::find_if(
      same_ids->second, [&](std::size_t place) { return is_on_transponder(list_.services[place].id(), *id); });
  return found != same_ids->second.end() ? places{*found} : places();
}

service_finder::places service_finder::with_name(std::string_view text) {
  learn_names();
  const auto found = by_name_.find(folded(text));
  return found != by_name_.end() ? found->second : places();
}

service_finder::places service_finder::with_part_of_name(std::string_view text) {
  learn_names();
  const std::string part = folded(text);
  places found;
  for (std::size_t place = 0; place < names_.size(); ++place) {
    if (names_[place] && names_[place]->find(part) != std::string::npos) {
      found.push_back(place);
    }
  }
  return found;
}

std::vector<std::size_t> service_finder::named(std::string_view text, std::int8_t view) {
  const std::optional<number_text> number = read_channel_number(text);
  places services = with_identity(text);
  if (services.empty() && number.has_value()) {
    services = with_number(list_, *number, view);
  }
  // Nothing names no service, not even one without a name.
  if (services.empty() && !text.empty()) {
    services = with_name(text);
  }
  if (services.empty() && !number.has_value() && !text.empty()) {
    services = with_part_of_name(text);
  }
  return services;
}

std::size_t service_finder::one_named(std::string_view text, std::int8_t view) {
  const places services = named(text, view);
  if (services.empty()) {
    throw std::runtime_error(fmt::format("no service has the number, the name or the identity {}", shown(text)));
  }
  if (services.size() > 1) {
    throw std::runtime_error(fmt::format("{} could be any of {} services:{}", shown(text), services.size(),
                                         candidates_text(list_, services, view)));
  }
  return services.front();
}

std::vector<std::size_t> services_named(const line_up &list, std::string_view text, std::int8_t view) {
  return service_finder(list).named(text, view);
}

std::size_t service_named(const line_up &list, std::string_view text, std::int8_t view) {
  return service_finder(list).one_named(text, view);
}

std::int8_t view_named(const line_up &list, std::string_view text) {
  for (const view_facts &each : all_views()) {
    if (is_same_name(each.typed, text) || is_same_name(each.name, text)) {
      return each.code;
    }
  }
  if (text.starts_with(favourite_prefix)) {
    if (const auto favourites = favourites_named(list, text.substr(favourite_prefix.size())); favourites.has_value()) {
      return *favourites;
    }
  }
  throw std::runtime_error(unknown_name("view", text, names_of_views(list)));
}

std::size_t favourite_group_named(const line_up &list, std::string_view text) {
  const std::vector<std::string> names = names_of_groups(list);
  const std::optional<std::int8_t> view = favourites_named(list, text);
  const std::size_t group = view ? static_cast<std::size_t>(*view - VIEW_FAVOURITE) : names.size();
  if (names.empty()) {
    throw std::runtime_error(fmt::format("no favourite group {}: the list has none", shown(text)));
  }
  if (group >= names.size()) {
    throw std::runtime_error(unknown_name("favourite group", text, names));
  }
  return group;
}

std::vector<term> terms_of_views() {
  std::vector<term> terms;
  for (const view_facts &each : all_views()) {
    terms.push_back({std::string(each.typed), std::string(each.about)});
  }
  terms.push_back({"fav:NAME", "a favourite group, by its name"});
  terms.push_back({"fav:1 .. fav:20", "a favourite group, by its position"});
  return terms;
}

std::optional<view_name> name_of_view(std::int8_t view) {
  if (const view_facts *known = facts_with_code(view)) {
    return view_name{known->name};
  }
  return is_favourites(view) ? std::optional(view_name{favourites_view, view - VIEW_FAVOURITE}) : std::nullopt;
}

const std::vector<line_up_entry> &entries_of(const line_up &list, std::int8_t view) {
  static const std::vector<line_up_entry> none;
  if (const view_facts *known = facts_with_code(view)) {
    return list.view(known->kind).entries;
  }
  const auto group = static_cast<std::size_t>(view - VIEW_FAVOURITE);
  return is_favourites(view) && group < list.favourites.size() ? list.favourites[group].entries : none;
}

std::vector<service_row> rows_of(const line_up &list, std::int8_t view) {
  std::vector<service_row> rows;
  for (const line_up_entry &entry : entries_of(list, view)) {
    const line_up_service *service = entry.service != nowhere ? &list.services[entry.service] : nullptr;
    rows.push_back({&list, service, &entry, rows.size()});
  }
  return rows;
}

}  // namespace chlist
