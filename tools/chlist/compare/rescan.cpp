// Each way of finding a service goes over what the ways before it left.
#include "chlist/compare/rescan.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <tuple>
#include <utility>

#include "chlist/compare/pairing.h"
#include "chlist/compare/quality.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr std::array<std::string_view, ways_to_find> ways = {"identity", "name", "ids", "name on another source",
                                                             "name without quality"};
constexpr std::size_t most_kept_candidates = 10;

using name_key = std::tuple<std::uint8_t, std::uint8_t, std::string>;

name_key name_key_of(const line_up_service &service) {
  return {service.fields.net_index, service.fields.service_type, folded(service.name)};
}

auto ids_key_of(const line_up_service &service) {
  return std::tuple{service.fields.net_index, service.fields.network_id, service.fields.service_id};
}

// How many services of a list have a name.
class name_counts {
 public:
  explicit name_counts(const line_up &list) {
    for (const line_up_service &service : list.services) {
      ++counts_[name_key_of(service)];
    }
  }

  [[nodiscard]] std::size_t of(const line_up_service &service) const {
    const auto found = counts_.find(name_key_of(service));
    return found != counts_.end() ? found->second : 0;
  }

 private:
  std::map<name_key, std::size_t> counts_;
};

// The services of both lists that have one key.
struct alike {
  std::vector<std::size_t> before;
  std::vector<std::size_t> after;
};

class service_search {
 public:
  service_search(const line_up &before, const line_up &after) : before_(before), after_(after) {}

  rescan found(search_reach reach) {
    find_by_identity();
    find(found_by::name, name_key_of);
    take_back_identities();
    find(found_by::ids, ids_key_of);
    if (reach >= search_reach::other_receiver) {
      find(found_by::name_elsewhere, [](const line_up_service &service) {
        return std::tuple{service.fields.service_type, folded(service.name)};
      });
    }
    if (reach >= search_reach::other_picture) {
      find(found_by::plain_name, [](const line_up_service &service) {
        return std::tuple{is_radio(service), plain_name(service.name)};
      });
    }
    std::ranges::sort(result_.found, {}, &kept_service::after);
    for (auto &[place, each] : doubtful_) {
      result_.doubtful.push_back(std::move(each));
    }
    return std::move(result_);
  }

 private:
  // Ids are given anew now and then: a name that stands elsewhere in the other list tells that it was so here.
  void find_by_identity() {
    pairing same = pair_services(before_, after_);
    result_.gone = std::move(same.removed);
    result_.added = std::move(same.added);
    const name_counts names_before(before_);
    const name_counts names_after(after_);
    for (const auto &[was, is] : same.both) {
      const line_up_service &before = before_.services[was];
      const line_up_service &after = after_.services[is];
      const bool is_other_name =
          !before.name.empty() && !after.name.empty() && name_key_of(before) != name_key_of(after);
      if (is_other_name && (names_after.of(before) == 1 || names_before.of(after) == 1)) {
        result_.gone.push_back(was);
        result_.added.push_back(is);
        set_aside_.push_back({was, is});
      } else {
        result_.found.push_back({was, is, found_by::identity});
      }
    }
    std::ranges::sort(result_.gone);
    std::ranges::sort(result_.added);
  }

  // What no name was found for is the same service after all, and called otherwise.
  void take_back_identities() {
    for (const auto &[was, is] : set_aside_) {
      if (std::ranges::binary_search(result_.gone, was) && std::ranges::binary_search(result_.added, is)) {
        result_.found.push_back({was, is, found_by::identity});
      }
    }
    forget_found();
  }

  template <class KeyOf>
  void find(found_by by, const KeyOf &key_of) {
    std::map<decltype(key_of(line_up_service{})), alike> services;
    for (const std::size_t place : result_.gone) {
      services[key_of(before_.services[place])].before.push_back(place);
    }
    for (const std::size_t place : result_.added) {
      services[key_of(after_.services[place])].after.push_back(place);
    }
    for (const auto &[key, each] : services) {
      judge(by, each);
    }
    forget_found();
  }

  void judge(found_by by, const alike &services) {
    if (services.before.empty() || services.after.empty() || (by != found_by::ids && is_nameless(services))) {
      return;
    }
    if (services.before.size() == 1 && services.after.size() == 1) {
      result_.found.push_back({services.before.front(), services.after.front(), by});
      return;
    }
    for (const std::size_t place : services.before) {
      doubt(place, services.after);
    }
  }

  [[nodiscard]] bool is_nameless(const alike &services) const {
    return before_.services[services.before.front()].name.empty();
  }

  void doubt(std::size_t place, const std::vector<std::size_t> &candidates) {
    const auto [known, is_new] = doubtful_.try_emplace(place, doubtful_service{place, candidates.size(), {}});
    if (is_new) {
      const std::size_t most = std::min(candidates.size(), most_kept_candidates);
      known->second.candidates.assign(candidates.begin(), candidates.begin() + static_cast<std::ptrdiff_t>(most));
    }
  }

  // What a later way finds is in doubt no more.
  void forget_found() {
    std::vector<bool> was_found(before_.services.size(), false);
    std::vector<bool> is_found(after_.services.size(), false);
    for (const kept_service &each : result_.found) {
      was_found[each.before] = true;
      is_found[each.after] = true;
    }
    std::erase_if(result_.gone, [&](std::size_t place) { return was_found[place]; });
    std::erase_if(result_.added, [&](std::size_t place) { return is_found[place]; });
    std::erase_if(doubtful_, [&](const auto &each) { return was_found[each.first]; });
  }

  const line_up &before_;
  const line_up &after_;
  rescan result_;
  std::vector<pairing::pair> set_aside_;  // of one identity, and with names that stand elsewhere
  std::map<std::size_t, doubtful_service> doubtful_;
};

}  // namespace

std::string_view text_of(found_by by) { return ways[static_cast<std::size_t>(by)]; }

rescan find_again(const line_up &before, const line_up &after, search_reach reach) {
  return service_search(before, after).found(reach);
}

}  // namespace chlist
