// The table of fields.
#include "chlist/fields/service_fields.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <stdexcept>

#include "chlist/closest.h"
#include "chlist/fields/pids.h"
#include "chlist/position.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

using row = const service_row &;
using record = channel_st;

constexpr word no_or_yes[] = {{"yes", 1}, {"no", 0}, {"true", 1}, {"false", 0}};

// ETSI EN 300 468, table 87.
constexpr word service_types[] = {
    {"TV", SERVICE_TYPE_TV},
    {"radio", SERVICE_TYPE_RADIO},
    {"teletext", 0x03},
    {"NVOD reference", 0x04},
    {"NVOD time-shifted", 0x05},
    {"mosaic", 0x06},
    {"FM radio", 0x07},
    {"advanced codec radio", 0x0A},
    {"advanced codec mosaic", 0x0B},
    {"data", 0x0C},
    {"DVB MHP", 0x10},
    {"MPEG-2 HD TV", 0x11},
    {"advanced codec SD TV", 0x16},
    {"advanced codec SD NVOD time-shifted", 0x17},
    {"advanced codec SD NVOD reference", 0x18},
    {"HD TV", 0x19},
    {"HD NVOD time-shifted", 0x1A},
    {"HD NVOD reference", 0x1B},
    {"HEVC TV", 0x1F},
    {"HEVC UHD TV", 0x20},
};

// A channel list tells two polarisations apart: left-hand circular is filed as horizontal, right-hand as vertical.
constexpr word polarisations[] = {{"H", 0}, {"V", 1}, {"L", 0}, {"R", 1}};

template <class Number>
constexpr value_range all_of(std::string_view text) {
  return {value_kind::number, std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max(), text};
}

constexpr value_range free_text = {value_kind::text, 0, 0, "a text"};
constexpr value_range several_texts = {value_kind::texts};
constexpr value_range byte = all_of<std::uint8_t>("0 to 255");
constexpr value_range id16 = all_of<std::uint16_t>("0 to 65535");
constexpr value_range signed16 = all_of<std::int16_t>("-32768 to 32767");
constexpr value_range frequency_khz = {value_kind::number, 1, std::numeric_limits<std::uint32_t>::max(),
                                       "1 to 4294967295"};
constexpr value_range position_in_view = {value_kind::number, 1, MAX_CHANNEL, "1 to 5000"};
static_assert(MAX_CHANNEL == 5000);
constexpr value_range pid = {value_kind::number, 0, largest_pid, "0 to 8191, or none", unset_pid};
constexpr value_range component_tag = {value_kind::number, 0, 255, "0 to 255, or none", unset_tag};
constexpr value_range yes_or_no = {value_kind::yes_or_no, 0, 1, "yes or no", {}, no_or_yes};
constexpr value_range type_by_name = {value_kind::named, 0,      255, "a name as TV, radio or HD TV, or 0 to 255", {},
                                      service_types,     "type "};
constexpr value_range type_by_number = {value_kind::number, 0, 255, "0 to 255, or a name as TV, radio or HD TV", {},
                                        service_types};
constexpr value_range letters_of_polarisation = {value_kind::named, 0, 255, "H, V or 0 to 255", {}, polarisations};

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

