// Transponders that a merge leaves without services. The library keeps them, and a host that looks for a transponder by
// its ids alone would be given the one where the services were, in front of the one where they are.
#pragma once

#include <channel/records.h>

#include <cstdint>
#include <set>
#include <vector>

#include "channel/identity.h"

namespace chlist {

// The transponders of the list in memory that have services now. None of them may be freed meanwhile.
class occupied_transponders {
 public:
  occupied_transponders();

  // Frees those that have no service any more, of the sources that a scan covers: of others it says nothing. What is
  // told of each is an identity without a service. Networks stay, and so does a transponder that was empty before: it
  // may be there to be searched.
  [[nodiscard]] std::vector<channel::identity> remove_emptied(const std::set<std::uint8_t> &covered) const;

 private:
  std::set<const tp_ch_st *> transponders_;
};

}  // namespace chlist
