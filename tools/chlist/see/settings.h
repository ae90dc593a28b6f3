// The settings of a channel list, one by one.
#pragma once

#include <channel/records.h>

#include <span>
#include <string>
#include <string_view>

#include "chlist/report.h"

namespace chlist {

struct setting {
  std::string_view name;                       // in JSON: "bouquet_id"
  std::string_view title;                      // in text: "bouquet id"
  json (*value)(const channel_list_st &list);  // null when it is not set
};

std::span<const setting> all_settings();

}  // namespace chlist
