// Where the records that a reader reads stand. Those of the list in memory, and of lists that hosts get, are blocks of
// their own, since hosts free single records; those of a scan, most of which a merge only looks at, share a few.
#pragma once

#include <base/list.h>
#include <cstddef>
#include <cstdlib>
#include <utility>

#include "channel/store/hierarchy.h"
#include "channel/store/memory.h"
#include "channel/store/release.h"

namespace channel::persist {

// A block for each record.
struct record_heap {
  template <class Record>
  static Record *allocate() {
    return allocate_record<Record>();
  }
  // A record that was not read whole.
  static void give_back(void *record) { std::free(record); }
  static void release(list_head &network_list) { free_hierarchy(network_list); }
};

// Blocks for many records, which go together with the pool.
class record_pool {
 public:
  record_pool() = default;
  ~record_pool() {
    while (newest_ != nullptr) {
      std::free(std::exchange(newest_, newest_->older));
    }
  }
  record_pool(const record_pool &) = delete;
  record_pool &operator=(const record_pool &) = delete;

  template <class Record>
  Record *allocate() {
    static_assert(sizeof(Record) <= sizeof(block::room) && alignof(Record) <= alignof(block));
    if (sizeof newest_->room - used_ < sizeof(Record)) {
      take_block();
    }
    void *record = newest_->room + std::exchange(used_, used_ + sizeof(Record));
    return static_cast<Record *>(record);
  }
  static void give_back(void * /*record*/) {}
  static void release(list_head &network_list) { clear_link(network_list); }

 private:
  struct block {
    block *older;
    alignas(std::max_align_t) std::byte room[65'536 - alignof(std::max_align_t)];
  };

  void take_block() {
    auto *taken = allocate_record<block>();
    taken->older = std::exchange(newest_, taken);
    used_ = 0;
  }

  block *newest_ = nullptr;
  std::size_t used_ = sizeof(block::room);
};

}  // namespace channel::persist
