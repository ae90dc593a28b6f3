// The blocks of text that more than one operation prints.
#pragma once

#include <channel/records.h>

namespace channel {

// The settings and the counts of the views, as print_channel_status() and the loader print them; the first and the last
// line carry the operation's name.
void print_load_status(const char *operation, const channel_list_st &list);

}  // namespace channel
