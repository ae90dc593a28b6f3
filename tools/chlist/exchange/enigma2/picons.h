// The names that Enigma2 looks for pictures of services by: "1_0_19_283D_3FB_1_C00000_0_0_0.png".
#pragma once

#include <string_view>

#include "chlist/exchange/written_list.h"

namespace chlist {

inline constexpr std::string_view name_of_picons = "picons.csv";

// Of the services of a lamedb, in its order: the name of the picture and that of the service, as CSV. An import of the
// folder passes over it.
made_file picons_of(std::string_view lamedb);

}  // namespace chlist
