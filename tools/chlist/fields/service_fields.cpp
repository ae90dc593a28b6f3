// The table of fields.
#include "chlist/fields/service_fields.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "chlist/closest.h"
#include "chlist/fields/identity_fields.h"
#include "chlist/fields/service_types.h"
#include "chlist/position.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

using row = const service_row &;
using record = channel_st;

constexpr value_range type_by_name = {
    value_kind::named, 0, 255, "a name as TV, radio or HD TV, or 0 to 255", {}, words_of_service_types, "type "};
constexpr value_range type_by_number = {value_kind::number,    0, 255, "0 to 255, or a name as TV, radio or HD TV", {},
                                        words_of_service_types};

// Fields of the record.
template <auto Member, const value_range &Values>
json of_record(row shown) {
  return shown.service != nullptr ? shown_value(Values, static_cast<std::int64_t>(shown.service->fields.*Member))
                                  : json();
}

template <auto Member>
void set_record(line_up_service &service, std::int64_t value) {
  auto &member = service.fields.*Member;
  member = static_cast<std::remove_reference_t<decltype(member)>>(value);
}

template <int Bit>
json of_flag(row shown) {
  return shown.service != nullptr ? json(shown.service->has_flag(Bit)) : json();
}

template <int Bit>
void set_flag(line_up_service &service, std::int64_t value) {
  service.set_flag(Bit, value != 0);
}

template <auto Member>
json of_text(row shown) {
  return shown.service != nullptr ? json(shown.service->*Member) : json();
}

// Not every service has these texts.
template <auto Member>
json of_text_if_any(row shown) {
  return shown.service != nullptr && !(shown.service->*Member).empty() ? json(shown.service->*Member) : json();
}

template <auto Member, const field_words &Words>
json of_identity(row shown) {
  return shown.service != nullptr || shown.entry != nullptr
             ? shown_value(Words.values, static_cast<std::int64_t>(shown.id().*Member))
             : json();
}

template <auto Member>
json of_entry(row shown) {
  return shown.entry != nullptr ? json(shown.entry->*Member) : json();
}

template <auto Part>
json of_number(row shown) {
  return shown.entry != nullptr ? json(shown.entry->number.*Part) : json();
}

json position(row shown) { return shown.entry != nullptr ? json(position_of(shown.index)) : json(); }

// The names of the favourite groups that hold the service; of groups without a name their positions.
json favourites(row shown) {
  json names = json::array();
  if (shown.service == nullptr) {
    return names;
  }
  const auto place = static_cast<std::size_t>(shown.service - shown.list->services.data());
  for (std::size_t group = 0; group < shown.list->favourites.size(); ++group) {
    const favourite_group &each = shown.list->favourites[group];
    if (std::ranges::find(each.entries, place, &line_up_entry::service) != each.entries.end()) {
      names.push_back(each.name.empty() ? std::to_string(position_of(group)) : each.name);
    }
  }
  return names;
}

using id = channel::identity;
using service = line_up_service;
using owner = field_owner;