template <auto Member, const value_range &Values>
json of_identity(row shown) {
  return shown.service != nullptr || shown.entry != nullptr
             ? shown_value(Values, static_cast<std::int64_t>(shown.id().*Member))
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
    {"position", "position", "place in the view, from 1", owner::entry, position_in_view, position},
    {"number", "number", "channel number", owner::entry, signed16, of_number<&channel_number::major>},
    {"minor", "minor", "minor channel number", owner::entry, signed16, of_number<&channel_number::minor>},
    {"name", "name", "name of the service", owner::service, free_text, of_text<&service::name>, nullptr,
     &service::name},
    {"short_name", "short name", "second name of the service", owner::service, free_text, of_text<&service::short_name>,
     nullptr, &service::short_name},
    {"name_table", "name table", "character table of the name", owner::service, free_text,
     of_text_if_any<&service::name_table>},
    {"short_name_table", "short name table", "character table of the second name", owner::service, free_text,
     of_text_if_any<&service::short_name_table>},
    {"type", "type", "service type by name", owner::service, type_by_name,
     of_record<&record::service_type, type_by_name>, set_record<&record::service_type>},
    {"provider", "provider", "name of the provider", owner::derived, free_text, of_text_if_any<&service::provider>,
     nullptr, &service::provider},
    {"genre", "genre", "name of the genre", owner::derived, free_text, of_text_if_any<&service::genre>, nullptr,
     &service::genre},
    {"country", "country", "name of the country", owner::derived, free_text, of_text_if_any<&service::country>, nullptr,
     &service::country},
    {"favourites", "favourites", "favourite groups that hold the service", owner::derived, several_texts, favourites},
    {"network_name", "network name", "name of the network", owner::derived, free_text, of_text_if_any<&service::source>,
     nullptr, &service::source},
    {"net_index", "net", "network index", owner::identity, byte, of_identity<&id::net_index, byte>,
     set_record<&record::net_index>},
    {"network_id", "network", "original network id", owner::identity, id16, of_identity<&id::network_id, id16>,
     set_record<&record::network_id>},
    {"ts_id", "ts", "transport stream id", owner::identity, id16, of_identity<&id::ts_id, id16>,
     set_record<&record::ts_id>},
    {"frequency", "frequency", "frequency of the transponder in kHz", owner::identity, frequency_khz,
     of_identity<&id::frequency, frequency_khz>, set_record<&record::frequency>},
    {"polarisation", "pol", "polarisation, H or V", owner::identity, letters_of_polarisation,
     of_identity<&id::polarisation, letters_of_polarisation>, set_record<&record::polarisation>},
    {"service_id", "service", "service id", owner::identity, id16, of_identity<&id::service_id, id16>,
     set_record<&record::service_id>},
    {"pmt_pid", "PMT PID", "PID of the program map table", owner::service, pid, of_record<&record::pmt_pid, pid>,
     set_record<&record::pmt_pid>},
    {"pcr_pid", "PCR PID", "PID of the clock reference", owner::service, pid, of_record<&record::pcr_pid, pid>,
     set_record<&record::pcr_pid>},
    {"video_pid", "video PID", "PID of the video", owner::service, pid, of_record<&record::video_pid, pid>,
     set_record<&record::video_pid>},
    {"video_tag", "video tag", "component tag of the video", owner::service, component_tag,
     of_record<&record::video_tag, component_tag>, set_record<&record::video_tag>},
    {"video_ecm_pid", "ECM PID", "PID of the video's entitlement control messages", owner::service, pid,
     of_record<&record::video_ecm_pid, pid>, set_record<&record::video_ecm_pid>},
    {"audio_pid", "audio PID", "PID of the audio", owner::service, pid, of_record<&record::audio_pid, pid>,
     set_record<&record::audio_pid>},
    {"audio_tag", "audio tag", "component tag of the audio", owner::service, component_tag,
     of_record<&record::audio_tag, component_tag>, set_record<&record::audio_tag>},
    {"locked", "locked", "the service is locked", owner::service, yes_or_no, of_flag<CHANNEL_FLAG_LOCKED>,
     set_flag<CHANNEL_FLAG_LOCKED>},
    {"skipped", "skipped", "passed over when zapping", owner::service, yes_or_no, of_flag<CHANNEL_FLAG_SKIP>,
     set_flag<CHANNEL_FLAG_SKIP>},
    {"scrambled", "scrambled", "not free to air", owner::service, yes_or_no, of_flag<CHANNEL_FLAG_FTA>,
     set_flag<CHANNEL_FLAG_FTA>},
    {"data", "data", "carries the DSM-CC data service", owner::service, yes_or_no, of_flag<CHANNEL_FLAG_DSMCC>,
     set_flag<CHANNEL_FLAG_DSMCC>},
    {"flags", "flags", "the byte of all flags", owner::service, byte, of_record<&record::flag, byte>,
     set_record<&record::flag>},
    {"service_type", "type id", "service type as a number", owner::service, type_by_number,
     of_record<&record::service_type, type_by_number>, set_record<&record::service_type>},
    {"source_type", "source", "where the service is received from", owner::service, byte,
     of_record<&record::source_type, byte>, set_record<&record::source_type>},
    {"provider_id", "provider id", "id of the provider", owner::service, signed16,
     of_record<&record::provider_id, signed16>},
    {"genre_id", "genre id", "id of the genre", owner::service, signed16, of_record<&record::genre_id, signed16>},
    {"country_id", "country id", "id of the country", owner::service, signed16,
     of_record<&record::country_id, signed16>},
    {"order_key", "order key", "key of the user's own order", owner::service, signed16,
     of_record<&record::user_order_key, signed16>, set_record<&record::user_order_key>},
    {"tag", "tag", "tag of the entry", owner::entry, byte, of_entry<&line_up_entry::tag>},
    {"favourite_key", "favourite key", "position key of the entry in a favourite group", owner::entry, byte,
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

std::string polarisation_text(std::uint8_t polarisation) {
  return text_of_value(shown_value(letters_of_polarisation, polarisation));
}

std::int64_t number_for(const field &which, std::string_view text) {
  if (const auto number = number_from(which.values, text)) {
    return *number;
  }
  throw std::runtime_error(fmt::format("{}={}: VALUE is {}", which.name, shown(text), which.values.text));
}

void set_field(line_up_service &service, const field &which, std::string_view text) {
  if (which.text != nullptr) {
    service.*which.text = text;
  } else {
    which.set_number(service, number_for(which, text));
  }
}

}  // namespace chlist
