// A host that reports watched channels: the history's operations by one value, and what the history holds.
#pragma once

#include <channel/channel.h>

#include <string>
#include <vector>

#include "support/channel_key.h"
#include "support/log_capture.h"
#include "support/store_builder.h"

namespace test_support {

inline channel_key service_number(int service_id) { return {.service_id = service_id}; }

inline int check(const channel_key &sought) { return sought.call(check_same_return_channel); }
inline void watch(const channel_key &seen) { seen.call(add_return_channel); }
inline int forget(const channel_key &listed) { return listed.call(remove_return_channel); }

inline std::vector<std::string> writes_of_watching(int level, const channel_key &seen) {
  return writes_at(level, [&seen] {
    watch(seen);
    return 0;
  });
}

class history_test : public store_test {
 protected:
  // A current view with the services 1..n, numbered from 1.
  static void view_of(int n) { fill_view(VIEW_ALL, n); }
  static void watch_services(int first, int last) {
    for (int id = first; id <= last; ++id) {
      watch(service_number(id));
    }
  }
  // The listed services, most recent first.
  static std::vector<int> listed() {
    std::vector<int> ids;
    for (int i = 0; i < get_return_channel_num(); ++i) {
      ids.push_back(get_return_channel()[i].vch.service_id);
    }
    return ids;
  }
  static std::vector<int> vindexes() {
    std::vector<int> found;
    for (int i = 0; i < get_return_channel_num(); ++i) {
      found.push_back(get_return_channel()[i].vindex);
    }
    return found;
  }
};

}  // namespace test_support
