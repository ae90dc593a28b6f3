// The table of edits.
#include "chlist/edit/edits.h"

#include <algorithm>
#include <iterator>

namespace chlist {

std::vector<edit_row> every_edit() {
  std::vector<edit_row> rows = {rename_edit(), renumber_edit(),   lock_edit(), unlock_edit(), skip_edit(),
                                unskip_edit(), remove_edit(),     keep_edit(), move_edit(),   sort_edit(),
                                order_edit(),  duplicates_edit(), set_edit(),  merge_edit(),  salvage_edit()};
  std::ranges::move(favourite_edits(), std::back_inserter(rows));
  return rows;
}

std::string name_of_line(const edit_row &row) { return row.parent.empty() ? row.name : row.parent + ' ' + row.name; }

std::vector<term> terms_of_edits() {
  std::vector<term> terms;
  std::ranges::transform(every_edit(), std::back_inserter(terms), [](const edit_row &row) {
    return term{name_of_line(row), row.summary};
  });
  return terms;
}

}  // namespace chlist
