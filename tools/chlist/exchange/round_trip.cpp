// Pairs the services of both lists by the order in which they were written, and counts differences by their kind.
#include "chlist/exchange/round_trip.h"

#include <channel/store.h>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>

#include "chlist/compare/difference.h"
#include "chlist/exchange/beside.h"
#include "chlist/exchange/broadcast_service.h"
#include "chlist/exchange/enigma2/picons.h"
#include "chlist/exchange/group_choice.h"
#include "chlist/exchange/layout/weave.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/order_of_all.h"
#include "chlist/exchange/source_bytes.h"
#include "chlist/fields/record_fields.h"
#include "chlist/json/json.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

constexpr std::string_view favourites_field = "favourites";

// What it means to a viewer that a field is not what it was; of others the first value tells enough.
struct meaning {
  std::string_view field;
  std::string_view text;
};

constexpr meaning meanings[] = {
    {"locked", "no code is asked for any more"},
    {"skipped", "zapping stops at them again"},
    {"scrambled", "they pass for free to air"},
    {"pmt_pid", "found anew when the service is tuned"},
    {"pcr_pid", "found anew when the service is tuned"},
    {"video_pid", "found anew when the service is tuned"},
    {"audio_pid", "found anew when the service is tuned"},
    {"video_ecm_pid", "found anew when the service is tuned"},
    {"net_index", "networks are numbered as they come up"},
    {"name_table", "written in UTF-8"},
    {"short_name_table", "written in UTF-8"},
    {"provider_id", "groups are numbered as they come up"},
    {"genre_id", "groups are numbered as they come up"},
    {"country_id", "groups are numbered as they come up"},
};

std::string value_text(const json &value) {
  if (value.is_null()) {
    return "none";
  }
  return value.is_string() ? shown(value.as_string()) : text_of_value(value);
}

std::string note_of(const field_change &changed) {
  const auto *const found = std::ranges::find(meanings, changed.name, &meaning::field);
  return found != std::end(meanings)
             ? std::string(found->text)
             : fmt::format("{} becomes {}", value_text(changed.before), value_text(changed.after));
}

std::string name_of_view(const field_change &changed) {
  return changed.view->is_favourites() ? std::string("favourite groups")
                                       : fmt::format("the {} view", changed.view->kind);
}

// Counts the differences of two lists, each once for a service however many views show it.
class difference_counter {
 public:
  explicit difference_counter(loss_counts &lost) : lost_(lost) {}

  void count(const change &found) {
    if (found.kind == change_kind::added) {
      return;
    }
    if (found.what == "service") {
      count_service(found);
    } else if (found.what == "view") {
      count_view(found);
    } else if (found.what == "setting") {
      lost_.add(fmt::format("setting: {}", found.name), 1, note_of(found.fields.front()));
    } else {
      count_record(found);
    }
  }

 private:
  // Those that are gone are counted by their reasons.
  void count_service(const change &found) {
    if (found.kind == change_kind::removed) {
      return;
    }
    std::set<std::string> met;
    for (const field_change &changed : found.fields) {
      std::string what = kind_of(changed);
      if (!is_told_by_another(changed, found.fields) && met.insert(what).second) {
        lost_.add(what, 1, is_entry(changed) ? std::string() : note_of(changed));
      }
    }
  }

  // Whoever hears of a name needs not hear of its id or its table, and of the byte of flags only when it is others than
  // the known ones.
  static bool is_told_by_another(const field_change &changed, const std::vector<field_change> &fields) {
    const auto is_about = [&](const field_change &other) {
      return changed.name.starts_with(other.name) &&
             (changed.name.substr(other.name.size()) == "_id" || changed.name.substr(other.name.size()) == "_table");
    };
    return is_told_by_flags(changed) || std::ranges::any_of(fields, is_about);
  }

  // An entry that is gone, or that was not there.
  static bool is_entry(const field_change &changed) {
    return changed.view && (changed.before.is_null() || changed.after.is_null());
  }

  static bool is_told_by_flags(const field_change &changed) {
    constexpr int known = CHANNEL_FLAG_LOCKED | CHANNEL_FLAG_FTA | CHANNEL_FLAG_SKIP | CHANNEL_FLAG_DSMCC;
    return changed.name == "flags" && ((changed.before.as_integer() ^ changed.after.as_integer()) & ~known) == 0;
  }

