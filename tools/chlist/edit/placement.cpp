// The library moves single entries here. Its move of several at once puts them behind the destination, and takes their
// entries out of the TV or radio view as well.
#include "chlist/edit/placement.h"

#include <channel/favourites.h>
#include <channel/moving.h>
#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "chlist/files/faithful_load.h"
#include "chlist/position.h"

namespace chlist {
namespace {

int index_in(std::int8_t code, const channel_st &service) {
  const int index = index_of(channel::find_view(code), service);
  if (index < 0) {
    throw std::runtime_error(fmt::format("{} has no entry in {}", name_for_message(service), title_of(code)));
  }
  return index;
}

// The indexes of the entries that stay, in their order.
std::vector<int> staying(std::int8_t code, const std::vector<channel_st *> &services) {
  std::vector<int> moved;
  std::ranges::transform(services, std::back_inserter(moved),
                         [code](const channel_st *service) { return index_in(code, *service); });
  std::vector<int> rest;
  for (int index = 0; index < channel::find_view(code).size(); ++index) {
    if (std::ranges::find(moved, index) == moved.end()) {
      rest.push_back(index);
    }
  }
  return rest;
}

// How many of the entries that stay come in front of the place.
std::size_t count_in_front(std::int8_t code, const std::vector<int> &rest, const placement &place, edited_list &list) {
  if (place.to) {
    return index_of_position(*place.to, rest.size() + 1, "in " + title_of(code));
  }
  const channel_st &other = list.service(place.before ? *place.before : *place.after, code);
  const auto found = std::ranges::find(rest, index_in(code, other));
  if (found == rest.end()) {
    throw std::runtime_error(fmt::format("{} is itself to be moved", name_for_message(other)));
  }
  return static_cast<std::size_t>(found - rest.begin()) + (place.before ? 0 : 1);
}

// The library leaves a copy of the last entry in the slot behind the count.
class kept_slot {
 public:
  explicit kept_slot(const channel::view &view) : slot_(view.slot(view.size())) {
    if (slot_ != nullptr) {
      before_ = *slot_;
    }
  }
  ~kept_slot() {
    if (slot_ != nullptr) {
      *slot_ = before_;
    }
  }
  kept_slot(const kept_slot &) = delete;
  kept_slot &operator=(const kept_slot &) = delete;

 private:
  virtual_channel_st *slot_;
  virtual_channel_st before_ = {};
};

// In a view that is selected without a group list nothing is moved in the TV or radio view along with it.
void select_alone(std::int8_t view) {
  get_channel_list()->service_type = SERVICE_TYPE_TV;
  change_vindex_type(VIEW_ALL);
  change_vindex_type(view);
}

// The entry stands at the destination afterwards. False when the library refuses.
bool move_entry(std::int8_t view, int destination, int source) {
  const auto to = static_cast<std::int16_t>(destination);
  if (view >= VIEW_FAVOURITE) {
    const auto from = static_cast<std::uint16_t>(source);
    return move_fav_channel(static_cast<std::int16_t>(view - VIEW_FAVOURITE), to, 1, &from) == 0;
  }
  select_alone(view);
  const auto from = static_cast<std::int16_t>(source);
  return move_channel(to, 1, &from) == 1;
}

}  // namespace

std::size_t index_of_position(int position, std::size_t count, std::string_view where) {
  const std::optional<std::size_t> index = index_at(position, count);
  if (!index) {
    throw std::runtime_error(fmt::format("position {} is not there: it can be 1 to {} {}", position, count, where));
  }
  return *index;
}

option_group placement_options(placement &place) {
  return {
      .name = "place",
      .options = {
          {.names = "--before", .target = &place.before, .about = "in front of this service", .value = "SERVICE"},
          {.names = "--after", .target = &place.after, .about = "behind this service", .value = "SERVICE"},
          {.names = "--to", .target = &place.to, .about = "to this position, counted from 1", .value = "POSITION"}}};
}

void move_services(std::int8_t view, const std::vector<channel_st *> &services, const placement &place,
                   edited_list &list) {
  const std::vector<int> rest = staying(view, services);
  const std::size_t in_front = count_in_front(view, rest, place, list);
  const kept_slot behind(channel::find_view(view));
  const kept_view_settings settings;
  // Every service goes behind the one before; the first goes behind the last that stays in front.
  int previous = in_front == 0 ? -1 : rest[in_front - 1];
  for (const channel_st *service : services) {
    const int source = index_in(view, *service);
    const int destination = source < previous ? previous : previous + 1;
    if (source != destination && !move_entry(view, destination, source)) {
      throw std::runtime_error(fmt::format("{} cannot be moved in {}", name_for_message(*service), title_of(view)));
    }
    previous = destination;
  }
  list.entries_changed();
}

}  // namespace chlist
