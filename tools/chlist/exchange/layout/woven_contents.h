// What a folder says that was just made, held against the list that it was made of.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "chlist/exchange/formats.h"

namespace chlist {

class woven_contents {
 public:
  // The list in memory is lost.
  woven_contents(const written_list &made, const line_up &now, const format &to);

  // All that were written come back, on the same transponders.
  [[nodiscard]] bool has_same_services() const;

  // Services come in the order of the list, and with its numbers.
  [[nodiscard]] bool has_same_numbers() const;

 private:
  using numbered_places = std::vector<std::pair<std::size_t, int>>;

  static numbered_places numbers_of(const line_up &list, const std::vector<std::size_t> *places);

  const line_up &now_;
  line_up read_;
  line_up after_;
  std::vector<std::size_t> places_;                         // in the list, of the services of after_
  std::vector<std::pair<std::size_t, std::size_t>> pairs_;  // of those that were read with those of the list
  std::size_t written_ = 0;
};

}  // namespace chlist
