// The transponders of a lamedb that is kept, for services that are written into it: what a writer calls otherwise is
// called as it is there, and what is not there yet comes along.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/layout/source_layout.h"

namespace chlist {

// What a writer made, with the namespaces of a kept lamedb for the transponders that both have, and with such for the
// others as no transponder has there.
std::string lamedb_in_terms_of(const std::string &written, const std::string &kept);

// How transponders of the kept one are received where a text in these terms says otherwise: by the numbers of their
// lines.
std::map<std::size_t, std::string> lamedb_transponders_changed(const piece_versions &files);

// The lines of transponders that a text in these terms has and the kept one has not.
std::vector<std::string> lamedb_transponders_missing(const std::string &written, const std::string &kept);

// In front of what they stand: the services, or the end of their section.
bool is_behind_lamedb_transponders(std::string_view piece);

}  // namespace chlist
