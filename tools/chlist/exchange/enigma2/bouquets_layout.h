// The bouquets, their indexes and the blacklist of a folder of Enigma2, line by line, on the way back.
#pragma once

#include <string>
#include <vector>

#include "chlist/exchange/layout/folder_layout.h"

namespace chlist {

// A line is a piece; those of services that stand in the lamedb have their identities.
std::vector<source_piece> pieces_of_bouquet(const std::string &text, const source_file &first);

// Services that were added, removed or moved in a favourite group change their own lines, and a group that is called
// otherwise its name. A new group is a new file and a line of an index; of one that is gone the file and the line go.
std::vector<made_file> woven_bouquets(const kept_folder &kept, std::vector<std::string> &notes);

}  // namespace chlist