constexpr field table[] = {
    {{"position", "position", "place in the view, from 1", ranges::position_in_view}, owner::entry, position},
    {{"number", "number", "channel number", ranges::channel_number}, owner::entry, of_number<&channel_number::major>},
    {{"minor", "minor", "minor channel number", ranges::minor_number}, owner::entry, of_number<&channel_number::minor>},
    {{"name", "name", "name of the service", ranges::free_text},
     owner::service,
     of_text<&service::name>,
     nullptr,
     &service::name},
    {{"short_name", "short name", "second name of the service", ranges::free_text},
     owner::service,
     of_text<&service::short_name>,
     nullptr,
     &service::short_name},
    {{"name_table", "name table", "character table of the name", ranges::free_text},
     owner::service,
     of_text_if_any<&service::name_table>},
    {{"short_name_table", "short name table", "character table of the second name", ranges::free_text},
     owner::service,
     of_text_if_any<&service::short_name_table>},
    {{"type", "type", "service type by name", type_by_name},
     owner::service,
     of_record<&record::service_type, type_by_name>,
     set_record<&record::service_type>},
    {{"provider", "provider", "name of the provider", ranges::name_of_group},
     owner::derived,
     of_text_if_any<&service::provider>,
     nullptr,
     &service::provider},
    {{"genre", "genre", "name of the genre", ranges::name_of_group},
     owner::derived,
     of_text_if_any<&service::genre>,
     nullptr,
     &service::genre},
    {{"country", "country", "name of the country", ranges::name_of_group},
     owner::derived,
     of_text_if_any<&service::country>,
     nullptr,
     &service::country},
    {{"favourites", "favourites", "favourite groups that hold the service", ranges::several_texts},
     owner::derived,
     favourites},
    {{"network_name", "network name", "name of the network", ranges::free_text},
     owner::derived,
     of_text_if_any<&service::source>,
     nullptr,
     &service::source},
    {net_index_words, owner::identity, of_identity<&id::net_index, net_index_words>, set_record<&record::net_index>},
    {network_id_words, owner::identity, of_identity<&id::network_id, network_id_words>,
     set_record<&record::network_id>},
    {ts_id_words, owner::identity, of_identity<&id::ts_id, ts_id_words>, set_record<&record::ts_id>},
    {frequency_words, owner::identity, of_identity<&id::frequency, frequency_words>, set_record<&record::frequency>},
    {polarisation_words, owner::identity, of_identity<&id::polarisation, polarisation_words>,
     set_record<&record::polarisation>},
    {service_id_words, owner::identity, of_identity<&id::service_id, service_id_words>,
     set_record<&record::service_id>},
    {{"pmt_pid", "PMT PID", "PID of the program map table", ranges::pid},
     owner::service,
     of_record<&record::pmt_pid, ranges::pid>,
     set_record<&record::pmt_pid>},
    {{"pcr_pid", "PCR PID", "PID of the clock reference", ranges::pid},
     owner::service,
     of_record<&record::pcr_pid, ranges::pid>,
     set_record<&record::pcr_pid>},
    {{"video_pid", "video PID", "PID of the video", ranges::pid},
     owner::service,
     of_record<&record::video_pid, ranges::pid>,
     set_record<&record::video_pid>},
    {{"video_tag", "video tag", "component tag of the video", ranges::component_tag},
     owner::service,
     of_record<&record::video_tag, ranges::component_tag>,
     set_record<&record::video_tag>},
    {{"video_ecm_pid", "ECM PID", "PID of the video's entitlement control messages", ranges::pid},
     owner::service,
     of_record<&record::video_ecm_pid, ranges::pid>,
     set_record<&record::video_ecm_pid>},
    {{"audio_pid", "audio PID", "PID of the audio", ranges::pid},
     owner::service,
     of_record<&record::audio_pid, ranges::pid>,
     set_record<&record::audio_pid>},
    {{"audio_tag", "audio tag", "component tag of the audio", ranges::component_tag},
     owner::service,
     of_record<&record::audio_tag, ranges::component_tag>,
     set_record<&record::audio_tag>},
    {{"locked", "locked", "the service is locked", ranges::yes_or_no},
     owner::service,
     of_flag<CHANNEL_FLAG_LOCKED>,
     set_flag<CHANNEL_FLAG_LOCKED>},
    {{"skipped", "skipped", "passed over when zapping", ranges::yes_or_no},
     owner::service,
     of_flag<CHANNEL_FLAG_SKIP>,
     set_flag<CHANNEL_FLAG_SKIP>},
    {{"scrambled", "scrambled", "not free to air", ranges::yes_or_no},
     owner::service,
     of_flag<CHANNEL_FLAG_FTA>,
     set_flag<CHANNEL_FLAG_FTA>},
    {{"data", "data", "carries the DSM-CC data service", ranges::yes_or_no},
     owner::service,
     of_flag<CHANNEL_FLAG_DSMCC>,
     set_flag<CHANNEL_FLAG_DSMCC>},
    {{"flags", "flags", "the byte of all flags", ranges::byte},
     owner::service,
     of_record<&record::flag, ranges::byte>,
     set_record<&record::flag>},
    {{"service_type", "type id", "service type as a number", type_by_number},
     owner::service,
     of_record<&record::service_type, type_by_number>,
     set_record<&record::service_type>},
    {{"source_type", "source", "where the service is received from", ranges::byte},
     owner::service,
     of_record<&record::source_type, ranges::byte>,
     set_record<&record::source_type>},
    {{"provider_id", "provider id", "id of the provider", ranges::signed16},
     owner::service,
     of_record<&record::provider_id, ranges::signed16>},
    {{"genre_id", "genre id", "id of the genre", ranges::signed16},
     owner::service,
     of_record<&record::genre_id, ranges::signed16>},
    {{"country_id", "country id", "id of the country", ranges::signed16},
     owner::service,
     of_record<&record::country_id, ranges::signed16>},
    {{"order_key", "order key", "key of the user's own order", ranges::signed16},
     owner::service,
     of_record<&record::user_order_key, ranges::signed16>,
     set_record<&record::user_order_key>},
    {{"tag", "tag", "tag of the entry", ranges::byte}, owner::entry, of_entry<&line_up_entry::tag>},
    {{"favourite_key", "favourite key", "position key of the entry in a favourite group", ranges::byte},
     owner::entry,
     of_entry<&line_up_entry::favourite_key>},
};

}  // namespace

std::span<const field> service_fields() { return table; }

std::vector<std::string> names_of_fields() {
  std::vector<std::string> names;
  for (const field &each : table) {
    names.emplace_back(each.name);
  }
  return names;
}

const field *find_field(std::string_view name) {
  const auto *const found = std::ranges::find(table, name, &field::name);
  return found != std::end(table) ? found : nullptr;
}

const field &field_named(std::string_view name) {
  if (const field *found = find_field(name)) {
    return *found;
  }
  throw std::runtime_error(unknown_name("column", name, names_of_fields()));
}

std::vector<const field *> fields_named(std::string_view names) {
  std::vector<const field *> named;
  for (std::size_t begin = 0; begin <= names.size();) {
    const std::size_t end = std::min(names.find(',', begin), names.size());
    named.push_back(&field_named(names.substr(begin, end - begin)));
    begin = end + 1;
  }
  return named;
}

std::string service_type_name(std::uint8_t service_type) {
  return text_of_value(shown_value(type_by_name, service_type));
}

std::int64_t number_for(const field &which, std::string_view text) {
  if (const auto number = number_from(which.values, text)) {
    return *number;
  }
  throw std::runtime_error(fmt::format("{}={}: VALUE is {}", which.name, shown(text), which.values.text));
}

void set_field(line_up_service &service, const field &which, std::string_view text) {
  if (which.text != nullptr) {
    service.*which.text = spells_unset(which.values, text) ? "" : text;
  } else {
    which.set_number(service, number_for(which, text));
  }
}

}  // namespace chlist
