// Whatever a reader takes otherwise than the list has it is found by reading.
#include "chlist/exchange/layout/made_contents.h"

#include <algorithm>

#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/order_of_all.h"
#include "chlist/exchange/streams.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/places.h"

namespace chlist {
namespace {

line_up read_again(const written_list &made, const format &to) {
  loss_counts unsaid;
  return to.read(source_of(made.files, true), unsaid);
}

bool is_same_place(const channel_st &a, const channel_st &b) {
  return a.frequency == b.frequency && a.polarisation == b.polarisation && a.network_id == b.network_id &&
         a.ts_id == b.ts_id && a.service_id == b.service_id;
}

}  // namespace

made_contents::made_contents(const written_list &made, const line_up &now, const format &to)
    : now_(now), read_(read_again(made, to)), places_read_(now.services.size(), nowhere) {
  loss_counts unsaid;
  const filled_list filled = fill_list(read_, unsaid);
  after_ = in_order_of_all(line_up_in_memory()).list;
  const places_by_identity after(after_);
  const std::vector<std::size_t> among_written = places_among_written(read_, made);
  places_.assign(after_.services.size(), nowhere);
  for (std::size_t at = 0; at < read_.services.size(); ++at) {
    if (among_written[at] < made.services.size() && filled.filed[at] != nullptr) {
      const std::size_t place = made.services[among_written[at]];
      places_read_[place] = at;
      places_[after.of(channel::identity_of(*filled.filed[at]))] = place;
    }
  }
}

bool made_contents::has_services_of(const made_contents &other) const {
  for (std::size_t place = 0; place < now_.services.size(); ++place) {
    if (other.places_read_[place] != nowhere && !has_service_of(other, place)) {
      return false;
    }
  }
  return true;
}

bool made_contents::has_service_of(const made_contents &other, std::size_t place) const {
  if (places_read_[place] == nowhere) {
    return false;
  }
  const line_up_service &own = read_.services[places_read_[place]];
  const line_up_service &theirs = other.read_.services[other.places_read_[place]];
  const further_facts &wanted = now_.services[place].further;
  return is_same_place(own.fields, theirs.fields) && std::ranges::all_of(theirs.further.tuned, [&](const auto &each) {
           const auto &[parameter, value] = each;
           return value_of(wanted, parameter) != value || value_of(own.further, parameter) == value;
         });
}

bool made_contents::has_same_numbers() const { return numbers_of(now_, nullptr) == numbers_of(after_, &places_); }

made_contents::numbered_places made_contents::numbers_of(const line_up &list, const std::vector<std::size_t> *places) {
  numbered_places numbers;
  for (std::size_t at = 0; at < list.services.size(); ++at) {
    const line_up_service &service = list.services[at];
    if (service.is_listed && service.number) {
      numbers.emplace_back(places != nullptr ? (*places)[at] : at, service.number->major);
    }
  }
  return numbers;
}

}  // namespace chlist
