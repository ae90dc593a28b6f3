// Typed ranges over the networks of a list, the transponders of a network and the channels of a transponder, and the
// linking of their records. A record begins with its link, so record and node share an address.
#pragma once

#include <base/list.h>
#include <channel/records.h>
#include <iterator>

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
    iterator() = default;
    explicit iterator(list_head &head) : node_(is_empty(head) ? &head : head.next), next_(node_->next), head_(&head) {}
    Record &operator*() const { return *reinterpret_cast<Record *>(node_); }
    iterator &operator++() {
      node_ = next_;
      next_ = node_->next;
      return *this;
    }
    [[nodiscard]] bool is_at_end() const { return node_ == head_; }
    bool operator!=(std::default_sentinel_t /*end*/) const { return !is_at_end(); }

   private:
    list_head *node_ = nullptr;
    list_head *next_ = nullptr;
    list_head *head_ = nullptr;
  };

  explicit records(list_head &head) : head_(&head) {}
  [[nodiscard]] iterator begin() const { return iterator(*head_); }
  [[nodiscard]] static std::default_sentinel_t end() { return {}; }

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

// A service and the records that it hangs from.
struct filed_service {
  network_ch_st &network;
  tp_ch_st &transponder;
  channel_st &service;
};

// The services of a list, or of one network, in list order as one walk. A service may be unlinked and freed while the
// walk stands on it; its transponder and its network must stay.
class filed_services {
 public:
  class iterator {
   public:
    explicit iterator(list_head &network_list) : networks_(network_list) { find_service(); }
    explicit iterator(network_ch_st &network) : network_(&network), transponders_(network.tp_list) { find_service(); }
    filed_service operator*() const { return {*network_, *transponder_, *services_}; }
    iterator &operator++() {
      ++services_;
      find_service();
      return *this;
    }
    bool operator!=(std::default_sentinel_t /*end*/) const { return !services_.is_at_end(); }

   private:
    // Goes on into the next transponder, and from the last one into the next network, until there is a service.
    void find_service() {
      while (services_.is_at_end() && !(transponders_.is_at_end() && networks_.is_at_end())) {
        if (transponders_.is_at_end()) {
          network_ = &*networks_;
          ++networks_;
          transponders_ = transponders_of(*network_).begin();
        } else {
          transponder_ = &*transponders_;
          ++transponders_;
          services_ = services_of(*transponder_).begin();
        }
      }
    }

    network_ch_st *network_ = nullptr;
    tp_ch_st *transponder_ = nullptr;
    records<network_ch_st>::iterator networks_;  // at the one behind network_
    records<tp_ch_st>::iterator transponders_;   // at the one behind transponder_
    records<channel_st>::iterator services_;
  };

  explicit filed_services(list_head &network_list) : begin_(network_list) {}
  explicit filed_services(network_ch_st &network) : begin_(network) {}
  [[nodiscard]] iterator begin() const { return begin_; }
  [[nodiscard]] static std::default_sentinel_t end() { return {}; }

 private:
  iterator begin_;
};

inline auto all_services_of(list_head &network_list) { return filed_services(network_list); }
inline auto all_services_of(network_ch_st &network) { return filed_services(network); }

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
