#include "invariants.h"

#include <channel/channel.h>
#include <strings.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <set>
#include <span>
#include <unordered_set>

namespace test_support {
namespace {

using std::to_string;
using services_found = std::unordered_set<const channel_st *>;

constexpr std::array<int, 6> plain_capacities = {MAX_CHANNEL, MAX_TV_CHANNEL, MAX_RADIO_CHANNEL,
                                                 MAX_CHANNEL, MAX_CHANNEL,    MAX_PROMO_CHANNEL};

struct view_parts {
  int code;
  std::span<virtual_channel_st> array;
  const std::int16_t *count;

  [[nodiscard]] std::span<virtual_channel_st> used() const { return array.first(static_cast<std::size_t>(*count)); }
  [[nodiscard]] std::span<virtual_channel_st> behind() const { return array.subspan(static_cast<std::size_t>(*count)); }
};

view_parts parts_of(int code) {
  const auto type = static_cast<std::int8_t>(code);
  const int capacity = code < VIEW_FAVOURITE ? plain_capacities[static_cast<std::size_t>(code)] : MAX_FAV_NUM;
  return {code, {get_virtual_channel_st(type), static_cast<std::size_t>(capacity)}, get_virtual_channel_vnumber(type)};
}

// The first complaint that a rule has about one of the 26 views.
template <class Rule>
std::string first_complaint(const Rule &rule) {
  for (int code = VIEW_ALL; code <= VIEW_FAVOURITE_LAST; ++code) {
    if (code <= VIEW_PROMOTION || code >= VIEW_FAVOURITE) {
      if (const std::string complaint = rule(parts_of(code)); !complaint.empty()) {
        return "view " + to_string(code) + ": " + complaint;
      }
    }
  }
  return {};
}

template <class Record>
bool all_zero(std::span<Record> records) {
  const auto bytes = std::as_bytes(records);
  return bytes.empty() ||
         (bytes[0] == std::byte{0} && std::memcmp(bytes.data(), bytes.data() + 1, bytes.size() - 1) == 0);
}

// Visits the records of a list; false when its links do not agree. A head of zeros is empty.
template <class Record, class Action>
bool walk(const list_head &head, const Action &action) {
  if (head.next == nullptr) {
    return head.prev == nullptr;
  }
  for (const list_head *node = &head;;) {
    if (node->next == nullptr || node->next->prev != node) {
      return false;
    }
    node = node->next;
    if (node == &head) {
      return true;
    }
    action(*reinterpret_cast<const Record *>(node));
  }
}

// Walks the hierarchy, collecting its channels.
class hierarchy_check {
 public:
  explicit hierarchy_check(bool counts_promised) : counts_promised_(counts_promised) {
    const channel_list_st &list = *get_channel_list();
    int networks = 0;
    expect_linked(walk<network_ch_st>(list.network_list,
                                      [&](const network_ch_st &network) {
                                        ++networks;
                                        check(network);
                                      }),
                  "networks");
    expect_count(networks, list.network_num, "networks");
  }

  services_found services;
  std::string complaint;

 private:
  void check(const network_ch_st &network) {
    int transponders = 0;
    expect_linked(walk<tp_ch_st>(network.tp_list,
                                 [&](const tp_ch_st &transponder) {
                                   ++transponders;
                                   check(transponder);
                                 }),
                  "transponders");
    expect_count(transponders, network.tp_num, "transponders");
  }
  void check(const tp_ch_st &transponder) {
    int found = 0;
    expect_linked(walk<channel_st>(transponder.rch_list,
                                   [&](const channel_st &service) {
                                     ++found;
                                     services.insert(&service);
                                   }),
                  "channels");
    expect_count(found, transponder.rch_num, "channels");
  }
  void expect_linked(bool linked, const char *what) {
    if (!linked) {
      complaint = std::string("a list of ") + what + " is badly linked";
    }
  }
  void expect_count(int length, int count, const char *what) {
    if (counts_promised_ && length != count) {
      complaint = to_string(length) + " " + what + " are counted as " + to_string(count);
    }
  }

