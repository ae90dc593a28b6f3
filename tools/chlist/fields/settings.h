// The settings of a channel list, one by one.
#pragma once

#include "chlist/fields/field.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

std::span<const record_field<line_up_settings>> setting_fields();

}  // namespace chlist
