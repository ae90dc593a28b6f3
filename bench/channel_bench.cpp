// channel_bench: times every operation, its floors and its peers over the full list, and closes with a table that sets
// operations and floors side by side. What allocates is measured twice: with memory at hand ("warm"), and with memory
// that the system has to map first ("fresh"). A load is also measured as the first work of a process ("first").
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "first_run.h"
#include "full_store.h"
#include "operations.h"
#include "peers.h"

namespace {

using bench::operation;

enum class memory { warm, fresh };

// Freed memory stays with the process until it is given back on purpose.
void keep_freed_memory() {
  constexpr int more_than_is_ever_freed = 1 << 28;
  constexpr int largest_threshold = 1 << 25;
  bench::require(::mallopt(M_TRIM_THRESHOLD, more_than_is_ever_freed) == 1, "mallopt");
  bench::require(::mallopt(M_MMAP_THRESHOLD, largest_threshold) == 1, "mallopt");
}

void measure(benchmark::State &state, const operation &measured, memory from) {
  const bench::muted_stdout muted;
  bench::reset_the_scene();
  for (auto _ : state) {
    if (measured.prepare != nullptr || from == memory::fresh) {
      state.PauseTiming();
      if (measured.prepare != nullptr) {
        measured.prepare();
      }
      if (from == memory::fresh) {
        ::malloc_trim(0);
      }
      state.ResumeTiming();
    }
    measured.run();
  }
  if (measured.bytes != 0) {
    state.SetBytesProcessed(state.iterations() * measured.bytes);
  }
  state.SetItemsProcessed(state.iterations() * measured.items);
}

std::string run_name(std::string_view operation_name, memory from) {
  return std::string(operation_name) + (from == memory::fresh ? "/fresh" : "/warm");
}

void register_operation(const operation &registered, memory from) {
  benchmark::RegisterBenchmark(run_name(registered.name, from).c_str(),
                               [&registered, from](benchmark::State &state) { measure(state, registered, from); });
}

void register_operations(std::span<const operation> registered) {
  for (const operation &each : registered) {
    register_operation(each, memory::warm);
    if (each.takes_memory) {
      register_operation(each, memory::fresh);
    }
  }
}

// These tell their time themselves.
void register_first_run(const char *name, double (*run)()) {
  benchmark::RegisterBenchmark(name, [run](benchmark::State &state) {
    for (auto _ : state) {
      state.SetIterationTime(run());
    }
  })->UseManualTime();
}

// The console's lines, and at the end the best run of each operation beside the best runs of its floors.
class ratio_reporter : public benchmark::ConsoleReporter {
 public:
  ratio_reporter() : ConsoleReporter(::isatty(STDOUT_FILENO) != 0 ? OO_ColorTabular : OO_Tabular) {}

  void ReportRuns(const std::vector<Run> &runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run &run : runs) {
      if (run.run_type == Run::RT_Iteration && !run.error_occurred && run.iterations > 0) {
        note(run.run_name.function_name, 1e9 * run.cpu_accumulated_time / static_cast<double>(run.iterations));
      }
    }
  }

  void Finalize() override {
    std::printf("\n%-38s %12s   %-38s %12s %8s\n", "operation (CPU time, best run)", "ns", "floor", "ns", "ratio");
    for (const operation &each : bench::operations()) {
      for (const memory from : {memory::warm, memory::fresh}) {
        for (const std::string_view floor : each.floors) {
          print_ratio(each, floor, from);
        }
      }
    }
  }

 private:
  void note(const std::string &name, double nanoseconds) {
    const auto [place, is_new] = best_.try_emplace(name, nanoseconds);
    if (!is_new) {
      place->second = std::min(place->second, nanoseconds);
    }
  }

  void print_ratio(const operation &each, std::string_view floor, memory from) const {
    const auto own = best_.find(run_name(each.name, from));
    // A floor that does not allocate has no fresh variant.
    auto least = best_.find(run_name(floor, from));
    if (least == best_.end()) {
      least = best_.find(run_name(floor, memory::warm));
    }
    if (own != best_.end() && least != best_.end()) {
      std::printf("%-38s %12.1f   %-38s %12.1f %8.2f\n", own->first.c_str(), own->second, least->first.c_str(),
                  least->second, own->second / least->second);
    }
  }

  std::map<std::string, double> best_;
};

}  // namespace

int main(int argc, char **argv) {
  if (bench::was_first_run(argc, argv)) {
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  keep_freed_memory();
  bench::set_the_scene();
  register_operations(bench::operations());
  register_first_run("floor:read_records/first", bench::first_reading);
  register_first_run("load_channel/first", bench::first_load);
  for (const auto peer : bench::peers()) {
    register_operations(peer);
  }
  ratio_reporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
