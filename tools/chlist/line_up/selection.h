// Finds the service, or the view, that somebody names on a command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "channel/identity.h"
#include "chlist/command.h"
#include "chlist/fields/service_fields.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

// The services of a line-up that a text names, by their places; in the order of the list, each once.
//   "1:2:3:11727480H:5"    the identity: net index, network id, transport stream id, frequency and polarisation,
//                          service id; frequencies within the library's tolerance are the same
//   "7", "7-2"             the entry of the view with that number (major, minor); "7" is 7-0, or every 7 with a minor
//   "News"                 the name, without regard to case; else every name that contains the text
// A text that looks like an identity is a name when there is none such; a number, too, but then never a part of one.
std::vector<std::size_t> services_named(const line_up &list, std::string_view text, std::int8_t view = VIEW_ALL);

// The one service that a text names. Throws std::runtime_error that says that there is none, or lists what it could be.
std::size_t service_named(const line_up &list, std::string_view text, std::int8_t view = VIEW_ALL);

// The code of a view by its name: "all", "tv", "radio", "user", "promo", "fav:NAME" or "fav:GROUP" (1 to 20);
// and the names that documents have. Throws
// when there is none, and names those that there are.
std::int8_t view_named(const line_up &list, std::string_view text);

// The index of a favourite group that there is, by its name or its position. Throws when there is none.
std::size_t favourite_group_named(const line_up &list, std::string_view text);

// What view_named() takes, for the help.
std::vector<term> terms_of_views();

// The name of a view by its code; none of a code that no view has.
std::optional<view_name> name_of_view(std::int8_t view);

// The entries of a view by its code; none of a favourite group that the line-up does not have.
const std::vector<line_up_entry> &entries_of(const line_up &list, std::int8_t view);

// Every entry of a view, with its service.
std::vector<service_row> rows_of(const line_up &list, std::int8_t view);

// "7", "7-2".
std::string text_of(const channel_number &number);

// "1:2:3:11727480H:5", as services_named() reads it; a polarisation other than 0 (H) and 1 (V) has its number: "V2".
std::string identity_text(const channel::identity &id);

// The identity that a text is, if it is one.
std::optional<channel::identity> read_identity(std::string_view text);

}  // namespace chlist
