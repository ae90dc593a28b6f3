// What a folder says that was just made, held against the list that it was made of.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "chlist/exchange/formats.h"

namespace chlist {

class made_contents {
 public:
  // The list in memory is lost.
  made_contents(const written_list &made, const line_up &now, const format &to);

  // All services come back that another one brings back, on the same transponders, tuned by all that it brings back as
  // the list has it: what the format does not carry tells nothing.
  [[nodiscard]] bool has_services_of(const made_contents &other) const;

  // Services come in the order of the list, and with its numbers.
  [[nodiscard]] bool has_same_numbers() const;

 private:
  using numbered_places = std::vector<std::pair<std::size_t, int>>;

  [[nodiscard]] bool has_service_of(const made_contents &other, std::size_t place) const;
  static numbered_places numbers_of(const line_up &list, const std::vector<std::size_t> *places);

  const line_up &now_;
  line_up read_;
  line_up after_;
  std::vector<std::size_t> places_;       // in the list, of the services of after_
  std::vector<std::size_t> places_read_;  // of each service of the list among those that were read; or nowhere
};

}  // namespace chlist
