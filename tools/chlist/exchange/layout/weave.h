// A list in the text that it was made of: what nobody changed stays byte for byte, a service that changed is written
// anew in its place, those that are gone are left out, new ones stand behind the service that they follow in the list.
#pragma once

#include "chlist/exchange/formats.h"
#include "chlist/files/companion.h"

namespace chlist {

// Whether a source is of the format, and the format knows how to keep it.
bool can_be_woven(const companion &kept, const format &to);

// list: in the order of ALL, with what is kept beside it.
written_list woven_text(const line_up &list, const companion &kept, const format &to, const write_options &options);

}  // namespace chlist
