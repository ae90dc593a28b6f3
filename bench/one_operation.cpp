// one_operation: runs operations of the catalogue so that a profiler can be switched on for each alone: everything that
// is measured happens below the function measured_run, and measurement_ends is called behind it. Each operation runs
// once before, so that nothing is counted that only the first call of a process does.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

#include "full_store.h"
#include "operations.h"

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_START_INSTRUMENTATION static_cast<void>(0)
#define CALLGRIND_STOP_INSTRUMENTATION static_cast<void>(0)
#endif

// The statement behind the call keeps it from becoming a jump, which a profiler would not see return.
extern "C" {
[[gnu::noinline]] void measured_run(void (*run)());
[[gnu::noinline]] void measurement_ends();
}

extern "C" void measured_run(void (*run)()) {
  run();
  asm volatile("" : : : "memory");
}

// Where a profiler that cannot see a function return stops counting.
extern "C" void measurement_ends() { asm volatile("" : : : "memory"); }

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
  CALLGRIND_START_INSTRUMENTATION;
  measured_run(measured.run);
  CALLGRIND_STOP_INSTRUMENTATION;
  measurement_ends();
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

std::string_view kind_of(bench::growth grows) {
  switch (grows) {
    case bench::growth::as_sorting:
      return "sorts";
    case bench::growth::with_view:
      return "views";
    default:
      return "walks";
  }
}

void list_growing() {
  for (const operation &each : bench::operations()) {
    if (each.grows != bench::growth::not_measured) {
      print_name(each.name, ' ');
      print_name(kind_of(each.grows), '\n');
    }
  }
}

int usage() {
  static_cast<void>(std::fputs("Usage: one_operation [--services N] NAME... | all | --list | --growing\n"
                               "Lists of other sizes than the full one take only what --growing lists.\n",
                               stderr));
  return 2;
}

void run_all() {
  bench::set_the_scene();
  for (const operation &each : bench::operations()) {
    run_twice(each);
  }
}

// False when a name is none of the catalogue's, or needs the full list.
bool run_named(std::span<char *const> names, int services) {
  const auto fits = [services](const char *name) {
    const operation *found = bench::find_operation(name);
    return found != nullptr && (services == MAX_CHANNEL || found->grows != bench::growth::not_measured);
  };
  if (names.empty() || !std::all_of(names.begin(), names.end(), fits)) {
    return false;
  }
  bench::set_the_scene(services);
  for (const char *name : names) {
    run_twice(*bench::find_operation(name));
  }
  return true;
}

}  // namespace

int main(int argc, char **argv) {
  std::span<char *const> words(argv + 1, static_cast<std::size_t>(std::max(argc - 1, 0)));
  int services = MAX_CHANNEL;
  if (words.size() > 2 && words[0] == std::string_view("--services")) {
    services = std::atoi(words[1]);
    words = words.subspan(2);
  }
  if (services < 1 || services > bench::most_services || words.empty()) {
    return usage();
  }
  const std::string_view first = words[0];
  if (first == "--list" || first == "--growing") {
    first == "--list" ? list_operations() : list_growing();
    return 0;
  }
  if (first == "all" && services == MAX_CHANNEL) {
    run_all();
    return 0;
  }
  return run_named(words, services) ? 0 : usage();
}
