// Chooses among the groups that a list of another format has.
#pragma once

#include <vector>

#include "chlist/exchange/loss_counts.h"
#include "chlist/line_up/group_options.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

// Favourite groups come in the order that another list has them in, unless somebody names them in one.
void follow_groups_of(const line_up &model, group_options &options);

// Those with these names change places until they are in their order, and the others stay; of more than a list holds,
// those with the names come first.
void order_groups(line_up &list, const std::vector<std::string> &order);

// Throws usage_error when a group is chosen that there is not.
void choose_groups(line_up &list, const group_options &options, loss_counts &lost);

// The same of a list that was written again: chosen groups that went are none, others have come, and they are in the
// order of these.
void choose_groups_again(line_up &list, group_options options, const std::vector<favourite_group> &others = {});

}  // namespace chlist
