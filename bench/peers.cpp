// Which peers there are was decided when the program was built.
#include "peers.h"

namespace bench {

std::vector<std::span<const operation>> peers() {
  std::vector<std::span<const operation>> found;
#ifdef BENCH_HAS_SQLITE
  found.push_back(sqlite_operations());
#endif
#ifdef BENCH_HAS_DVBV5
  found.push_back(dvbv5_operations());
#endif
  return found;
}

}  // namespace bench
