// The table of columns.
#include "chlist/service/columns.h"

#include <channel/groups.h>
#include <channel/providers.h>
#include <channel/store.h>
#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "channel/store/view.h"
#include "chlist/closest.h"
#include "chlist/service/names.h"
#include "chlist/service/pids.h"
#include "chlist/service/service_types.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

using shown_row = const listed_service &;

// The field of a service, of an entry, and of an identity, which either has.
template <auto Field>
json of_service(shown_row listed) {
  return listed.service != nullptr ? json(listed.service->*Field) : json();
}

template <auto Field>
json of_entry(shown_row listed) {
  return listed.entry != nullptr ? json(listed.entry->*Field) : json();
}

template <auto OfService, auto OfEntry>
json of_identity(shown_row listed) {
  return listed.service != nullptr ? of_service<OfService>(listed) : of_entry<OfEntry>(listed);
}

template <auto Field, auto Unset>
json unless_unset(shown_row listed) {
  return listed.service != nullptr && listed.service->*Field != Unset ? json(listed.service->*Field) : json();
}

template <auto Field>
json pid(shown_row listed) {
  return unless_unset<Field, unset_pid>(listed);
}

template <auto Field>
json tag(shown_row listed) {
  return unless_unset<Field, unset_tag>(listed);
}

template <int Bit>
json flag(shown_row listed) {
  return listed.service != nullptr ? json((listed.service->flag & Bit) != 0) : json();
}

template <std::size_t Slot>
json name(shown_row listed) {
  return listed.service != nullptr ? json(name_in(listed.service->name[Slot].text)) : json();
}

template <std::size_t Slot>
json name_table(shown_row listed) {
  const std::string table =
      listed.service != nullptr ? table_name(encoded_text(listed.service->name[Slot].text)) : std::string();
  return !table.empty() ? json(table) : json();
}

template <auto Field, auto Find>
json group_name(shown_row listed) {
  const group_st *group = listed.service != nullptr ? Find(listed.service->*Field) : nullptr;
  return group != nullptr ? json(name_in(group->name)) : json();
}

json position(shown_row listed) { return listed.entry != nullptr ? json(listed.position) : json(); }

json type(shown_row listed) {
  return listed.service != nullptr ? json(service_type_name(listed.service->service_type)) : json();
}

json polarisation(shown_row listed) {
  if (listed.service == nullptr && listed.entry == nullptr) {
    return {};
  }
  return std::string(1, polarisation_letter(listed.service != nullptr ? channel::identity_of(*listed.service)
                                                                      : channel::identity_of(*listed.entry)));
}

json network_name(shown_row listed) {
  if (listed.service == nullptr) {
    return {};
  }
  const network_ch_st *network = get_network_ch_info(listed.service->net_index, listed.service->network_id);
  return network != nullptr ? json(name_in(network->network_name)) : json();
}

json favourites(shown_row listed) {
  json groups = json::array();
  const channel_list_st &list = *get_channel_list();
  for (int group = 0; listed.service != nullptr && group < MAX_FAV; ++group) {
    const auto entries = channel::find_view(VIEW_FAVOURITE + group).used();
    if (std::ranges::find(entries, listed.service, &virtual_channel_st::rch) != entries.end()) {
      const std::string own_name = name_in(list.favorite_group[group].name);
      groups.push_back(own_name.empty() ? std::to_string(group) : own_name);
    }
  }
  return groups;
}

using entry_record = virtual_channel_st;
using service_record = channel_st;