  static std::string kind_of(const field_change &changed) {
    if (!is_entry(changed)) {
      return std::string(changed.name);
    }
    return fmt::format("{} {}", changed.before.is_null() ? "entries that come up in" : "entries of",
                       name_of_view(changed));
  }

  void count_view(const change &found) {
    const std::string name = found.subject["view"].as_string();
    for (const field_change &changed : found.fields) {
      if (changed.name == "unresolved") {
        lost_.add("entries without a service",
                  changed.before.size() - std::min(changed.before.size(), changed.after.size()));
      } else if (changed.name == "moved") {
        lost_.add(fmt::format("places in the {} view", name), changed.after.size());
      }
    }
  }

  void count_record(const change &found) {
    const std::string name = found.what == "group" ? group_of(found) : std::string(found.what);
    if (found.kind == change_kind::removed) {
      const bool is_named = !found.fields.empty();
      lost_.add(name, 1, fmt::format("such as {}", is_named ? value_text(found.fields.front().before) : found.name));
      return;
    }
    for (const field_change &changed : found.fields) {
      lost_.add(fmt::format("{} of a {}", changed.name, name), 1, note_of(changed));
    }
  }

  static std::string group_of(const change &found) {
    const std::string &table = found.subject["table"].as_string();
    return table == "favourite group" ? table : table + " group";
  }

  loss_counts &lost_;
};

// written: the places of the services in the list before, in the order of writing; places: of those that were read,
// among these.
pairing pair_written(const std::vector<std::size_t> &written, std::size_t before,
                     const std::vector<std::size_t> &places, const filled_list &filled, channel_list_st &list) {
  std::unordered_map<const channel_st *, std::size_t> came_from;
  for (std::size_t at = 0; at < places.size(); ++at) {
    if (filled.filed[at] != nullptr && places[at] < written.size()) {
      came_from.emplace(filled.filed[at], written[places[at]]);
    }
  }
  pairing pairs;
  std::vector<bool> is_there(before, false);
  const std::vector<const channel_st *> services = services_of(list);
  for (std::size_t place = 0; place < services.size(); ++place) {
    if (const auto found = came_from.find(services[place]); found != came_from.end()) {
      pairs.both.push_back({found->second, place});
      is_there[found->second] = true;
    }
  }
  for (std::size_t place = 0; place < before; ++place) {
    if (!is_there[place]) {
      pairs.removed.push_back(place);
    }
  }
  return pairs;
}

std::vector<std::size_t> places_of(const written_list &written, const std::vector<std::size_t> &places) {
  std::vector<std::size_t> made;
  std::ranges::transform(written.services, std::back_inserter(made), [&](std::size_t at) { return places[at]; });
  return made;
}

bool carries(const written_list &written, std::string_view name) {
  return std::ranges::find(written.carried, name, &field::name) != written.carried.end();
}

// Two fields may tell the same.
bool is_told_by(const field &which, const field &carried) {
  const auto is_either = [&](std::string_view name) { return which.name == name || carried.name == name; };
  const bool is_flag = which.values.kind == value_kind::yes_or_no;
  return which.name == carried.name || (is_either("type") && is_either("service_type")) ||
         (is_flag && carried.name == "flags");
}

bool says_something(const line_up &list, const line_up_service &service, const field &which) {
  static const line_up_service unknown = broadcast_service(0);
  if (which.name == "number") {
    return service.number.has_value();
  }
  if (which.name == "minor") {
    return service.number && service.number->minor != 0;
  }
  const json value = which.get({&list, &service});
  return which.owner == field_owner::derived ? !value.empty() : value != which.get({nullptr, &unknown});
}

// The number of a type says no more than its name, and the byte of flags no more than they do.
bool is_counted(const field &which) {
  const bool is_number = which.name == "number" || which.name == "minor";
  return (which.owner != field_owner::entry || is_number) && which.name != "service_type" && which.name != "flags" &&
         !which.name.ends_with("_table");
}

