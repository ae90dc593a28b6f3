// Brings a line-up into the order of ALL.
#include "chlist/exchange/order_of_all.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace chlist {
namespace {

// The first entry of a service is where it stands.
std::vector<std::size_t> number_by_all(line_up &list) {
  std::vector<std::size_t> order;
  for (line_up_service &service : list.services) {
    service.is_listed = false;
  }
  for (const line_up_entry &entry : list.view(view_kind::all).entries) {
    if (entry.service != nowhere && !list.services[entry.service].is_listed) {
      list.services[entry.service].is_listed = true;
      list.services[entry.service].number = entry.number;
      order.push_back(entry.service);
    }
  }
  for (std::size_t place = 0; place < list.services.size(); ++place) {
    if (!list.services[place].is_listed) {
      order.push_back(place);
    }
  }
  return order;
}

void follow(std::vector<line_up_entry> &entries, const std::vector<std::size_t> &places) {
  for (line_up_entry &entry : entries) {
    entry.service = entry.service != nowhere ? places[entry.service] : nowhere;
  }
}

// A receiver takes 0 for no country.
void forget_group_ids(line_up_service &service) {
  if (service.fields.country_id == 0) {
    service.country.clear();
  }
  service.fields.provider_id = 0;
  service.fields.genre_id = 0;
  service.fields.country_id = 0;
}

}  // namespace

list_for_formats in_order_of_all(line_up list) {
  std::vector<std::size_t> order = number_by_all(list);
  std::vector<line_up_service> ordered;
  std::vector<std::size_t> places(list.services.size());
  for (const std::size_t place : order) {
    places[place] = ordered.size();
    forget_group_ids(ordered.emplace_back(std::move(list.services[place])));
  }
  list.services = std::move(ordered);
  for (line_up_view &view : list.views) {
    follow(view.entries, places);
  }
  std::erase_if(list.favourites, [](const favourite_group &group) { return !group.is_counted; });
  for (favourite_group &group : list.favourites) {
    follow(group.entries, places);
    std::erase_if(group.entries, [](const line_up_entry &entry) { return entry.service == nowhere; });
  }
  return {std::move(list), std::move(order)};
}

}  // namespace chlist
