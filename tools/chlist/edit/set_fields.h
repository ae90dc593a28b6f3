// The fields of a service that can be set: their names, their ranges and how each is written.
#pragma once

#include <channel/records.h>

#include <string>
#include <string_view>

#include "channel/identity.h"

namespace chlist {

// A service while fields are set: what makes its identity is put together first and changed at once.
struct edited_service {
  channel_st &record;
  channel::identity id;
};

// Sets one field by "FIELD=VALUE". Throws std::runtime_error that names the field, the value and the range.
void set_field(edited_service &service, std::string_view assignment);

// One line for each field with its range, for the help.
std::string fields_help();

}  // namespace chlist
