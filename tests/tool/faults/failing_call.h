// Programs whose n-th call to the file system fails.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <string>

#include "support/temp_dir.h"

namespace tool_test {

// For the programs that start while it lives, the n-th call to the file system fails; for forks of the test, the n-th
// behind count_calls_from_here().
class failing_call {
 public:
  failing_call(int n, const std::string &told_in) : told_in_(told_in) {
    ::setenv("LD_PRELOAD", FAILING_CALLS_LIBRARY, 1);
    ::setenv("FAILING_CALL", std::to_string(n).c_str(), 1);
    ::setenv("FAILED_CALL", told_in.c_str(), 1);
    std::filesystem::remove(told_in);
  }
  ~failing_call() {
    for (const char *name : {"LD_PRELOAD", "FAILING_CALL", "FAILED_CALL"}) {
      ::unsetenv(name);
    }
  }
  failing_call(const failing_call &) = delete;
  failing_call &operator=(const failing_call &) = delete;

  // The name of the call that failed; empty when there was none any more.
  [[nodiscard]] std::string name() const { return test_support::read_file(told_in_); }

 private:
  std::string told_in_;
};

}  // namespace tool_test
