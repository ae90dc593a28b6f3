// The settings of a channel list, one by one.
#pragma once

#include <span>
#include <string_view>

#include "chlist/json/json.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

struct setting {
  std::string_view name;                            // in JSON: "bouquet_id"
  std::string_view title;                           // in text: "bouquet id"
  json (*value)(const line_up_settings &settings);  // null when it is not set
};

std::span<const setting> all_settings();

}  // namespace chlist
