// Typed ranges over the networks of a list, the transponders of a network and the channels of a transponder, and the
// linking of their records. A record begins with its link, so record and node share an address.
#pragma once

#include <base/list.h>
#include <channel/records.h>

namespace channel {

// A host may look at a list before the store is initialised: a zeroed head is an empty list.
inline bool is_empty(const list_head &head) { return head.next == nullptr || head.next == &head; }

// Makes a head an empty list, or a node one that is in no list.
inline void clear_link(list_head &link) { link = {&link, &link}; }

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
  clear_link(list.network_list);
  clear_link(list.spare_list_a);
  clear_link(list.spare_list_b);
}

inline auto networks_of(list_head &network_list) { return records<network_ch_st>(network_list); }
inline auto transponders_of(network_ch_st &network) { return records<tp_ch_st>(network.tp_list); }
inline auto services_of(tp_ch_st &transponder) { return records<channel_st>(transponder.rch_list); }

inline void append(list_head &node, list_head &head) {
  if (head.next == nullptr) {
    clear_link(head);
  }
  list_add_tail(&node, &head);
}

// A record that a host brought itself may never have been linked: its link is zero then.
inline void unlink(list_head &node) {
  if (node.next != nullptr && node.prev != nullptr) {
    list_del_init(&node);
  }
}

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

}  // namespace channel
