// The page of `chlist report`: one file that needs nothing else, made of the files in the folder browser and of the
// data of a list.
#pragma once

#include <string>

#include "chlist/check/findings.h"
#include "chlist/json/json.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

std::string page_of(const json &data);

// Everything that the page shows of a list, once, as model.js reads it.
//   file_name  as the page's title has it
//   found      of the file that the list was read from
json page_data(const std::string &file_name, const line_up &list, const file_findings &found);

// JSON that a script element can hold: no text of it ends the element or a line of it.
std::string script_safe(const json &data);

}  // namespace chlist
