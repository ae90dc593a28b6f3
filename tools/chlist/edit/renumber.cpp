// `chlist renumber`: another number for a service, or new numbers for a whole view. Numbers belong to entries, so one
// service can have several.
#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>

#include "chlist/edit/edited_services.h"
#include "chlist/edit/edits.h"
#include "chlist/edit/number_plan.h"
#include "chlist/edit/renumbering.h"
#include "chlist/fields/ranges.h"
#include "chlist/files/input_file.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"

namespace chlist {
namespace {

struct renumber_options {
  std::optional<std::string> service;
  std::optional<std::string> number;
  std::optional<std::string> from;
  std::filesystem::path plan;
  std::optional<std::string> where;
  std::vector<std::string> views;
  bool swaps = false;
  bool shifts = false;

  void must_go_together() const {
    if (where && !from) {
      throw usage_error("--where needs --from");
    }
    if (!from && plan.empty() && !number) {
      throw usage_error("SERVICE and NUMBER (or --from or --plan) is required");
    }
  }
};

std::vector<std::int8_t> named_views(const renumber_options &options, edited_list &list) {
  std::vector<std::int8_t> views;
  std::ranges::transform(options.views, std::back_inserter(views),
                         [&list](const std::string &name) { return list.view(name); });
  return views;
}

// Where the service has an entry first: in ALL, as a rule.
std::int8_t first_view_of(const channel_st &service) {
  const std::vector<std::int8_t> views = views_in_use();
  const auto found =
      std::ranges::find_if(views, [&](std::int8_t view) { return index_of(channel::find_view(view), service) >= 0; });
  if (found == views.end()) {
    throw std::runtime_error(fmt::format("{} has no entry in any view", name_for_message(service)));
  }
  return *found;
}

void renumber_service(const renumber_options &options, edited_list &list) {
  const std::vector<std::int8_t> views = named_views(options, list);
  const channel_st &service = list.service(*options.service, views.empty() ? std::int8_t{VIEW_ALL} : views.front());
  const channel_number wanted = number_from(*options.number);
  taken_number policy = taken_number::is_refused;
  if (options.swaps || options.shifts) {
    policy = options.swaps ? taken_number::is_swapped : taken_number::is_shifted;
  }
  if (!views.empty()) {
    for (const std::int8_t view : views) {
      renumber_entries(view, service, first_number_in(view, service), wanted, policy);
    }
    return;
  }
  const channel_number former = first_number_in(first_view_of(service), service);
  for (const std::int8_t view : views_in_use()) {
    renumber_entries(view, service, former, wanted, policy);
  }
}

int first_number(const renumber_options &options) {
  const channel_number from = number_from(*options.from);
  if (from.minor != 0) {
    throw std::runtime_error("--from takes a number without a minor one");
  }
  return from.major;
}

void renumber_views(const renumber_options &options, edited_list &list) {
  const int from = first_number(options);
  if (options.views.empty()) {
    renumber_all_with_followers(from, list.notes);
  }
  for (const std::int8_t view : named_views(options, list)) {
    renumber_view(view, from);
  }
}

number_plan plan_in(const std::filesystem::path &path) {
  const std::string text = read_input_file(path);
  try {
    return read_number_plan(text);
  } catch (const std::runtime_error &error) {
    throw std::runtime_error(fmt::format("{}: {}", path.string(), error.what()));
  }
}

// A plan of one line.
number_plan plan_of(const renumber_options &options) {
  number_plan plan;
  plan.lines.push_back(
      {.line = 1, .services = {.condition = where(*options.where), .favourites = {}}, .from = first_number(options)});
  return plan;
}

void renumber(const renumber_options &options, edited_list &list) {
  if (!options.plan.empty()) {
    renumber_by_plan(plan_in(options.plan), list);
  } else if (options.where) {
    renumber_by_plan(plan_of(options), list);
  } else if (options.from) {
    renumber_views(options, list);
  } else {
    renumber_service(options, list);
  }
  list.entries_changed();
}

}  // namespace

edit_row renumber_edit() {
  auto options = std::make_shared<renumber_options>();
  return {
      .name = "renumber",
      .summary = "Give a service, or a whole view, other numbers",
      .details =
          {"Every view and favourite group keeps numbers of its own. With --view only those of the views named "
           "change; without it the service's number in ALL changes, and with it, in every other view and "
           "favourite group, each entry of the service that shows the same number. Entries of the service with "
           "another number stay.",
           "When another entry of a view has the number already, nothing is done, unless that entry gets the "
           "service's former number (--swap), or moves to the next number, and so on up to the first number "
           "that is free (--shift; minor numbers move when NUMBER has one).",
           "--from numbers a view anew in its order, N, N+1 and so on, without minor numbers: the views named, "
           "or ALL, whose new numbers the other views follow in the same way. With --where it numbers services of ALL "
           "that meet a condition, and no others.",
           "--plan reads what is to be numbered from where from a text, line by line. SERVICES are all, "
           "fav:GROUP in the group's order, or a condition as of --where. A service belongs to the first line "
           "that it fits, and one that fits none keeps its number. The numbers are those of ALL, which the "
           "other views follow. When a number would belong to two services, nothing is done and they are "
           "told."},
      .sections = {{"Lines of a plan", forms_of_plan_lines()}, {"Views", terms_of_views()}, section_of_conditions()},
      .examples = {"chlist renumber channels.dat \"News HD\" 1 --swap",
                   "chlist renumber channels.dat 12 5-1 --shift --view tv", "chlist renumber channels.dat --from 1",
                   "chlist renumber channels.dat --where type=radio --from 900 --yes",
                   "chlist renumber channels.dat --plan numbers.txt --dry-run"},
      .options =
          {{.names = "SERVICE", .target = &options->service, .about = "the service"},
           {.names = "NUMBER",
            .target = &options->number,
            .about = fmt::format("its number, {}, or NUMBER-MINOR", ranges::channel_number.text)},
           {.names = "--from",
            .target = &options->from,
            .about = "number whole views from here on",
            .value = "N",
            .excluded = {"SERVICE", "NUMBER", "--swap", "--shift"}},
           {.names = "--where",
            .target = &options->where,
            .about = "number only services that meet a condition",
            .value = "CONDITION",
            .excluded = {"--view"}},
           {.names = "--plan",
            .target = &options->plan,
            .about = "number services as this text says",
            .value = "PLAN",
            .excluded = {"SERVICE", "NUMBER", "--from", "--where", "--swap", "--shift", "--view"}},
           {.names = "--swap",
            .target = &options->swaps,
            .about = "what has the number gets the service's",
            .excluded = {"--shift"}},
           {.names = "--shift", .target = &options->shifts, .about = "what has the number moves up"},
           {.names = "--view", .target = &options->views, .about = "the view; may be given again", .value = "VIEW"}},
      .take = taking<renumber_options>(options, renumber)};
}

}  // namespace chlist
