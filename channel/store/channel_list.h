// The one channel list and the names of its codes.
#pragma once

#include <channel/records.h>
#include <cstdint>

namespace channel {

extern channel_list_st channel_list;

// "ALL CH", "TV CH", "RADIO CH", "USER CH", "FAV CH"; "NONE" for every other code, promotion included.
const char *view_name(int code);

// "ALL", "SATELLITE", "GENRE", "PROVIDER", "COUNTRY", "FTACAS", "FAV"; "NONE" for every other kind.
const char *group_kind_name(int kind);

}  // namespace channel
