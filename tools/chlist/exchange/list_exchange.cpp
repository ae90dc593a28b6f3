// Brings a line-up into the order of ALL. What it leaves behind is counted here; what a line-up has no place for at all
// is counted in record_losses.cpp.
#include "chlist/exchange/list_exchange.h"

#include <algorithm>
#include <array>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "chlist/exchange/record_losses.h"
#include "chlist/line_up/list_line_up.h"

namespace chlist {
namespace {

// The ids of a kind of groups as services have them, and as an import numbers them: as they come up, behind the one
// that stands for none.
struct numbered_groups {
  group_kind kind;
  std::string line_up_service::*name;
  std::int16_t channel_st::*id;
  std::int16_t none;
};

constexpr std::array<numbered_groups, group_kinds> groups_of_services = {
    {{group_kind::provider, &line_up_service::provider, &channel_st::provider_id, -1},
     {group_kind::genre, &line_up_service::genre, &channel_st::genre_id, 0},
     {group_kind::country, &line_up_service::country, &channel_st::country_id, 0}}};

class exchange_order {
 public:
  exchange_order(line_up list, loss_counts &lost) : list_(std::move(list)), lost_(lost) {}

  line_up made() {
    number_services();
    order_services();
    take_favourites();
    count_views();
    count_groups();
    count_empty_records();
    return std::move(list_);
  }

 private:
  void number_services() {
    std::vector<bool> is_met(list_.services.size(), false);
    for (const line_up_entry &entry : list_.view(view_kind::all).entries) {
      lost_.add("tags of entries", entry.tag != 0 ? 1 : 0);
      if (entry.service == nowhere) {
        lost_.add("entries of the ALL view that show no service");
      } else if (is_met[entry.service]) {
        lost_.add("further entries of a service in the ALL view");
      } else {
        is_met[entry.service] = true;
        order_.push_back(entry.service);
        list_.services[entry.service].number = entry.number;
      }
    }
    for (std::size_t place = 0; place < is_met.size(); ++place) {
      if (!is_met[place]) {
        order_.push_back(place);
        list_.services[place].is_listed = false;
      }
    }
  }

  void order_services() {
    std::vector<line_up_service> ordered;
    std::vector<std::size_t> places(order_.size());
    for (const std::size_t place : order_) {
      places[place] = ordered.size();
      ordered.push_back(std::move(list_.services[place]));
    }
    list_.services = std::move(ordered);
    const auto follow = [&places](std::vector<line_up_entry> &entries) {
      for (line_up_entry &entry : entries) {
        entry.service = entry.service != nowhere ? places[entry.service] : nowhere;
      }
    };
    for (line_up_view &view : list_.views) {
      follow(view.entries);
    }
    for (favourite_group &group : list_.favourites) {
      follow(group.entries);
    }
  }

  void take_favourites() {
    for (favourite_group &group : list_.favourites) {
      if (!group.is_counted) {
        lost_.add("favourites of no group", group.entries.size());
      } else {
        const auto showing_none =
            std::erase_if(group.entries, [](const line_up_entry &entry) { return entry.service == nowhere; });
        lost_.add("favourites that show no service", showing_none);
      }
    }
    std::erase_if(list_.favourites, [](const favourite_group &group) { return !group.is_counted; });
  }

  // The TV and radio views are built anew from the ALL view where a list is made.
  void count_views() {
    count_own_order(view_kind::tv, SERVICE_TYPE_TV, "entries of the TV view, which differs from the ALL view");
    count_own_order(view_kind::radio, SERVICE_TYPE_RADIO, "entries of the radio view, which differs from the ALL view");
    lost_.add("entries of the USER view", list_.view(view_kind::user).entries.size());
    lost_.add("entries of the promotion view", list_.view(view_kind::promotion).entries.size());
  }

  void count_own_order(view_kind kind, std::uint8_t type, std::string_view what) {
    const auto shown = [](const line_up_entry &entry) {
      return std::pair{entry.service, std::pair{entry.number.major, entry.number.minor}};
    };
    std::vector<decltype(shown(line_up_entry{}))> given;
    std::vector<decltype(shown(line_up_entry{}))> built;
    std::ranges::transform(list_.view(kind).entries, std::back_inserter(given), shown);
    for (const line_up_entry &entry : list_.view(view_kind::all).entries) {
      if (entry.service != nowhere && list_.services[entry.service].fields.service_type == type) {
        built.push_back(shown(entry));
      }
    }
    lost_.add(what, given == built ? 0 : given.size());
  }

  void count_groups() {
    for (const numbered_groups &groups : groups_of_services) {
      count_ids(groups);
      count_unused(groups);
    }
  }

  void count_ids(const numbered_groups &groups) {
    std::unordered_map<std::string_view, std::int16_t> ids;
    for (const line_up_service &service : list_.services) {
      const std::string_view name = service.*groups.name;
      const auto next = static_cast<std::int16_t>(groups.none + 1 + static_cast<std::int16_t>(ids.size()));
      const std::int16_t expected = name.empty() ? groups.none : ids.try_emplace(name, next).first->second;
      lost_.add("ids of groups of services", service.fields.*groups.id != expected ? 1 : 0);
    }
  }

  // Of several groups with one id services are in the first.
  void count_unused(const numbered_groups &groups) {
    std::unordered_set<int> used;
    for (const line_up_service &service : list_.services) {
      if (!(service.*groups.name).empty()) {
        used.insert(service.fields.*groups.id);
      }
    }
    for (const line_up_group &group : list_.groups_of(groups.kind).groups) {
      lost_.add("groups that no service is in", used.erase(group.id) != 0 ? 0 : 1);
    }
  }

  void count_empty_records() {
    std::vector<bool> has_services(list_.transponders.size(), false);
    std::vector<bool> is_used(list_.networks.size(), false);
    for (const line_up_service &service : list_.services) {
      has_services[service.transponder] = true;
      is_used[list_.transponders[service.transponder].network] = true;
    }
    lost_.add("networks without services", static_cast<std::size_t>(std::ranges::count(is_used, false)));
    lost_.add("transponders without services", static_cast<std::size_t>(std::ranges::count(has_services, false)));
  }

  line_up list_;
  loss_counts &lost_;
  std::vector<std::size_t> order_;
};

// Names and ids of groups have places of their own.
void forget_group_ids(line_up &list) {
  for (line_up_service &service : list.services) {
    service.fields.provider_id = 0;
    service.fields.genre_id = 0;
    service.fields.country_id = 0;
  }
}

// A receiver takes 0 for no country.
void forget_no_countries(line_up &list) {
  for (line_up_service &service : list.services) {
    if (service.fields.country_id == 0) {
      service.country.clear();
    }
  }
}

}  // namespace

line_up take_line_up(channel_list_st &list, loss_counts &lost) {
  line_up taken = line_up_of(list);
  forget_no_countries(taken);
  taken = exchange_order(std::move(taken), lost).made();
  forget_group_ids(taken);
  count_record_losses(list, lost);
  return taken;
}

}  // namespace chlist
