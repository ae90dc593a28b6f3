// Lines between services that begin groups, and raise the numbers of what follows: they go along with the groups and
// the numbers of a list.
#pragma once

#include <vector>

#include "chlist/exchange/layout/group_edits.h"
#include "chlist/exchange/layout/source_layout.h"
#include "chlist/exchange/layout/woven_row.h"

namespace chlist {

// A group that is called otherwise renames its line, one that is gone takes it along, and the line stands in front of
// the first service of the group as far as a line can say it: no line ends a group but the next one.
void follow_groups(woven_row &row, const std::vector<source_piece> &pieces, const std::vector<group_edit> &groups,
                   const separator_layout &layout);

// now: the list, whose services have their numbers. A number changes where a service behind it has another one, and a
// line is added where none would raise it.
void follow_numbers(woven_row &row, const std::vector<source_piece> &pieces, const line_up &now,
                    const separator_layout &layout);

}  // namespace chlist
