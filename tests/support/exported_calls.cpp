// The whole table of exported functions.
#include "exported_calls.h"

namespace extremes {

const std::vector<exported_call> &exported_calls() {
  static const std::vector<exported_call> all = [] {
    std::vector<exported_call> joined = store_calls();
    for (const auto &more : {view_calls(), group_calls()}) {
      joined.insert(joined.end(), more.begin(), more.end());
    }
    return joined;
  }();
  return all;
}

}  // namespace extremes
