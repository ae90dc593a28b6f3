// What is wrong with the channel list in memory, as the page tells it.
#pragma once

#include <string>
#include <vector>

namespace chlist {

struct health_finding {
  std::string severity;  // "error", "warning" or "note"
  std::string topic;     // what all findings of its kind have in common: "entries without a service"
  std::string text;
};

std::vector<health_finding> health_of_list();

}  // namespace chlist
