// The commands of the tool. Each is made where its work is done; command_table.cpp has them in the order of the help.
#pragma once

#include "chlist/command.h"

namespace chlist {

// To look at a list.
command info_command();
command list_command();
command show_command();
command diff_command();
command report_command();
// To mend it and to bring it up to date.
command check_command();
command salvage_command();
command convert_command();
command merge_command();
// To make it of what is broadcast.
command scan_command();
// To exchange it.
command import_command();
command export_command();
// To edit it; the other edits are in edit/edits.h.
command editor_command();
command fav_command();
command fav_list_command();  // below fav
command undo_command();
command redo_command();
command history_command();
command restore_command();
// To learn of it.
command help_command();

}  // namespace chlist
