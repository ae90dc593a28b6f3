// Services of a line-up by what exactly they are.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

#include "chlist/line_up/line_up.h"

namespace chlist {

// There is no tolerance as the finder has it: services are known here as they were filed, or written.
class places_by_identity {
 public:
  explicit places_by_identity(const line_up &list);

  // Nowhere when there is none; of several the first.
  [[nodiscard]] std::size_t of(const channel::identity &id) const;

 private:
  std::unordered_map<std::string, std::size_t> places_;
};

}  // namespace chlist
