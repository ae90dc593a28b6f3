// What every harness stands on: nothing is printed while it runs, the channel list is empty before and after each
// input, and what must hold is checked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "memory_files.h"
#include "support/byte_reader.h"
#include "support/invariants.h"

namespace fuzz {

using test_support::byte_reader;
using test_support::promises;

// An input is steps of this size, so that one can be changed, or moved, without changing the others. In each, the first
// byte says what is done, and the others how.
constexpr std::size_t step_size = 16;

// What a list from a file of any contents keeps: its counts, its links and its pointers.
constexpr promises of_any_file = {
    .zeros_behind_counts = false, .distinct_favourites = false, .well_kept_groups = false};

// The process stops when something does not hold, and says what.
void require(bool holds, const std::string &what);
void require_invariants(const promises &kept, const std::string &when);

// One input: an empty list and files in memory. Afterwards everything is as it was.
class run {
 public:
  run(const std::uint8_t *data, std::size_t size);
  ~run();
  run(const run &) = delete;
  run &operator=(const run &) = delete;

  // Turns the log on, at the level that the first byte of the input chooses.
  void log() const;
  // Empties everything but the files, in silence.
  static void empty();

  byte_reader input;
  byte_reader options;  // the first step, behind the log level
  memory_files files;

 private:
  int log_level_;
};

}  // namespace fuzz

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
