// Options that several commands have: what they are called and what they mean is the same for all of them.
#pragma once

#include <filesystem>

#include "chlist/command.h"

namespace chlist {

// "--json".
option json_option(bool &as_json);

// "--all", for findings of which the first ten of each kind are told; JSON has every one.
option all_findings_option(bool &shows_all);

// "-o,--output" of a command that makes a channel file of something else; "-" is standard output.
option new_list_option(std::filesystem::path &output);

// "--no-backup" of the same.
option no_backup_option(bool &leaves_no_backup);

}  // namespace chlist
