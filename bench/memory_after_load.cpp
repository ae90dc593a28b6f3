// memory_after_load: what the library holds on the heap with the full list loaded, after every other operation, and
// after the release. The linker sends the library's own calls of malloc and free through the counters here. Fails when
// anything but the records of the hierarchy is held.
#include <channel/channel.h>
#include <malloc.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "channel/store/hierarchy.h"
#include "full_store.h"
#include "operations.h"

namespace {

struct blocks {
  long count = 0;
  long bytes = 0;  // as the allocator has rounded them up
};

blocks held;
long most_held = 0;

void *count_in(void *memory) {
  if (memory != nullptr) {
    ++held.count;
    held.bytes += static_cast<long>(::malloc_usable_size(memory));
    most_held = held.bytes > most_held ? held.bytes : most_held;
  }
  return memory;
}

void *count_out(void *memory) {
  if (memory != nullptr) {
    --held.count;
    held.bytes -= static_cast<long>(::malloc_usable_size(memory));
  }
  return memory;
}

}  // namespace

extern "C" {

void *__real_malloc(std::size_t size);
void *__real_calloc(std::size_t items, std::size_t size);
void *__real_realloc(void *memory, std::size_t size);
void __real_free(void *memory);

void *__wrap_malloc(std::size_t size);
void *__wrap_calloc(std::size_t items, std::size_t size);
void *__wrap_realloc(void *memory, std::size_t size);
void __wrap_free(void *memory);

void *__wrap_malloc(std::size_t size) { return count_in(__real_malloc(size)); }
void *__wrap_calloc(std::size_t items, std::size_t size) { return count_in(__real_calloc(items, size)); }
void *__wrap_realloc(void *memory, std::size_t size) { return count_in(__real_realloc(count_out(memory), size)); }
void __wrap_free(void *memory) { __real_free(count_out(memory)); }
}

namespace {

struct records_held : blocks {
  long own_bytes = 0;  // the records' own sizes
};

template <class Record>
void add(records_held &sum, Record &record) {
  ++sum.count;
  sum.bytes += static_cast<long>(::malloc_usable_size(&record));
  sum.own_bytes += static_cast<long>(sizeof record);
}

records_held records_of_hierarchy() {
  records_held sum;
  for (network_ch_st &network : channel::networks_of(get_channel_list()->network_list)) {
    add(sum, network);
    for (tp_ch_st &transponder : channel::transponders_of(network)) {
      add(sum, transponder);
      for (channel_st &service : channel::services_of(transponder)) {
        add(sum, service);
      }
    }
  }
  return sum;
}

// Prints what is held; true when it is the records and nothing else.
bool print_held(const char *when) {
  const records_held records = records_of_hierarchy();
  const long other_blocks = held.count - records.count;
  const long other_bytes = held.bytes - records.bytes;
  std::printf("%-28s %8ld %12ld %12ld %8ld %12ld\n", when, records.count, records.own_bytes, records.bytes,
              other_blocks, other_bytes);
  return other_blocks == 0 && other_bytes == 0;
}

void run_every_operation() {
  const bench::muted_stdout muted;
  for (const bench::operation &each : bench::operations()) {
    if (!each.is_floor()) {
      bench::restore_full_store();
      if (each.prepare != nullptr) {
        each.prepare();
      }
      each.run();
    }
  }
  bench::restore_full_store();
}

// The whole heap, whoever asked for it; the allocator adds a few bytes to each block.
long heap_in_use() { return static_cast<long>(::mallinfo2().uordblks); }

}  // namespace

int main() {
  std::printf("%-28s %8s %12s %12s %8s %12s\n", "held by the library", "records", "own bytes", "on the heap", "others",
              "on the heap");
  bench::build_full_store();
  reset_channel_list();
  const long heap_before = heap_in_use();
  most_held = 0;
  {
    const bench::muted_stdout muted;
    bench::require(load_channel(bench::list_file, 255) == CHANNEL_LIST_VERSION, "load_channel");
  }
  const long most_while_loading = most_held;
  const long heap_with_list = heap_in_use();
  bool only_records = print_held("after load_channel");
  run_every_operation();
  only_records = print_held("after every operation") && only_records;
  reset_channel_list();
  only_records = print_held("after reset_channel_list") && only_records;
  std::printf("most held while loading: %ld bytes; the heap grew by %ld bytes\n", most_while_loading,
              heap_with_list - heap_before);
  return only_records ? EXIT_SUCCESS : EXIT_FAILURE;
}
