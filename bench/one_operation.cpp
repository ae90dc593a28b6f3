// one_operation: runs one operation of the catalogue so that a profiler can be switched on for it alone: everything
// that is measured happens below the function measured_run. The operation runs once before, so that nothing is counted
// that only the first call of a process does.
#include <cstdio>
#include <string_view>

#include "full_store.h"
#include "operations.h"

// The statement behind the call keeps it from becoming a jump, which a profiler would not see return.
extern "C" [[gnu::noinline]] void measured_run(void (*run)());

extern "C" void measured_run(void (*run)()) {
  run();
  asm volatile("" : : : "memory");
}

namespace {

using bench::operation;

void run_twice(const operation &measured) {
  const bench::muted_stdout muted;
  bench::reset_the_scene();
  if (measured.prepare != nullptr) {
    measured.prepare();
  }
  measured.run();
  if (measured.prepare != nullptr) {
    measured.prepare();
  }
  measured_run(measured.run);
}

void print_name(std::string_view name, char end) {
  std::printf("%.*s%c", static_cast<int>(name.size()), name.data(), end);
}

// A line for each operation that is no floor: its name, then those of its floors.
void list_operations() {
  for (const operation &each : bench::operations()) {
    if (!each.is_floor()) {
      print_name(each.name, ' ');
      print_name(each.floors[0], each.floors[1].empty() ? '\n' : ' ');
      if (!each.floors[1].empty()) {
        print_name(each.floors[1], '\n');
      }
    }
  }
}

int usage() {
  static_cast<void>(std::fputs("Usage: one_operation NAME | all | --list\n", stderr));
  return 2;
}

}  // namespace

int main(int argc, char **argv) {
  if (argc != 2) {
    return usage();
  }
  const std::string_view wanted = argv[1];
  if (wanted == "--list") {
    list_operations();
    return 0;
  }
  const operation *found = bench::find_operation(wanted);
  if (found == nullptr && wanted != "all") {
    return usage();
  }
  bench::set_the_scene();
  for (const operation &each : bench::operations()) {
    if (wanted == "all" || &each == found) {
      run_twice(each);
    }
  }
  return 0;
}
