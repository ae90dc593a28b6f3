// The transponders of a lamedb that is kept, for services that are written into it: what a writer calls otherwise is
// called as it is there, and what is not there yet comes along.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace chlist {

// What a writer made, with the namespaces of a kept lamedb for the transponders that both have, and with such for the
// others as no transponder has there.
std::string lamedb_in_terms_of(const std::string &written, const std::string &kept);

// The lines of transponders that a text in these terms has and the kept one has not.
std::vector<std::string> lamedb_transponders_missing(const std::string &written, const std::string &kept);

// In front of what they stand: the services, or the end of their section.
bool is_behind_lamedb_transponders(std::string_view piece);

}  // namespace chlist
