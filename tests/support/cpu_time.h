// What work costs, to be compared with other work of the same run: the machine's other work hardly counts.
#pragma once

#include <sys/resource.h>

#include <algorithm>
#include <ctime>
#include <limits>

namespace test_support {

// Of this thread: where the time of a process is limited, its own clock goes in ticks of milliseconds.
inline double cpu_seconds() {
  timespec now = {};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// That of the programs that this one has started and waited for.
inline double cpu_seconds_of_programs() {
  rusage used = {};
  ::getrusage(RUSAGE_CHILDREN, &used);
  return static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
         1e-6 * static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec);
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
