// A list as it is beside the one that it is to become: what the lines of a script are found from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/compare/pairing.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

// People read the lines.
inline constexpr std::size_t most_services_on_a_line = 20;

class compared_lists {
 public:
  compared_lists(line_up is, const line_up &wanted);

  [[nodiscard]] const line_up &is() const { return is_; }
  [[nodiscard]] const line_up &wanted() const { return wanted_; }
  [[nodiscard]] const pairing &services() const { return services_; }

  // The place of a service of the wanted list in the list as it is, or nowhere.
  [[nodiscard]] std::size_t place_of_wanted(std::size_t service) const { return places_[service]; }

  // "1:2:3:11727480H:5", of a service of the list as it is.
  [[nodiscard]] std::string name_of(std::size_t place) const;

 private:
  line_up is_;
  const line_up &wanted_;
  pairing services_;
  std::vector<std::size_t> places_;
};

// A view that both lists have. Favourite groups are the same by their position.
struct wanted_view {
  std::string name;  // of --view
  const std::vector<line_up_entry> &is;
  const std::vector<line_up_entry> &wanted;
};

std::vector<wanted_view> views_of(const compared_lists &lists);

// A favourite group as edits name it: by its name, or by its position when that is none or could be another one's.
std::string name_of_group(const line_up &list, std::size_t group);

// The lines that give every view the wanted order, and its entries the wanted numbers.
std::vector<std::string> lines_of_order(const compared_lists &lists);
std::vector<std::string> lines_of_numbers(const compared_lists &lists);

}  // namespace chlist
