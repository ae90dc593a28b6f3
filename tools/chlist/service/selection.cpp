// Numbers, names and identities, each looked up by the library.
#include "chlist/service/selection.h"

#include <channel/store.h>
#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <span>
#include <stdexcept>

#include "channel/store/group_table.h"
#include "channel/store/hierarchy.h"
#include "chlist/closest.h"
#include "chlist/list_contents.h"
#include "chlist/report.h"
#include "chlist/service/columns.h"
#include "chlist/service/names.h"
#include "chlist/text/broadcast_text.h"

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

std::vector<channel_st *> with_identity(std::string_view text) {
  const std::optional<channel::identity> id = read_identity(text);
  channel_st *found = !id.has_value() ? nullptr
                                      : get_channel_st(id->net_index, id->network_id, id->ts_id, id->frequency,
                                                       id->service_id, id->polarisation);
  return found != nullptr ? std::vector{found} : std::vector<channel_st *>{};
}

// Those of the entries that a rule names, each once.
template <class Rule>
std::vector<channel_st *> services_shown(std::int8_t view, const Rule &is_meant) {
  std::vector<channel_st *> services;
  for (const listed_service &row : listed_in(view)) {
    if (row.entry->rch != nullptr && is_meant(*row.entry) &&
        std::ranges::find(services, row.entry->rch) == services.end()) {
      services.push_back(row.entry->rch);
    }
  }
  return services;
}

// A number alone means the entries without a minor one, if there are such.
std::vector<channel_st *> with_number(const number_text &number, std::int8_t view) {
  std::vector<channel_st *> services = services_shown(view, [&number](const virtual_channel_st &entry) {
    return entry.major_ch_num == number.major && entry.minor_ch_num == number.minor.value_or(0);
  });
  if (services.empty() && !number.minor.has_value()) {
    services =
        services_shown(view, [&number](const virtual_channel_st &entry) { return entry.major_ch_num == number.major; });
  }
  return services;
}

template <class Rule>
std::vector<channel_st *> with_name(const Rule &is_meant) {
  std::vector<channel_st *> services;
  for (const channel::filed_service &filed : channel::all_services_of(get_channel_list()->network_list)) {
    if (is_meant(name_in(filed.service.name[0].text))) {
      services.push_back(&filed.service);
    }
  }
  return services;
}

// The numbers under which a view has a service: "7, 7-2"; a dash when it has none.
std::string numbers_in(std::int8_t view, const channel_st *service) {
  std::string numbers;
  for (const listed_service &row : listed_in(view)) {
    if (row.entry->rch == service) {
      numbers += fmt::format("{}{}", numbers.empty() ? "" : ", ", number_text_of(*row.entry));
    }
  }
  return numbers.empty() ? "-" : numbers;
}

std::string candidates_text(const std::vector<channel_st *> &services, std::int8_t view) {
  std::string text;
  for (const channel_st *service : std::span(services).first(std::min(services.size(), most_candidates))) {
    text += fmt::format("\n  {:>6}  {}  {}", numbers_in(view, service), identity_text(*service),
                        shown(name_in(service->name[0].text)));
  }
  if (services.size() > most_candidates) {
    text += fmt::format("\n  and {} more", services.size() - most_candidates);
  }
  return text;
}

struct named_view {
  std::string_view name;
  std::int8_t view;
  std::string_view about;
};

constexpr named_view named_views[] = {{"all", VIEW_ALL, "all services"},
                                      {"tv", VIEW_TV, "television"},
                                      {"radio", VIEW_RADIO, "radio"},
                                      {"user", VIEW_USER, "the user's own list"},
                                      {"promo", VIEW_PROMOTION, "services that are advertised"}};

constexpr std::string_view favourite_prefix = "fav:";

std::vector<std::string> favourite_names() {
  std::vector<std::string> names;
  for (const group_st &group : channel::favourite_table()) {
    names.push_back(name_in(group.name));
  }
  return names;
}

