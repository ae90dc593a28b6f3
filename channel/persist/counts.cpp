// Files come from outside: what they count is brought into the arrays before anything is read by it.
#include "channel/persist/counts.h"

#include <algorithm>
#include <channel/records.h>
#include <cstdint>

#include "channel/log.h"
#include "channel/store/group_table.h"
#include "channel/store/view.h"

namespace channel::persist {
namespace {

struct counted {
  const char *what;
  int which;
};

void bring_into_array(std::int16_t &count, std::int16_t capacity, const counted &array, const char *operation) {
  const std::int16_t kept = std::clamp<std::int16_t>(count, 0, capacity);
  if (kept != count) {
    LOG_ERROR_AS(operation, "%s %d counts %d, taken as %d\n", array.what, array.which, count, kept);
    count = kept;
  }
}

}  // namespace

void bring_counts_into_arrays(const char *operation) {
  for (int code = VIEW_ALL; code <= VIEW_FAVOURITE_LAST; ++code) {
    // The work view is not part of a file: its count is the host's.
    if (const view each = find_view(code); each && code != VIEW_WORK) {
      bring_into_array(*each.count, each.capacity, {"view", code}, operation);
    }
  }
  for (const int kind : {GROUP_GENRE, GROUP_PROVIDER, GROUP_COUNTRY}) {
    const group_table table = table_of_kind(kind);
    bring_into_array(*table.count, table.capacity, {"group list", kind}, operation);
  }
  const group_table favourites = favourite_table();
  bring_into_array(*favourites.count, favourites.capacity, {"group list", GROUP_FAV}, operation);
}

}  // namespace channel::persist
