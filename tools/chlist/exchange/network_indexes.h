// Which network index a list gives to a source: by the name of its networks, or by the position of the satellite.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

#include "chlist/line_up/line_up.h"

namespace chlist {

class network_indexes {
 public:
  explicit network_indexes(const line_up &list);

  // Nothing of a source that the list does not know.
  [[nodiscard]] std::optional<std::uint8_t> of(std::string_view source) const;
  [[nodiscard]] bool has(std::uint8_t index) const { return used_.contains(index); }

 private:
  std::unordered_map<std::string, std::uint8_t> by_name_;
  std::set<std::uint8_t> used_;
};

}  // namespace chlist
