// A host that reports watched channels: the history's operations by one value, and what the history holds.
#pragma once

#include <channel/channel.h>

#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"

namespace test_support {

// The seven values that a channel of the history is known by.
struct watched {
  int tag = 0;
  int net_index = 1;
  int network_id = 1;
  int ts_id = 100;
  std::uint32_t frequency = 11'000'000;
  int service_id = 1;
  int polarisation = 0;

  template <class Function>
  auto call(Function function) const {
    return function(static_cast<std::int8_t>(tag), static_cast<std::uint8_t>(net_index),
                    static_cast<std::uint16_t>(network_id), static_cast<std::uint16_t>(ts_id), frequency,
                    static_cast<std::uint16_t>(service_id), static_cast<std::uint8_t>(polarisation));
  }
};

inline watched service_number(int service_id) { return {.service_id = service_id}; }

inline int check(const watched &sought) { return sought.call(check_same_return_channel); }
inline void watch(const watched &seen) { seen.call(add_return_channel); }
inline int forget(const watched &listed) { return listed.call(remove_return_channel); }

inline std::vector<std::string> writes_of_watching(int level, const watched &seen) {
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
