// New numbers for entries of views, and what becomes of the entries that have them already.
#pragma once

#include <cstdint>

#include "chlist/edit/channel_numbers.h"
#include "chlist/edit/edited_services.h"

namespace chlist {

enum class taken_number { is_refused, is_swapped, is_shifted };

// The number of a service's first entry in a view. Throws when there is none.
channel_number first_number_in(std::int8_t view, const channel_st &service);

// Gives the service's entries with the former number in a view the wanted one.
void renumber_entries(std::int8_t view, const channel_st &service, const channel_number &former,
                      const channel_number &wanted, taken_number policy);

// Numbers a view in its order. Throws when there are not enough numbers.
void renumber_view(std::int8_t view, int from);

// The same with ALL. Entries of other views that showed a service's number in ALL show its new one; a note tells of
// numbers that occur twice by that.
void renumber_all_with_followers(int from, edit_notes &notes);

}  // namespace chlist
