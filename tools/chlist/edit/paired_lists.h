// The services of a list beside those of another one whose order it is to have: what was paired how, and what was not.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "chlist/compare/rescan.h"
#include "chlist/edit/edited_list.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

struct paired_lists {
  line_up reference;  // its sources are numbered as the list numbers them
  line_up list;
  rescan again;                       // from the reference to the list
  std::vector<std::size_t> partners;  // of each service of the reference its place in the list, or nowhere

  // Takes services at other places of the list for neither paired nor left over.
  void keep_to(const std::vector<bool> &is_meant);

  // Services of the list that are neither paired nor what one of the reference may be.
  [[nodiscard]] std::vector<std::size_t> only_in_list() const;
  // Services of the reference that nothing in the list is like.
  [[nodiscard]] std::vector<std::size_t> only_in_reference() const;
};

paired_lists pair_with_reference(line_up reference, line_up list, search_reach reach);

// How many were paired how, and which, the first of each kind or all of them in the text.
edit_table table_of_pairs(const paired_lists &pairs, const std::string &reference, bool shows_all);

}  // namespace chlist
