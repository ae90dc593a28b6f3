#include "chlist/line_up/places.h"

#include "chlist/line_up/selection.h"

namespace chlist {

places_by_identity::places_by_identity(const line_up &list) {
  places_.reserve(list.services.size());
  for (std::size_t place = 0; place < list.services.size(); ++place) {
    places_.emplace(identity_text(list.services[place].id()), place);
  }
}

std::size_t places_by_identity::of(const channel::identity &id) const {
  const auto found = places_.find(identity_text(id));
  return found != places_.end() ? found->second : nowhere;
}

}  // namespace chlist
