// What the library does to one service, for every edit that needs it.
#pragma once

#include <channel/records.h>

#include <cstdint>
#include <string>

#include "chlist/edit/edited_list.h"

namespace chlist {

// The library finds services by identity: one that occurs twice, or that is filed under a transponder that is not its
// own, is not the one that it finds.
bool is_found_by_identity(const channel_st &service);

void set_flag(const channel_st &service, std::uint8_t bits, bool sets);

// The first name or the second, cut to what a list holds, with a note. Throws when the name is empty, or is no plain
// text.
enum class name_place : std::uint8_t { first, second };
void set_name(const channel_st &service, name_place place, const std::string &wanted, edited_list &list);

// Its entries go with it, in all views and favourite groups. Throws when it has no frequency.
void remove_service(const channel_st &service, edited_list &list);

}  // namespace chlist