constexpr column columns[] = {
    {"position", "position", "place in the view, from 0", true, position},
    {"number", "number", "channel number", true, of_entry<&entry_record::major_ch_num>},
    {"minor", "minor", "minor channel number", true, of_entry<&entry_record::minor_ch_num>},
    {"name", "name", "name of the service", false, name<0>},
    {"short_name", "short name", "second name of the service", false, name<1>},
    {"name_table", "name table", "character table of the name", false, name_table<0>},
    {"short_name_table", "short name table", "character table of the second name", false, name_table<1>},
    {"type", "type", "service type by name", false, type},
    {"provider", "provider", "name of the provider", false, group_name<&service_record::provider_id, find_provider_id>},
    {"genre", "genre", "name of the genre", false, group_name<&service_record::genre_id, find_genre_id>},
    {"country", "country", "name of the country", false, group_name<&service_record::country_id, find_country_id>},
    {"favourites", "favourites", "favourite groups that hold the service", false, favourites},
    {"network_name", "network name", "name of the network", false, network_name},
    {"net_index", "net", "network index", true, of_identity<&service_record::net_index, &entry_record::net_index>},
    {"network_id", "network", "original network id", true,
     of_identity<&service_record::network_id, &entry_record::network_id>},
    {"ts_id", "ts", "transport stream id", true, of_identity<&service_record::ts_id, &entry_record::ts_id>},
    {"frequency", "frequency", "frequency of the transponder", true,
     of_identity<&service_record::frequency, &entry_record::frequency>},
    {"polarisation", "pol", "polarisation, H or V", false, polarisation},
    {"service_id", "service", "service id", true, of_identity<&service_record::service_id, &entry_record::service_id>},
    {"pmt_pid", "PMT PID", "PID of the program map table", true, pid<&service_record::pmt_pid>},
    {"pcr_pid", "PCR PID", "PID of the clock reference", true, pid<&service_record::pcr_pid>},
    {"video_pid", "video PID", "PID of the video", true, pid<&service_record::video_pid>},
    {"video_tag", "video tag", "component tag of the video", true, tag<&service_record::video_tag>},
    {"video_ecm_pid", "ECM PID", "PID of the video's entitlement control messages", true,
     pid<&service_record::video_ecm_pid>},
    {"audio_pid", "audio PID", "PID of the audio", true, pid<&service_record::audio_pid>},
    {"audio_tag", "audio tag", "component tag of the audio", true, tag<&service_record::audio_tag>},
    {"locked", "locked", "the service is locked", false, flag<CHANNEL_FLAG_LOCKED>},
    {"skipped", "skipped", "passed over when zapping", false, flag<CHANNEL_FLAG_SKIP>},
    {"scrambled", "scrambled", "not free to air", false, flag<CHANNEL_FLAG_FTA>},
    {"data", "data", "carries the DSM-CC data service", false, flag<CHANNEL_FLAG_DSMCC>},
    {"flags", "flags", "the byte of all flags", true, of_service<&service_record::flag>},
    {"service_type", "type id", "service type as a number", true, of_service<&service_record::service_type>},
    {"source_type", "source", "where the service is received from", true, of_service<&service_record::source_type>},
    {"provider_id", "provider id", "id of the provider", true, of_service<&service_record::provider_id>},
    {"genre_id", "genre id", "id of the genre", true, of_service<&service_record::genre_id>},
    {"country_id", "country id", "id of the country", true, of_service<&service_record::country_id>},
    {"order_key", "order key", "key of the user's own order", true, of_service<&service_record::user_order_key>},
    {"tag", "tag", "tag of the entry", true, of_entry<&entry_record::vch_tag>},
    {"favourite_key", "favourite key", "position key of the entry in a favourite group", true,
     of_entry<&entry_record::favorite_id>},
};

std::vector<std::string> names_of_columns() {
  std::vector<std::string> names;
  for (const column &each : columns) {
    names.emplace_back(each.name);
  }
  return names;
}

}  // namespace

std::span<const column> all_columns() { return columns; }

const column &column_named(std::string_view name) {
  const auto *const found = std::ranges::find(columns, name, &column::name);
  if (found == std::end(columns)) {
    throw std::runtime_error(unknown_name("column", name, names_of_columns()));
  }
  return *found;
}

std::vector<const column *> columns_named(std::string_view names) {
  std::vector<const column *> named;
  for (std::size_t begin = 0; begin <= names.size();) {
    const std::size_t end = std::min(names.find(',', begin), names.size());
    named.push_back(&column_named(names.substr(begin, end - begin)));
    begin = end + 1;
  }
  return named;
}

std::string text_of_value(const json &value) {
  if (value.is_null()) {
    return "";
  }
  if (value.is_bool()) {
    return value.as_bool() ? "yes" : "no";
  }
  if (value.is_string()) {
    return value.as_string();
  }
  if (!value.is_array()) {
    return value.dump();
  }
  std::string text;
  for (const json &element : value.elements()) {
    text += (text.empty() ? "" : ", ") + text_of_value(element);
  }
  return text;
}

std::vector<listed_service> listed_in(std::int8_t view) {
  std::vector<listed_service> rows;
  for (const virtual_channel_st &entry : channel::find_view(view).used()) {
    rows.push_back({&entry, entry.rch, rows.size()});
  }
  return rows;
}

}  // namespace chlist
