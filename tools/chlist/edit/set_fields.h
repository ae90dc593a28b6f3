// The fields of a service that can be set on a command line: those of the table of fields that are numbers, and its
// groups.
#pragma once

#include <channel/records.h>

#include <span>
#include <string>
#include <vector>

#include "chlist/command.h"

namespace chlist {

// Sets fields by "FIELD=VALUE" each, the identity last. Throws std::runtime_error that names the field, the value and
// the range.
void set_fields(channel_st &service, std::span<const std::string> assignments);

// Each field with its range, for the help.
std::vector<term> terms_of_fields();

}  // namespace chlist
