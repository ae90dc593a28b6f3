// The fields of a service that can be set: their names, their ranges and how each is written.
#pragma once

#include <channel/records.h>

#include <string>
#include <string_view>
#include <vector>

#include "channel/identity.h"
#include "chlist/command.h"

namespace chlist {

// A service while fields are set: what makes its identity is put together first and changed at once.
struct edited_service {
  channel_st &record;
  channel::identity id;
};

// Sets one field by "FIELD=VALUE". Throws std::runtime_error that names the field, the value and the range.
void set_field(edited_service &service, std::string_view assignment);

// Each field with its range, for the help.
std::vector<term> terms_of_fields();

}  // namespace chlist
