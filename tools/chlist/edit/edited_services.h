// Services that an edit changes, and their entries in the views.
#pragma once

#include <channel/records.h>

#include <cstdint>
#include <string>
#include <vector>

#include "channel/identity.h"
#include "channel/store/view.h"
#include "chlist/edit/edited_list.h"

namespace chlist {

// The records of all services, in the order of the list and of line-ups of it.
std::vector<channel_st *> records_in_order();

// The library knows the transponder of a service by its frequency. Throws when there is none: it would remove or file
// another service.
void must_have_frequency(const channel_st &service);

// The codes of the saved views: ALL, TV, radio, USER, promotion, and the favourite groups that there are, or all 20.
std::vector<std::int8_t> views_in_use();
std::vector<std::int8_t> saved_views();

// "the TV view", "the favourites 0 \"Films\" view".
std::string title_of(std::int8_t view);

// Where the first entry of a service stands in a view, from 0, or -1.
int index_of(const channel::view &view, const channel_st &service);

// "News", quoted, for messages.
std::string name_for_message(const channel_st &service);

}  // namespace chlist
