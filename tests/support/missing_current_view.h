// A list whose current view is missing, in each of the ways in which it can be.
#pragma once

#include <channel/channel.h>

namespace test_support {

// Does something while the current view has no array, while it has no count, and when the list is destroyed.
template <class Action>
void without_current_view(const Action &action) {
  channel_list_st &list = *get_channel_list();
  list.cur_vch = nullptr;
  action();
  change_vindex_type(VIEW_ALL);
  list.cur_vnumber = nullptr;
  action();
  destroy_channel_list();
  action();
}

}  // namespace test_support
