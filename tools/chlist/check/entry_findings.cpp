// The entries of the views, by the rules with which the library finds, compares and numbers them.
#include <fmt/format.h>

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "channel/store/group_table.h"
#include "channel/store/service_index.h"
#include "chlist/check/rules.h"
#include "chlist/fields/described.h"
#include "chlist/line_up/line_up.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/position.h"

namespace chlist {
namespace {

// One view, and where its entries stand in the file.
struct checked_view {
  const file_records &framed;
  const list_view &view;
  finding_list &findings;

  [[nodiscard]] std::string describe_entry(std::size_t index) const {
    const virtual_channel_st &entry = view.slots[index];
    return describe(placed_entry{view.name, index, entry.major_ch_num, channel::identity_of(entry)});
  }
  void add(std::size_t index, severity level, std::string_view kind, std::string what, std::string consequence) const {
    findings.push_back({framed.offset_of(&view.slots[index]), level, kind, std::move(what), std::move(consequence)});
  }
};

// What entries of one service have in common, whatever frequency and tag they have.
std::uint64_t key_of(const virtual_channel_st &entry) {
  return std::uint64_t{entry.service_id} << 48U | std::uint64_t{entry.ts_id} << 32U |
         std::uint64_t{entry.network_id} << 16U | std::uint64_t{entry.net_index} << 8U | entry.polarisation;
}

void check_identities(const checked_view &checked) {
  std::unordered_map<std::uint64_t, std::vector<std::size_t>> seen;
  const auto entries = checked.view.entries();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    std::vector<std::size_t> &alike = seen[key_of(entries[i])];
    for (const std::size_t earlier : alike) {
      if (channel::same_entry(entries[earlier], channel::tagged_identity_of(entries[i]))) {
        checked.add(i, severity::warning, "duplicate-entry",
                    fmt::format("{} is the same as position {}", checked.describe_entry(i), position_of(earlier)),
                    "searches by identity stop at the first one; the service is listed twice");
        break;
      }
    }
    // A run of equal entries is compared with the first few.
    if (constexpr std::size_t enough = 8; alike.size() < enough) {
      alike.push_back(i);
    }
  }
}

void check_numbers(const checked_view &checked) {
  std::unordered_map<std::uint32_t, std::size_t> first;
  const auto entries = checked.view.entries();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const auto major = static_cast<std::uint16_t>(entries[i].major_ch_num);
    const auto minor = static_cast<std::uint16_t>(entries[i].minor_ch_num);
    const auto [found, is_new] = first.emplace(std::uint32_t{major} << 16U | minor, i);
    if (!is_new) {
      checked.add(
          i, severity::warning, "duplicate-number",
          fmt::format("{} has the number of position {}", checked.describe_entry(i), position_of(found->second)),
          "a number that is keyed in leads to the first one; this one is reached by zapping only");
    }
  }
}

void check_position_keys(const checked_view &checked) {
  if (!checked.view.name.is_favourites()) {
    return;
  }
  std::unordered_set<int> seen;
  const auto entries = checked.view.entries();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (!seen.insert(entries[i].favorite_id).second) {
      checked.add(i, severity::note, "duplicate-position-key",
                  fmt::format("the {} view, position {}: favourite id {} occurs before", label_of(checked.view.name),
                              position_of(i), entries[i].favorite_id),
                  "when the group is selected its entries get the ids 0, 1, 2, ... in their present order");
      return;
    }
  }
}

using service_set = std::unordered_set<const channel_st *>;

// No menu shows favourite groups beyond those that are counted.
bool is_shown(const checked_view &checked) {
  return !checked.view.name.is_favourites() ||
         checked.view.name.group < channel::counted_in_low_byte(checked.framed.list().favorite_group_num);
}

void check_links(const checked_view &checked, channel::service_index &index, service_set &listed) {
  const auto entries = checked.view.entries();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (const channel_st *service = index.look_up(channel::identity_of(entries[i])); service == nullptr) {
      checked.add(i, severity::error, "unresolved-entry",
                  fmt::format("{} resolves to no service", checked.describe_entry(i)),
                  "a load keeps it without a service, with an ERROR line: it shows up without a name and cannot be "
                  "tuned to");
    } else if (is_shown(checked)) {
      listed.insert(service);
    }
  }
}

void check_listing(const file_records &framed, const service_set &listed, finding_list &findings) {
  for (const framed_record<channel_st> &service : framed.services()) {
    if (!listed.contains(service.record)) {
      findings.push_back({service.offset, severity::warning, "service-in-no-view",
                          fmt::format("service {} is in no view", describe(known_as(*service.record))),
                          "nobody can select it; it stays in the file until a channel search does not find it"});
    }
  }
}

}  // namespace

void check_entries(const file_records &framed, finding_list &findings) {
  channel::service_index index(framed.list());
  service_set listed;
  for (const list_view &view : views_of(framed.list())) {
    const checked_view checked{framed, view, findings};
    check_links(checked, index, listed);
    check_identities(checked);
    check_numbers(checked);
    check_position_keys(checked);
  }
  check_listing(framed, listed, findings);
}

}  // namespace chlist
