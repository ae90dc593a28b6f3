// One table: whoever adds a field adds a row.
#include "chlist/edit/set_fields.h"

#include <channel/flags.h>
#include <channel/groups.h>
#include <channel/providers.h>
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>

#include "channel/store/group_table.h"
#include "chlist/closest.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/report.h"
#include "chlist/service/names.h"
#include "chlist/service/pids.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

// A number that a word stands for: "none", "tv".
struct word {
  std::string_view text;
  std::int64_t value;
};

// What a value may be.
struct range {
  std::int64_t least;
  std::int64_t most;
  std::span<const word> words;
  std::string_view text;  // as the help and errors have it
};

struct field {
  std::string_view name;
  const range *values;  // null: a text
  void (*set_number)(edited_service &service, std::int64_t value);
  void (*set_text)(edited_service &service, std::string_view value);
  std::string_view text_range = {};
};

constexpr word no_pid[] = {{"none", unset_pid}};
constexpr word no_tag[] = {{"none", unset_tag}};
constexpr word switches[] = {{"yes", 1}, {"no", 0}};
constexpr word service_types[] = {{"tv", SERVICE_TYPE_TV}, {"radio", SERVICE_TYPE_RADIO}};
constexpr word polarisations[] = {{"H", 0}, {"V", 1}};