  bool counts_promised_;
};

std::string check_counts() {
  const channel_list_st &list = *get_channel_list();
  // Genres and countries count what the host stored with their table.
  const std::array<std::array<int, 2>, 2> tables = {
      {{list.provider_num, MAX_PROVIDER}, {list.favorite_group_num, MAX_FAV}}};
  for (const auto &[count, capacity] : tables) {
    if (count < 0 || count > capacity) {
      return "a table of " + to_string(capacity) + " groups counts " + to_string(count);
    }
  }
  if (const int count = get_return_channel_num(); count < 0 || count > MAX_RETURN_CHANNEL) {
    return "the history counts " + to_string(count);
  }
  return first_complaint([](const view_parts &view) -> std::string {
    return *view.count < 0 || *view.count > static_cast<int>(view.array.size()) ? "counts " + to_string(*view.count)
                                                                                : "";
  });
}

std::string check_pointers(const services_found &services) {
  const auto dangles = [&services](const virtual_channel_st &entry) {
    return entry.rch != nullptr && !services.contains(entry.rch);
  };
  const std::span history(get_return_channel(), MAX_RETURN_CHANNEL);
  if (std::ranges::any_of(history, [&](const return_channel_st &watched) { return dangles(watched.vch); })) {
    return "an entry of the history points to no channel of the hierarchy";
  }
  return first_complaint([&](const view_parts &view) -> std::string {
    return std::ranges::any_of(view.array, dangles) ? "an entry points to no channel of the hierarchy" : "";
  });
}

std::string check_current_view() {
  const channel_list_st &list = *get_channel_list();
  if (list.cur_vch == nullptr && list.cur_vnumber == nullptr) {
    return {};
  }
  const bool known = !first_complaint([&](const view_parts &view) -> std::string {
                        return view.array.data() == list.cur_vch && view.count == list.cur_vnumber ? "this one" : "";
                      }).empty();
  return known ? "" : "the current view is none of the views";
}

bool has_unique_ids(std::span<const group_st> groups, int limit) {
  std::set<int> ids;
  return std::ranges::all_of(
      groups, [&](const group_st &group) { return group.id >= 0 && group.id < limit && ids.insert(group.id).second; });
}

std::string check_groups() {
  const channel_list_st &list = *get_channel_list();
  const std::span providers = std::span(list.provider).first(static_cast<std::size_t>(list.provider_num));
  const auto is_before = [](const group_st &a, const group_st &b) {
    return strncasecmp(a.name, b.name, sizeof a.name) < 0;
  };
  if (!std::ranges::is_sorted(providers, is_before)) {
    return "the providers are not sorted";
  }
  if (!has_unique_ids(providers, MAX_PROVIDER)) {
    return "two providers share an id, or one is outside 0..499";
  }
  if (!all_zero(std::span(list.provider).subspan(providers.size()))) {
    return "a slot behind the providers is not zero";
  }
  const auto favourites = static_cast<std::size_t>(list.favorite_group_num);
  return has_unique_ids(std::span(list.favorite_group).first(favourites), MAX_FAV)
             ? ""
             : "two favourite groups share an id, or one is outside 0..19";
}

std::string check_zeros() {
  const channel_list_st &list = *get_channel_list();
  if (!all_zero(std::span(list.favorite_group).subspan(static_cast<std::size_t>(list.favorite_group_num)))) {
    return "a slot behind the favourite groups is not zero";
  }
  return first_complaint([](const view_parts &view) -> std::string {
    return all_zero(view.behind()) ? "" : "a slot behind its count is not zero";
  });
}

template <class Range, class Entry>
bool holds_twice(const Range &range, const Entry &entry_of) {
  for (auto first = range.begin(); first != range.end(); ++first) {
    if (std::any_of(std::next(first), range.end(),
                    [&](const auto &second) { return is_same_vchannel(&entry_of(*first), &entry_of(second)) == 1; })) {
      return true;
    }
  }
  return false;
}

std::string check_favourites() {
  return first_complaint([](const view_parts &view) -> std::string {
    const auto itself = [](const virtual_channel_st &entry) -> const virtual_channel_st & { return entry; };
    return view.code >= VIEW_FAVOURITE && holds_twice(view.used(), itself) ? "holds a channel twice" : "";
  });
}

std::string check_history() {
  const std::span history(get_return_channel(), static_cast<std::size_t>(get_return_channel_num()));
  const auto watched = [](const return_channel_st &entry) -> const virtual_channel_st & { return entry.vch; };
  return holds_twice(history, watched) ? "the history holds a channel twice" : "";
}

}  // namespace

std::string broken_invariant(const promises &kept) {
  const hierarchy_check hierarchy(kept.counts);
  std::string complaint = hierarchy.complaint;
  // Later checks read what earlier ones have found to be in order.
  const auto then = [&complaint](bool promised, const auto &check) {
    if (promised && complaint.empty()) {
      complaint = check();
    }
  };
  then(true, check_counts);
  then(true, [&hierarchy] { return check_pointers(hierarchy.services); });
  then(true, check_current_view);
  then(kept.well_kept_groups, check_groups);
  then(kept.zeros_behind_counts, check_zeros);
  then(kept.distinct_favourites, check_favourites);
  then(kept.distinct_history, check_history);
  return complaint;
}

}  // namespace test_support
