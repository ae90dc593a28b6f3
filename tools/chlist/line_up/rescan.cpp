// Each way of finding a service goes over what the ways before it left.
#include "chlist/line_up/rescan.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <tuple>
#include <utility>

#include "chlist/line_up/pairing.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr std::array<std::string_view, 3> ways = {"identity", "ids", "name"};

// The services of both lists that have one key.
struct alike {
  std::vector<std::size_t> before;
  std::vector<std::size_t> after;
};

class search {
 public:
  search(const line_up &before, const line_up &after) : before_(before), after_(after) {}

  rescan made() {
    pairing same = pair_services(before_, after_);
    for (const auto &[was, is] : same.both) {
      made_.found.push_back({was, is, found_by::identity});
    }
    made_.gone = std::move(same.removed);
    made_.added = std::move(same.added);
    find(found_by::ids, [](const line_up_service &service) {
      return std::tuple{service.fields.net_index, service.fields.network_id, service.fields.service_id};
    });
    find(found_by::name, [](const line_up_service &service) {
      return std::tuple{service.fields.net_index, service.fields.service_type, folded(service.name)};
    });
    std::ranges::sort(made_.found, {}, &kept_service::after);
    return std::move(made_);
  }

 private:
  template <class KeyOf>
  void find(found_by by, const KeyOf &key_of) {
    std::map<decltype(key_of(line_up_service{})), alike> services;
    for (const std::size_t place : made_.gone) {
      services[key_of(before_.services[place])].before.push_back(place);
    }
    for (const std::size_t place : made_.added) {
      services[key_of(after_.services[place])].after.push_back(place);
    }
    for (const auto &[key, each] : services) {
      judge(by, each);
    }
    forget_found();
  }

  void judge(found_by by, const alike &services) {
    if (services.before.empty() || services.after.empty() || (by == found_by::name && is_nameless(services))) {
      return;
    }
    const bool is_one = services.before.size() == 1 && services.after.size() == 1;
    if (is_one && have_same_name(services.before.front(), services.after.front())) {
      made_.found.push_back({services.before.front(), services.after.front(), by});
      return;
    }
    for (const std::size_t place : services.before) {
      doubt(place, services.after);
    }
  }

  [[nodiscard]] bool is_nameless(const alike &services) const {
    return before_.services[services.before.front()].name.empty();
  }

  [[nodiscard]] bool have_same_name(std::size_t was, std::size_t is) const {
    const std::string &before = before_.services[was].name;
    const std::string &after = after_.services[is].name;
    return before.empty() || after.empty() || folded(before) == folded(after);
  }

  // What another way finds is in doubt no more.
  void doubt(std::size_t place, const std::vector<std::size_t> &candidates) {
    const auto known = std::ranges::find(made_.doubtful, place, &doubtful_service::before);
    if (known == made_.doubtful.end()) {
      made_.doubtful.push_back({place, candidates});
      return;
    }
    for (const std::size_t candidate : candidates) {
      if (std::ranges::find(known->candidates, candidate) == known->candidates.end()) {
        known->candidates.push_back(candidate);
      }
    }
  }

  void forget_found() {
    std::vector<bool> was_found(before_.services.size(), false);
    std::vector<bool> is_found(after_.services.size(), false);
    for (const kept_service &each : made_.found) {
      was_found[each.before] = true;
      is_found[each.after] = true;
    }
    std::erase_if(made_.gone, [&](std::size_t place) { return was_found[place]; });
    std::erase_if(made_.added, [&](std::size_t place) { return is_found[place]; });
    for (doubtful_service &each : made_.doubtful) {
      std::erase_if(each.candidates, [&](std::size_t place) { return is_found[place]; });
    }
    std::erase_if(made_.doubtful,
                  [&](const doubtful_service &each) { return was_found[each.before] || each.candidates.empty(); });
  }

  const line_up &before_;
  const line_up &after_;
  rescan made_;
};

}  // namespace

std::string_view text_of(found_by by) { return ways[static_cast<std::size_t>(by)]; }

rescan find_again(const line_up &before, const line_up &after) { return search(before, after).made(); }

}  // namespace chlist
