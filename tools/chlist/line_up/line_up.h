// A channel list of any format: services, the views and favourite groups that show them, groups, networks, transponders
// and settings. Readers of formats give one, writers take one; tables, differences and pages are made of one. It stands
// beside the channel list in memory and knows nothing of it.
#pragma once

#include <channel/records.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "channel/identity.h"
#include "channel/store/hierarchy.h"
#include "chlist/line_up/tuning.h"

namespace chlist {

// The largest channel number that a list can show.
inline constexpr int largest_channel_number = 32767;

// A place in one of the arrays of a line-up that leads to nothing.
inline constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

struct channel_number {
  int major = 0;
  int minor = 0;
  bool operator==(const channel_number &) const = default;
};

// One service. Texts are whole here, however long; the record holds everything else that a channel list keeps of a
// service, the ids of its groups included, but no names, unless their bytes are to stay as they were broadcast.
struct line_up_service {
  std::size_t line = 0;  // where it stands in the source, 0 when that has no lines
  std::string name;
  std::string short_name;
  std::string name_table;  // the character table in which the source has the name, where it tells
  std::string short_name_table;
  std::string provider;
  std::string genre;
  std::string country;
  std::string source;  // where it is received from, "S19.2E", "C" or "T"; the network's name in a channel list
  channel_st fields = channel::unset_service;  // frequency in kHz; net_index 0: numbered by source when it is filed
  std::size_t transponder = nowhere;           // that it stands below, in sources that tell
  // How ALL shows it, in line-ups whose services come in the order of ALL: those of formats.
  std::optional<channel_number> number;  // none: the next one that is free
  int lowest_number = 1;                 // which is not below this
  bool is_listed = true;                 // services that are not keep no number
  further_facts further;                 // what a channel list does not keep

  [[nodiscard]] bool has_flag(int bit) const { return (fields.flag & bit) != 0; }
  void set_flag(int bit, bool set) {
    fields.flag = static_cast<std::uint8_t>(set ? fields.flag | bit : fields.flag & ~bit);
  }
  [[nodiscard]] channel::identity id() const { return channel::identity_of(fields); }
};

// A service where a view or a favourite group shows it.
struct line_up_entry {
  std::size_t service = nowhere;  // among the services; nowhere: its identity leads to none
  channel_number number;          // 0 in a favourite group of a format: the service's own
  int tag = 0;
  int favourite_key = 0;
  channel::identity id = {};  // what an entry of a channel list looks for
};

enum class view_kind : std::uint8_t { all, tv, radio, promotion, user };
inline constexpr std::size_t view_kinds = 5;

// What a view is, beside its entries.
struct view_facts {
  view_kind kind;
  std::string_view name;   // "ALL", "TV", "radio", "promotion" or "USER"
  std::string_view typed;  // on a command line: "all", "promo"
  std::string_view about;
  std::int8_t code;  // the library's
  std::size_t capacity;
};

// In the order in which people are told of them.
std::span<const view_facts> all_views();
const view_facts &facts_of(view_kind kind);
std::string_view name_of(view_kind kind);

struct line_up_view {
  std::vector<line_up_entry> entries;
  int count = 0;  // as a channel file has it, which may be more than it has entries, or less than none
};

struct favourite_group {
  std::string name;
  std::vector<line_up_entry> entries;
  int id = 0;
  int count = 0;           // as that of a view
  bool is_counted = true;  // false: a channel file has entries here, and no group
  std::string origin{};    // of formats: what of the source it was made of, in the format's own words
};

struct line_up_group {
  int id = 0;
  std::string name;
};

enum class group_kind : std::uint8_t { provider, genre, country };
inline constexpr std::size_t group_kinds = 3;

// What the groups of a kind are, beside their names. A service has one of each kind, or none.
struct group_facts {
  group_kind kind;
  std::string_view one;   // "provider"
  std::string_view many;  // "providers"
  std::int8_t code;       // the library's
  std::size_t capacity;
  std::int16_t none;  // the id in services without a group; those of providers begin at 0
  std::int16_t channel_st::*id;
  std::string line_up_service::*name;
};

// By kind.
std::span<const group_facts> all_group_kinds();
const group_facts &facts_of(group_kind kind);

struct line_up_groups {
  std::vector<line_up_group> groups;
  int count = 0;  // as that of a view
};

struct line_up_network {
  std::uint8_t net_index = 0;
  std::uint16_t network_id = 0;
  std::string name;
};

struct line_up_transponder {
  std::size_t network = nowhere;
  std::uint16_t ts_id = 0;
  std::uint32_t frequency = 0;  // kHz
  std::uint8_t polarisation = 0;
};

// What a receiver goes on with when it is switched on. Those of a list that was just made, unless they are said.
struct line_up_settings {
  int use_tuner = -1;
  int ch_type = 0;
  int bouquet_id = 0xFFFF;
  int current_view = VIEW_ALL;
  int group_kind = GROUP_ALL;
  int group_id = -1;
  int net_index = -1;
  int service_type = SERVICE_TYPE_TV;
};

// A line, or a service, that was left out, and why.
struct skipped_line {
  std::size_t line = 0;
  std::string reason;
};

struct line_up {
  std::vector<line_up_service> services;  // in the order of the source
  std::array<line_up_view, view_kinds> views;
  std::vector<favourite_group> favourites;
  int favourites_count = 0;                        // as that of a view
  std::array<line_up_groups, group_kinds> groups;  // by what services are grouped
  std::vector<line_up_network> networks;
  std::vector<line_up_transponder> transponders;
  line_up_settings settings;
  std::vector<skipped_line> skipped;

  [[nodiscard]] line_up_view &view(view_kind kind) { return views[static_cast<std::size_t>(kind)]; }
  [[nodiscard]] const line_up_view &view(view_kind kind) const { return views[static_cast<std::size_t>(kind)]; }
  [[nodiscard]] const line_up_groups &groups_of(group_kind kind) const {
    return groups[static_cast<std::size_t>(kind)];
  }
};

// A service as messages name it.
struct known_service {
  std::string name;
  channel::identity id = {};
};

inline known_service known_as(const line_up_service &service) { return {service.name, service.id()}; }

inline constexpr std::string_view favourites_view = "favourites";

struct view_name {
  std::string_view kind;  // what name_of() has, or favourites_view
  int group = -1;         // of favourites: its index among the groups
  std::string group_name = {};

  [[nodiscard]] bool is_favourites() const { return group >= 0; }
};

// "TV", "favourites 1 \"Films\"".
std::string label_of(const view_name &view);

struct named_view {
  view_name name;
  const std::vector<line_up_entry> &entries;
  int count = 0;             // as a channel file has it
  std::size_t capacity = 0;  // in a channel file
};

// The views, and the favourite groups behind them.
std::vector<named_view> views_of(const line_up &list);

// A service as a view shows it; a service that is looked at by itself has no entry, and an entry whose identity leads
// to nothing no service.
struct service_row {
  const line_up *list = nullptr;
  const line_up_service *service = nullptr;
  const line_up_entry *entry = nullptr;
  std::size_t index = 0;  // of the entry in its view

  // The identity of the service, or of the entry when there is no service.
  [[nodiscard]] channel::identity id() const { return service != nullptr ? service->id() : entry->id; }
};

}  // namespace chlist
