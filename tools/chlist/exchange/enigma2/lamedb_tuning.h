// The parameters of a transponder in a lamedb, which are numbers at fixed places, and the words for them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/reception.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

// fields: "11494000", "22000000", ... of the delivery that the letter in front of them names.
tuning lamedb_tuning(delivery by, const std::vector<std::string_view> &fields);

// What follows the frequency, the usual values where nothing is known. position: signed, in tenths of a degree.
std::string lamedb_parameters(const line_up_service &service, delivery by, int position, int version);

}  // namespace chlist
