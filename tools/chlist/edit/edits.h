// The edits that there are. Each is made where its work is done.
#pragma once

#include "chlist/edit/edit_session.h"

namespace chlist {

edit_row rename_edit();
edit_row renumber_edit();
edit_row lock_edit();
edit_row unlock_edit();
edit_row skip_edit();
edit_row unskip_edit();
edit_row remove_edit();
edit_row keep_edit();
edit_row move_edit();
edit_row sort_edit();
edit_row order_edit();
edit_row duplicates_edit();
edit_row set_edit();
edit_row merge_edit();
edit_row salvage_edit();

// Those of `chlist fav`.
std::vector<edit_row> favourite_edits();

// All of them, what their lines begin with ("fav add"), and many of them as one.
std::vector<edit_row> every_edit();
std::string name_of_line(const edit_row &row);
std::vector<term> terms_of_edits();
edit_row apply_edit();

}  // namespace chlist