// Returns how many favourite groups come back.
std::size_t count_round_trip(const records_of_list &before, const std::vector<std::size_t> &places,
                             const written_list &written, const format &to, const group_options &groups,
                             loss_counts &lost) {
  loss_counts of_reading;
  line_up read = to.read(source_of(written.files, to.is_folder), of_reading);
  choose_groups_again(read, groups, before.list.favourites);
  const filled_list filled = fill_list(read, of_reading);
  channel_list_st &records = *get_channel_list();
  const line_up after = line_up_of(records);
  const std::vector<std::size_t> places_of_read = places_among_written(read, written);
  const paired_records pairs = pair_around(
      pair_written(places_of(written, places), before.list.services.size(), places_of_read, filled, records),
      before.list, after);
  lost.leave_out("services that an import refuses", written.services.size() - pairs.services.both.size(),
                 filled.skipped.empty() ? std::string() : filled.skipped.front().reason);
  difference_counter counter(lost);
  for (const change &found : differences(before.list, after, pairs)) {
    counter.count(found);
  }
  count_record_losses(before, {records, after}, pairs, lost);
  return static_cast<std::size_t>(std::ranges::count_if(after.favourites, &favourite_group::is_counted));
}

void count_uncarried(const line_up &list, const written_list &written, loss_counts &lost) {
  for (const field &each : service_fields()) {
    const bool is_carried =
        std::ranges::any_of(written.carried, [&](const field *carried) { return is_told_by(each, *carried); });
    if (is_counted(each) && !is_carried) {
      lost.add(each.name, static_cast<std::size_t>(std::ranges::count_if(list.services, [&](const auto &service) {
                 return says_something(list, service, each);
               })));
    }
  }
  for (const view_kind kind : {view_kind::user, view_kind::promotion}) {
    const named_view view = views_of(list)[static_cast<std::size_t>(kind)];
    lost.add(fmt::format("entries of the {} view", view.name.kind), view.entries.size());
  }
  for (const record_field<line_up_settings> &each : setting_fields()) {
    lost.add(fmt::format("setting: {}", each.title), each.get(list.settings) != each.get({}) ? 1 : 0);
  }
}

// What the format wants of every service and nobody knows of these; the writer assumes it.
void count_lacking(const line_up &list, const written_list &written, const format &to, loss_counts &lost) {
  if (!to.lacks.empty()) {
    const auto lacking = std::ranges::count_if(
        written.services, [&](std::size_t place) { return list.services[place].further.tuned.empty(); });
    lost.add(to.lacks, static_cast<std::size_t>(lacking), std::string(to.without_it));
  }
}

// Addresses that somebody asks for are written anew.
bool is_to_be_woven(const companion &kept, const format &to, const write_options &options) {
  return can_be_woven(kept, to) && options.url.empty();
}

// A list that was read with groups goes out with them.
written_list written_as(const line_up &list, const companion &kept, const format &to, write_options options) {
  if (!is_to_be_woven(kept, to, options)) {
    return to.write(list, options);
  }
  options.is_by_favourites = true;
  return woven_text(list, kept, to, options);
}

exported_list exported(const records_of_list &list, const companion &kept, const format &to,
                       const write_options &options) {
  const list_for_formats given = in_order_of_all(list.list);
  written_list written = written_as(given.list, kept, to, options);
  exported_list made;
  made.lost = std::move(written.left_out);
  count_lacking(given.list, written, to, made.lost);
  if (written.carried.empty()) {
    const group_options groups = can_be_woven(kept, to) ? kept.source.groups : group_options();
    made.favourite_groups = count_round_trip(list, given.places, written, to, groups, made.lost);
  } else {
    count_uncarried(given.list, written, made.lost);
    made.favourite_groups = carries(written, favourites_field) ? given.list.favourites.size() : 0;
  }
  auto picons = options.names_picons ? std::optional(picons_of(written.files.front().text)) : std::nullopt;
  made.services = written.services.size();
  made.notes = std::move(written.notes);
  made.files = std::move(written.files);
  if (kept.source.format == to.name && !kept.source.files.empty()) {
    encode_as(kept.source, made.files, made.lost);
  }
  if (picons) {
    made.files.push_back(std::move(*picons));
  }
  return made;
}

}  // namespace

// A companion that somebody changed may hold a text that its own format cannot read.
exported_list export_list(const records_of_list &list, const companion &kept, const format &to,
                          const write_options &options) {
  if (!is_to_be_woven(kept, to, options)) {
    return exported(list, kept, to, options);
  }
  try {
    return exported(list, kept, to, options);
  } catch (const std::runtime_error &error) {
    exported_list made = exported(list, {}, to, options);
    made.lost.leave_out(fmt::format("files of {} as they were", to.name), kept.source.files.size(),
                        fmt::format("written anew: {}", error.what()));
    return made;
  }
}

}  // namespace chlist
