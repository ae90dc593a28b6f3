// Merging a new channel list.
#pragma once

#include <channel/records.h>

namespace channel::persist {

// Where the producer of a new channel list places it.
inline constexpr char new_list_path[] = "/DATA/BACKUP/all_channel.dat";

// Merges the list in a file; the path is used as it stands. The number of services added and deleted; 0, and nothing
// changed, when the file cannot be read.
int merge_new_list(const char *path);

// Merges a list that was read before: what it has and the one in memory lacks is copied; it stays as it is. The number
// of services added and deleted.
int merge_list(channel_list_st &new_list);

}  // namespace channel::persist
