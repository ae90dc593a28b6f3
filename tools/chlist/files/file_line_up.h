// A channel file as a line-up: one reading, which changes nothing and says nothing.
#pragma once

#include <string>
#include <vector>

#include "chlist/files/channel_file.h"
#include "chlist/files/file_records.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

// The records of a file that is whole and of the current version. Throws for any other.
void must_be_whole(const channel_file &input, const file_records &records);

// Throws for a file that is not of the current version, or not whole.
line_up line_up_in(const channel_file &input);

// What of a file a save of its list cannot write again, one text for each.
std::vector<std::string> not_saved_again(const file_records &records);

}  // namespace chlist
