// What work costs, to be compared with other work of the same run: the machine's other work hardly counts.
#pragma once

#include <algorithm>
#include <ctime>
#include <limits>

namespace test_support {

inline double cpu_seconds() {
  timespec now = {};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// The least time that an action took, of three tries; each is prepared anew.
template <class Prepare, class Action>
double least_cpu_time(const Prepare &prepare, const Action &action) {
  double least = std::numeric_limits<double>::max();
  for (int tries = 0; tries < 3; ++tries) {
    prepare();
    const double begin = cpu_seconds();
    action();
    least = std::min(least, cpu_seconds() - begin);
  }
  return least;
}

}  // namespace test_support