constexpr range byte = {0, 255, {}, "0 to 255"};
constexpr range id = {0, 65'535, {}, "0 to 65535"};
constexpr range pid = {0, largest_pid, no_pid, "0 to 8191, or none"};
constexpr range tag = {0, 255, no_tag, "0 to 255, or none"};
constexpr range yes_or_no = {0, -1, switches, "yes or no"};
constexpr range type = {0, 255, service_types, "0 to 255, tv or radio"};
constexpr range frequency = {1, 4'294'967'295, {}, "1 to 4294967295"};
constexpr range polarisation = {0, 255, polarisations, "H, V or 0 to 255"};
constexpr range order_key = {-32'768, 32'767, {}, "-32768 to 32767"};

template <class Record, class Field>
Field type_of_field(Field Record::*);

template <auto Member>
void in_record(edited_service &service, std::int64_t value) {
  service.record.*Member = static_cast<decltype(type_of_field(Member))>(value);
}

template <auto Member>
void in_identity(edited_service &service, std::int64_t value) {
  service.id.*Member = static_cast<decltype(type_of_field(Member))>(value);
}

void apply_flags(const channel_st &service, std::uint8_t bits, bool set) {
  const channel::identity found = channel::identity_of(service);
  set_channel_flag(found.net_index, found.network_id, found.ts_id, found.frequency, found.service_id,
                   found.polarisation, bits, set ? 1 : 0);
}

template <std::uint8_t Bits>
void in_flag(edited_service &service, std::int64_t value) {
  apply_flags(service.record, Bits, value != 0);
}

void in_all_flags(edited_service &service, std::int64_t value) {
  const auto bits = static_cast<std::uint8_t>(value);
  apply_flags(service.record, bits, true);
  apply_flags(service.record, static_cast<std::uint8_t>(~bits), false);
}

// Ids of groups begin at 0.
constexpr std::int16_t no_group = -1;

std::optional<std::int16_t> group_id_from(std::string_view text) {
  std::int16_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

// By id when the table has it, else by name.
const group_st *find_group(std::int8_t kind, std::string_view value) {
  if (const auto wanted = group_id_from(value)) {
    if (const group_st *group = get_group_st_by_id(kind, *wanted)) {
      return group;
    }
  }
  std::uint16_t count = 0;
  const group_st *groups = get_group_list(kind, &count);
  const std::span<const group_st> table(groups, groups == nullptr ? 0 : count);
  const auto found =
      std::ranges::find_if(table, [&](const group_st &group) { return is_same_name(name_in(group.name), value); });
  return found == table.end() ? nullptr : &*found;
}

// A number is an id that is not there.
std::int16_t new_provider(std::string_view value) {
  if (group_id_from(value)) {
    throw std::runtime_error(fmt::format("provider={}: the list has no provider with this id", shown(value)));
  }
  const std::string_view name = cut_utf8(value, longest_group_name);
  group_st added = {};
  added.name_len = static_cast<std::int16_t>(name.size());
  std::ranges::copy(name, added.name);
  const int given = name.size() == value.size() ? add_provider_info(added) : -1;
  if (given < 0) {
    throw std::runtime_error(
        fmt::format("provider={}: the list has no such provider, and takes none anew: a name has at most {} bytes, the "
                    "table {} providers",
                    shown(value), longest_group_name, +MAX_PROVIDER));
  }
  return static_cast<std::int16_t>(given);
}

void put_group(edited_service &service, std::int8_t kind, std::int16_t group) {
  virtual_channel_st entry = {};
  entry.rch = &service.record;
  set_group_id(kind, &entry, group);
}

void in_provider(edited_service &service, std::string_view value) {
  const group_st *group = find_group(GROUP_PROVIDER, value);
  if (value == "none") {
    put_group(service, GROUP_PROVIDER, no_group);
  } else {
    put_group(service, GROUP_PROVIDER, group != nullptr ? group->id : new_provider(value));
  }
}

template <std::int8_t Kind>
void in_group(edited_service &service, std::string_view value) {
  const group_st *group = find_group(Kind, value);
  if (group == nullptr && value != "none") {
    throw std::runtime_error(fmt::format(
        "{}={}: the list has no such {}; VALUE is a name or an id of its table, or none",
        Kind == GROUP_GENRE ? "genre" : "country", shown(value), Kind == GROUP_GENRE ? "genre" : "country"));
  }
  put_group(service, Kind, group == nullptr ? no_group : group->id);
}

constexpr std::string_view of_table = "a name or an id of the list's table, or none";

constexpr field fields[] = {
    {"provider", nullptr, nullptr, in_provider, "a name or an id of the list's table, a new name, or none"},
    {"genre", nullptr, nullptr, in_group<GROUP_GENRE>, of_table},
    {"country", nullptr, nullptr, in_group<GROUP_COUNTRY>, of_table},
    {"service_type", &type, in_record<&channel_st::service_type>, nullptr},
    {"source_type", &byte, in_record<&channel_st::source_type>, nullptr},
    {"locked", &yes_or_no, in_flag<CHANNEL_FLAG_LOCKED>, nullptr},
    {"skipped", &yes_or_no, in_flag<CHANNEL_FLAG_SKIP>, nullptr},
    {"scrambled", &yes_or_no, in_flag<CHANNEL_FLAG_FTA>, nullptr},
    {"data", &yes_or_no, in_flag<CHANNEL_FLAG_DSMCC>, nullptr},
    {"flags", &byte, in_all_flags, nullptr},
    {"order_key", &order_key, in_record<&channel_st::user_order_key>, nullptr},
    {"pmt_pid", &pid, in_record<&channel_st::pmt_pid>, nullptr},
    {"pcr_pid", &pid, in_record<&channel_st::pcr_pid>, nullptr},
    {"video_pid", &pid, in_record<&channel_st::video_pid>, nullptr},
    {"video_ecm_pid", &pid, in_record<&channel_st::video_ecm_pid>, nullptr},
    {"video_tag", &tag, in_record<&channel_st::video_tag>, nullptr},
    {"audio_pid", &pid, in_record<&channel_st::audio_pid>, nullptr},
    {"audio_tag", &tag, in_record<&channel_st::audio_tag>, nullptr},
    {"net_index", &byte, in_identity<&channel::identity::net_index>, nullptr},
    {"network_id", &id, in_identity<&channel::identity::network_id>, nullptr},
    {"ts_id", &id, in_identity<&channel::identity::ts_id>, nullptr},
    {"frequency", &frequency, in_identity<&channel::identity::frequency>, nullptr},
    {"polarisation", &polarisation, in_identity<&channel::identity::polarisation>, nullptr},
    {"service_id", &id, in_identity<&channel::identity::service_id>, nullptr},
};

std::string_view range_of(const field &which) {
  return which.values != nullptr ? which.values->text : which.text_range;
}

std::optional<std::int64_t> value_from(std::string_view text, const range &values) {
  if (const auto found = std::ranges::find(values.words, text, &word::text); found != values.words.end()) {
    return found->value;
  }
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool is_whole = error == std::errc() && end == text.data() + text.size();
  return is_whole && value >= values.least && value <= values.most ? std::optional(value) : std::nullopt;
}

const field &field_of(std::string_view assignment, std::size_t equals) {
  const std::string_view name = assignment.substr(0, equals);
  const auto *found = std::ranges::find(fields, name, &field::name);
  if (equals == std::string_view::npos) {
    throw std::runtime_error(fmt::format("{} sets no field: it takes FIELD=VALUE", shown(assignment)));
  }
  if (found == std::end(fields)) {
    throw std::runtime_error(unknown_name("field", name, words_of(terms_of_fields())));
  }
  return *found;
}

[[noreturn]] void refuse(const field &which, std::string_view value) {
  throw std::runtime_error(fmt::format("{}={}: VALUE is {}", which.name, shown(value), range_of(which)));
}

}  // namespace

void set_field(edited_service &service, std::string_view assignment) {
  const std::size_t equals = assignment.find('=');
  const field &which = field_of(assignment, equals);
  const std::string_view text = assignment.substr(equals + 1);
  if (which.values == nullptr) {
    if (text.empty()) {
      refuse(which, text);
    }
    which.set_text(service, text);
    return;
  }
  const std::optional<std::int64_t> value = value_from(text, *which.values);
  if (!value) {
    refuse(which, text);
  }
  which.set_number(service, *value);
}

std::vector<term> terms_of_fields() {
  std::vector<term> terms;
  for (const field &each : fields) {
    terms.push_back({std::string(each.name), std::string(range_of(each))});
  }
  return terms;
}

}  // namespace chlist
