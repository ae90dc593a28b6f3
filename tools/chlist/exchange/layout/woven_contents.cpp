// Whatever a reader takes otherwise than the list has it is found by reading.
#include "chlist/exchange/layout/woven_contents.h"

#include <algorithm>
#include <unordered_map>

#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/order_of_all.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/places.h"

namespace chlist {
namespace {

line_up read_again(const written_list &made, const format &to) {
  loss_counts unsaid;
  return to.read(source_of(made.files, true), unsaid);
}

bool is_same_service(const line_up_service &was, const line_up_service &is) {
  return was.fields.frequency == is.fields.frequency && was.fields.polarisation == is.fields.polarisation &&
         was.fields.network_id == is.fields.network_id && was.fields.ts_id == is.fields.ts_id &&
         was.fields.service_id == is.fields.service_id && was.further.tuned == is.further.tuned;
}

}  // namespace

woven_contents::woven_contents(const written_list &made, const line_up &now, const format &to)
    : now_(now), read_(read_again(made, to)), written_(made.services.size()) {
  loss_counts unsaid;
  const filled_list filled = fill_list(read_, unsaid);
  after_ = in_order_of_all(line_up_in_memory()).list;
  std::unordered_map<std::size_t, std::size_t> by_line;
  for (std::size_t at = 0; at < made.lines.size(); ++at) {
    by_line.emplace(made.lines[at], made.services[at]);
  }
  const places_by_identity after(after_);
  places_.assign(after_.services.size(), nowhere);
  for (std::size_t at = 0; at < read_.services.size(); ++at) {
    const auto found = by_line.find(read_.services[at].line);
    if (found != by_line.end() && filled.filed[at] != nullptr) {
      pairs_.emplace_back(at, found->second);
      places_[after.of(channel::identity_of(*filled.filed[at]))] = found->second;
    }
  }
}

bool woven_contents::has_same_services() const {
  return pairs_.size() == written_ && std::ranges::all_of(pairs_, [&](const auto &pair) {
           return is_same_service(now_.services[pair.second], read_.services[pair.first]);
         });
}

bool woven_contents::has_same_numbers() const { return numbers_of(now_, nullptr) == numbers_of(after_, &places_); }

woven_contents::numbered_places woven_contents::numbers_of(const line_up &list,
                                                           const std::vector<std::size_t> *places) {
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
