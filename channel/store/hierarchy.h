// Typed ranges over the networks of a list, the transponders of a network and the channels of a transponder, and the
// allocation and linking of their records. A record begins with its link, so record and node share an address.
#pragma once

#include <base/list.h>
#include <channel/records.h>
#include <cstddef>
#include <cstdlib>
#include <memory>

namespace channel {

// A host may look at a list before the store is initialised: a zeroed head is an empty list.
inline bool is_empty(const list_head &head) { return head.next == nullptr || head.next == &head; }

// A walk in list order. The next node is taken before a record is handed out, so that the record may be unlinked and
// freed while the walk stands on it.
template <class Record>
class records {
 public:
  class iterator {
   public:
    iterator(list_head *node, const list_head *head) : node_(node), next_(node == head ? nullptr : node->next) {}
    Record &operator*() const { return *reinterpret_cast<Record *>(node_); }
    iterator &operator++() {
      node_ = next_;
      next_ = node_->next;
      return *this;
    }
    bool operator!=(const iterator &other) const { return node_ != other.node_; }

   private:
    list_head *node_;
    list_head *next_;
  };

  explicit records(list_head &head) : head_(&head) {}
  [[nodiscard]] iterator begin() const { return {is_empty(*head_) ? head_ : head_->next, head_}; }
  [[nodiscard]] iterator end() const { return {head_, head_}; }

 private:
  list_head *head_;
};

inline void init_lists(channel_list_st &list) {
  list_init(&list.network_list);
  list_init(&list.spare_list_a);
  list_init(&list.spare_list_b);
}

inline auto networks_of(list_head &network_list) { return records<network_ch_st>(network_list); }
inline auto transponders_of(network_ch_st &network) { return records<tp_ch_st>(network.tp_list); }
inline auto services_of(tp_ch_st &transponder) { return records<channel_st>(transponder.rch_list); }

inline void append(list_head &node, list_head &head) {
  if (head.next == nullptr) {
    list_init(&head);
  }
  list_add_tail(&node, &head);
}

// A record that a host brought itself may never have been linked: its link is zero then.
inline void unlink(list_head &node) {
  if (node.next != nullptr && node.prev != nullptr) {
    list_del_init(&node);
  }
}

// The real channel of a view entry, found again from its identity; the entry's cached pointer is not used.
channel_st *resolve(const virtual_channel_st &entry);

// A real channel of which nothing is known: zero but for the fields that have a value of their own for it.
inline constexpr channel_st unset_service = [] {
  channel_st service{};
  service.service_id = 0xFFFF;
  service.pmt_pid = 0xFFFF;
  service.pcr_pid = 0xFFFF;
  service.video_tag = 0xFF;
  service.video_pid = 0xFFFF;
  service.video_ecm_pid = 0xFFFF;
  service.audio_tag = 0xFF;
  service.audio_pid = 0xFFFF;
  service.reserved_pid = 0xFFFF;
  service.reserved_id = 0xFFFF;
  return service;
}();

// Zero-filled memory that goes back with free. Never null: the process stops when there is none left.
void *allocate_zeroed(std::size_t size);

struct freeing {
  void operator()(void *memory) const { std::free(memory); }
};

// Memory of one call, freed when it goes.
template <class Record>
using transient = std::unique_ptr<Record, freeing>;

template <class Record>
Record *allocate_array(std::size_t count) {
  return static_cast<Record *>(allocate_zeroed(count * sizeof(Record)));
}

template <class Record>
Record *allocate_record() {
  return static_cast<Record *>(allocate_zeroed(sizeof(Record)));
}

}  // namespace channel
