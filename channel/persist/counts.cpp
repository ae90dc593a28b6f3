// Files come from outside: what they count is brought into the arrays before anything is read by it.
#include "channel/persist/counts.h"

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

void tell_stray(const counted &array, std::int16_t count, std::int16_t taken, const char *operation) {
  if (count != taken) {
    LOG_ERROR_AS(operation, "%s %d counts %d, taken as %d\n", array.what, array.which, count, taken);
  }
}

void bring_into_array(const view &stray, int code, const char *operation) {
  tell_stray({"view", code}, *stray.count, stray.size(), operation);
  *stray.count = stray.size();
}

void bring_into_array(const group_table &stray, int kind, const char *operation) {
  tell_stray({"group list", kind}, stray.counted(), stray.size(), operation);
  *stray.count = stray.size();
}

}  // namespace

void bring_counts_into_arrays(const char *operation) {
  for (int code = VIEW_ALL; code <= VIEW_FAVOURITE_LAST; ++code) {
    // The work view is not part of a file: its count is the host's.
    if (const view each = find_view(code); each && code != VIEW_WORK) {
      bring_into_array(each, code, operation);
    }
  }
  for (const int kind : {GROUP_GENRE, GROUP_PROVIDER, GROUP_COUNTRY}) {
    bring_into_array(table_of_kind(kind), kind, operation);
  }
  bring_into_array(favourite_table(), GROUP_FAV, operation);
}

}  // namespace channel::persist
