// Services, views and entries as reports name them: as text that is harmless on a terminal, and as JSON.
#pragma once

#include <string>

#include "chlist/fields/identity_fields.h"
#include "chlist/json/json.h"
#include "chlist/line_up/list_contents.h"

namespace chlist {

// "\"News\" (net 1, network 2, ts 3, 11000000 H, service 5)".
std::string describe(const known_service &service);

// "the TV view, position 1: number 5 (net 1, network 2, ts 3, 11000000 H, service 5)".
std::string describe(const placed_entry &entry);

json json_of(const view_name &view);
json json_of(const known_service &service);
json json_of(const placed_entry &entry);

// A transponder by its identity, which has no service id.
json json_of_transponder(const channel::identity &id);

// The views of the list in memory, with the number of entries in use.
json json_of_views();

}  // namespace chlist
