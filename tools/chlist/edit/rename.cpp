// `chlist rename`: another name for a service, or another part in the names of several.
#include <fmt/format.h>

#include <memory>
#include <optional>
#include <stdexcept>

#include "chlist/edit/edited_services.h"
#include "chlist/edit/edits.h"
#include "chlist/edit/service_edits.h"
#include "chlist/text/broadcast_text.h"
#include "chlist/text/pattern.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

struct rename_options {
  std::optional<std::string> service;
  std::optional<std::string> name;
  service_choice services;  // by a condition
  std::optional<std::string> replacing;
  bool is_short = false;

  void must_go_together() const {
    if (replacing && !service && !services.where) {
      throw usage_error("SERVICE or --where is required");
    }
    if (!replacing && (!service || !name)) {
      throw usage_error(services.where ? "--where needs --replace" : "SERVICE and NAME (or --replace) is required");
    }
  }
};

name_place place_of(const rename_options &options) { return options.is_short ? name_place::second : name_place::first; }

// A name in which there is nothing to replace stays as it is, whatever its characters.
void replace_in_names(const rename_options &options, edited_list &list) {
  const replacing replaced(*options.replacing);
  for (const channel_st *service : list.services(options.services)) {
    const std::string before = name_in(service->name[options.is_short ? 1 : 0].text);
    const std::string after = replaced.apply(before);
    if (after.empty() && !before.empty()) {
      throw std::runtime_error(fmt::format("nothing would be left of the name {}", name_for_message(*service)));
    }
    if (after != valid_utf8(before)) {
      set_name(*service, place_of(options), after, list);
    }
  }
}

void rename(const rename_options &options, edited_list &list) {
  if (options.replacing) {
    replace_in_names(options, list);
  } else {
    set_name(list.service(*options.service), place_of(options), *options.name, list);
  }
}

rename_options with_one_service(rename_options options) {
  if (options.service) {
    options.services.names = {*options.service};
  }
  return options;
}

}  // namespace

edit_row rename_edit() {
  auto options = std::make_shared<rename_options>();
  option where = where_option(options->services);
  where.excluded = {"SERVICE", "NAME"};
  return {
      .name = "rename",
      .summary = "Give services other names",
      .details = {"The name is replaced; one that is longer than the 96 bytes that a list holds is cut in front of a "
                  "character, with a note. One that is not UTF-8, or holds a line end or another control character, is "
                  "refused. All views show the service's one name, so nothing else follows.",
                  "--replace changes a part of the names: /PATTERN/TEXT/ puts TEXT in the first place where the "
                  "regular expression PATTERN is found, /PATTERN/TEXT/g in each; case and accents of the name do not "
                  "count. \\1 to \\9 in TEXT are what the brackets of PATTERN took. Any other character than / can "
                  "stand between. Names without the pattern stay as they are."},
      .sections = {section_of_conditions()},
      .examples = {"chlist rename channels.dat 7 \"News HD\"",
                   "chlist rename channels.dat \"News HD\" News --short --dry-run",
                   "chlist rename channels.dat --where 'provider=ARD' --replace '/ HD$//' --yes"},
      .options = {{.names = "SERVICE", .target = &options->service, .about = "the service"},
                  {.names = "NAME", .target = &options->name, .about = "its new name"},
                  where,
                  {.names = "--replace",
                   .target = &options->replacing,
                   .about = "replace a part of the names instead",
                   .value = "/PATTERN/TEXT/",
                   .excluded = {"NAME"}},
                  {.names = "--short",
                   .target = &options->is_short,
                   .about = "the second, short name instead of the first"}},
      .take = taking<rename_options>(
          options, [](const rename_options &own, edited_list &list) { rename(with_one_service(own), list); })};
}

}  // namespace chlist
