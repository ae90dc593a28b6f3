#include "resource_limits.h"

#include "rounds.h"

#include <csignal>
#include <cstdlib>
#include <new>

namespace test_support {
namespace {

// A process that has more than this already gets no more.
constexpr rlim_t nothing = 1;

bool limit_memory(rlim_t size) {
  rlimit limit = {};
  getrlimit(RLIMIT_AS, &limit);
  limit.rlim_cur = size;
  setrlimit(RLIMIT_AS, &limit);
  rlimit kept = {};
  return getrlimit(RLIMIT_AS, &kept) == 0 && kept.rlim_cur == size;
}

rlim_t largest_memory() {
  rlimit limit = {};
  getrlimit(RLIMIT_AS, &limit);
  return limit.rlim_max;
}

}  // namespace

file_size_limit::file_size_limit(rlim_t size) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
  getrlimit(RLIMIT_FSIZE, &before_);
  const rlimit limit = {size, before_.rlim_max};
  setrlimit(RLIMIT_FSIZE, &limit);
}

file_size_limit::~file_size_limit() {
  setrlimit(RLIMIT_FSIZE, &before_);
  std::signal(SIGXFSZ, signal_);
}

no_memory_of::no_memory_of(std::size_t size) {
  limit_memory(nothing);
  while (void *memory = std::malloc(size)) {
    taken_ = new (memory) block{taken_};
  }
}

no_memory_of::~no_memory_of() {
  end();
  while (taken_ != nullptr) {
    block *freed = taken_;
    taken_ = freed->next;
    std::free(freed);
  }
}

void no_memory_of::end() { limit_memory(largest_memory()); }

bool no_memory_of::is_possible() {
  if (is_sanitized) {
    return false;
  }
  const bool is_kept = limit_memory(nothing);
  end();
  return is_kept;
}

}  // namespace test_support