// The group with a name, else the one with a number.
std::optional<std::int8_t> favourites_named(std::string_view text) {
  const std::vector<std::string> names = favourite_names();
  const auto is_meant = [text](const std::string &name) { return !text.empty() && is_same_name(name, text); };
  const auto named = std::ranges::find_if(names, is_meant);
  if (std::ranges::count_if(names, is_meant) > 1) {
    throw std::runtime_error(fmt::format("several favourite groups are named {}: name one by its place, fav:{}",
                                         shown(text), named - names.begin()));
  }
  if (named != names.end()) {
    return static_cast<std::int8_t>(VIEW_FAVOURITE + (named - names.begin()));
  }
  const std::optional<std::int16_t> group = read_number(text);
  return group.has_value() && *group < MAX_FAV ? std::optional(static_cast<std::int8_t>(VIEW_FAVOURITE + *group))
                                               : std::nullopt;
}

std::vector<std::string> names_of_views() {
  std::vector<std::string> names;
  for (const named_view &each : named_views) {
    names.emplace_back(each.name);
  }
  names.emplace_back("fav:0 to fav:19");
  for (const std::string &name : favourite_names()) {
    if (!name.empty()) {
      names.push_back(std::string(favourite_prefix) + name);
    }
  }
  return names;
}

}  // namespace

std::string number_text_of(const virtual_channel_st &entry) {
  return entry.minor_ch_num == 0 ? std::to_string(entry.major_ch_num)
                                 : fmt::format("{}-{}", entry.major_ch_num, entry.minor_ch_num);
}

std::vector<channel_st *> services_named(std::string_view text, std::int8_t view) {
  const std::optional<number_text> number = read_channel_number(text);
  std::vector<channel_st *> services = with_identity(text);
  if (services.empty() && number.has_value()) {
    services = with_number(*number, view);
  }
  // Nothing names no service, not even one without a name.
  if (services.empty() && !text.empty()) {
    services = with_name([text](const std::string &name) { return is_same_name(name, text); });
  }
  if (services.empty() && !number.has_value() && !text.empty()) {
    services = with_name([text](const std::string &name) { return contains_name(name, text); });
  }
  return services;
}

channel_st &service_named(std::string_view text, std::int8_t view) {
  const std::vector<channel_st *> services = services_named(text, view);
  if (services.empty()) {
    throw std::runtime_error(fmt::format("no service has the number, the name or the identity {}", shown(text)));
  }
  if (services.size() > 1) {
    throw std::runtime_error(fmt::format("{} could be any of {} services:{}", shown(text), services.size(),
                                         candidates_text(services, view)));
  }
  return *services.front();
}

std::int8_t view_named(std::string_view text) {
  const auto *const named =
      std::ranges::find_if(named_views, [text](const named_view &each) { return is_same_name(each.name, text); });
  if (named != std::end(named_views)) {
    return named->view;
  }
  if (text.starts_with(favourite_prefix)) {
    if (const auto favourites = favourites_named(text.substr(favourite_prefix.size())); favourites.has_value()) {
      return *favourites;
    }
  }
  throw std::runtime_error(unknown_name("view", text, names_of_views()));
}

std::vector<term> terms_of_views() {
  std::vector<term> terms;
  for (const named_view &each : named_views) {
    terms.push_back({std::string(each.name), std::string(each.about)});
  }
  terms.push_back({"fav:NAME", "a favourite group, by its name"});
  terms.push_back({"fav:0 .. fav:19", "a favourite group, by its place"});
  return terms;
}

std::string text_of_view(std::int8_t view) {
  if (const auto *const named = std::ranges::find(named_views, view, &named_view::view);
      named != std::end(named_views)) {
    return std::string(named->name);
  }
  const bool is_favourites = view >= VIEW_FAVOURITE && view <= VIEW_FAVOURITE_LAST;
  return is_favourites ? fmt::format("{}{}", favourite_prefix, view - VIEW_FAVOURITE) : fmt::format("view {}", view);
}

}  // namespace chlist
