// Counts what a channels.conf says and the channel file does not carry. The one place that knows: when the import
// learns to carry something more, its row goes.
#pragma once

#include <string_view>
#include <vector>

#include "chlist/exchange/vdr_channels_conf.h"

namespace chlist {

class uncarried_counts {
 public:
  struct row {
    std::string_view what;
    int services = 0;
  };

  uncarried_counts();
  void add(const vdr_service &service);

  // What at least one service has.
  [[nodiscard]] std::vector<row> rows() const;

 private:
  std::vector<row> rows_;
};

}  // namespace chlist
