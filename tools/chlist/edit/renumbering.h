// Channel numbers as they are written, new ones for entries of views, and what becomes of the entries that have them
// already.
#pragma once

#include <channel/records.h>

#include <cstdint>
#include <span>
#include <string_view>

#include "chlist/edit/edited_services.h"
#include "chlist/line_up/selection.h"

namespace chlist {

// "7" or "7-2": 1 to 32767, and 0 to 32767 for the minor number. Throws std::runtime_error that names the value and the
// range.
channel_number number_from(std::string_view text);

channel_number number_of(const virtual_channel_st &entry);
void set_number(virtual_channel_st &entry, const channel_number &number);

enum class taken_number { is_refused, is_swapped, is_shifted };

// The number of a service's first entry in a view. Throws when there is none.
channel_number first_number_in(std::int8_t view, const channel_st &service);

// Gives the service's entries with the former number in a view the wanted one.
void renumber_entries(std::int8_t view, const channel_st &service, const channel_number &former,
                      const channel_number &wanted, taken_number policy);

// Numbers a view in its order. Throws when there are not enough numbers.
void renumber_view(std::int8_t view, int from);

// Gives the entries of ALL these numbers, in its order. Entries of other views that showed a service's number in ALL
// show its new one; a note tells of numbers that occur twice by that.
void renumber_all_with_followers(std::span<const channel_number> numbers, edit_notes &notes);

// The same from a number on. Throws when there are not enough numbers.
void renumber_all_with_followers(int from, edit_notes &notes);

}  // namespace chlist
