// The keys of a section that tell how its service is received and what it consists of, and the words of their values.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "chlist/exchange/reception.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

// Nothing of a delivery system that nobody knows.
std::optional<delivery> delivery_by(std::string_view system);

// Takes what a key says; passes over what it does not know.
void take_tuning(further_facts &facts, std::string_view key, std::string_view value);

// The lines of a service, the usual values where nothing is known.
std::string tuning_lines(const line_up_service &service);

}  // namespace chlist
