// The fields of a service that can be set on a command line: those of the table of fields that are numbers, and its
// groups.
#pragma once

#include <channel/records.h>

#include <span>
#include <string>

namespace chlist {

// Sets fields by "FIELD=VALUE" each, the identity last. Throws std::runtime_error that names the field, the value and
// the range.
void set_fields(channel_st &service, std::span<const std::string> assignments);

// One line for each field with its range, for the help.
std::string fields_help();

}  // namespace chlist
