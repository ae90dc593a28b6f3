// Finds the service that somebody names on a command line: by number, by name, or by identity.
#pragma once

#include <channel/records.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace chlist {

// The services of the list in memory that a text names; in list order, each once.
//   "7", "7-2"             the entry of the view with that number (major, minor)
//   "1:2:3:11727480H:5"    the identity: net index, network id, transport stream id, frequency and polarisation,
//   service id "News"                 the name, without regard to case; else every name that contains the text
// A text of digits is a number first, and a name when the view has no such number.
std::vector<channel_st *> services_named(std::string_view text, std::int8_t view = VIEW_ALL);

// The one service that a text names. Throws std::runtime_error that says that there is none, or lists what it could be.
channel_st &service_named(std::string_view text, std::int8_t view = VIEW_ALL);

// The code of a view by its name: "all", "tv", "radio", "user", "promo", "fav:NAME" or "fav:GROUP" (0..19). Throws when
// there is none, and names those that there are.
std::int8_t view_named(std::string_view text);

// "1:2:3:11727480H:5", as services_named() reads it.
std::string identity_text(const channel_st &service);

}  // namespace chlist
