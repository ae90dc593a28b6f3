// Silence, an empty list, and the end of the process.
#include "harness.h"

#include <base/verbosity.h>
#include <channel/channel.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace fuzz {
namespace {

void set_log_level(int level) { std::fill(std::begin(verbosity_map), std::end(verbosity_map), level); }

int level_chosen_by(std::uint8_t byte) {
  constexpr std::array levels = {-1, 0, 1, 2, 3, 5};
  return levels[byte % levels.size()];
}

}  // namespace

void require(bool holds, const std::string &what) {
  if (!holds) {
    dprintf(STDERR_FILENO, "does not hold: %s\n", what.c_str());
    std::abort();
  }
}

void require_invariants(const promises &kept, const std::string &when) {
  const std::string complaint = test_support::broken_invariant(kept);
  require(complaint.empty(), when + ": " + complaint);
}

run::run(const std::uint8_t *data, std::size_t size)
    : input({data, size}), options(input.part(step_size)), log_level_(level_chosen_by(options.byte())) {
  empty();
}

void run::empty() {
  set_log_level(-1);
  reset_channel_list();
  init_vindex(VIEW_WORK);
  init_return_channel();
  set_limited_channel_flag(0);
  set_target_dir("/");
}

void run::log() const { set_log_level(log_level_); }

run::~run() {
  require(files.open_files() == 0, "every file is closed");
  empty();
  require_invariants({}, "after the input");
}

}  // namespace fuzz

// Log lines are made, but go nowhere. The descriptors stay what they are: sanitizers and the fuzzer report there.
extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/) {
  stdout = std::fopen("/dev/null", "w");
  stderr = std::fopen("/dev/null", "w");
  return 0;
}
