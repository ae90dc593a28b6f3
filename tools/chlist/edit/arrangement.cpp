// The library moves entries one at a time, each past all the others. A whole order is written into the entries, as
// hosts write numbers, which moves each of them once.
#include "chlist/edit/arrangement.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "channel/store/view.h"

namespace chlist {

void arrange(std::int8_t view, const service_ranks &ranks) {
  using ranked_entry = std::pair<std::size_t, virtual_channel_st>;
  std::vector<ranked_entry> ranked;
  std::vector<virtual_channel_st *> positions;
  for (virtual_channel_st &entry : channel::find_view(view)) {
    if (const auto found = ranks.find(entry.rch); found != ranks.end()) {
      ranked.emplace_back(found->second, entry);
      positions.push_back(&entry);
    }
  }
  std::ranges::stable_sort(ranked, {}, &ranked_entry::first);
  for (std::size_t i = 0; i < ranked.size(); ++i) {
    *positions[i] = ranked[i].second;
  }
}

}  // namespace chlist
