// Records that a test owns until the store takes them.
#pragma once

#include <cstdlib>
#include <memory>

namespace test_support {

struct free_record {
  void operator()(void *record) const { std::free(record); }
};

template <class Record>
using owned = std::unique_ptr<Record, free_record>;

}  // namespace test_support
