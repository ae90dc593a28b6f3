// Releasing records. No entry of a view or of the history is ever left pointing to a freed channel.
#pragma once

#include <base/list.h>
#include <channel/records.h>

namespace channel {

// Real channels on their way out. Each is taken out of the hierarchy when it is added; together they are forgotten by
// the views and the history in one pass, and freed, when the collection goes.
class doomed_services {
 public:
  doomed_services() = default;
  ~doomed_services();
  doomed_services(const doomed_services &) = delete;
  doomed_services &operator=(const doomed_services &) = delete;

  void add(channel_st &service);
  // Every channel of a transponder. Its count is the caller's to lower.
  void add_all(tp_ch_st &transponder);

 private:
  list_head *first_ = nullptr;
};

// Counts the channel's transponder down and dooms the channel, unless it is doomed already.
void release_service(channel_st &service, doomed_services &doomed);

// Frees a transponder and dooms its channels. The network's count is the caller's to lower.
void release_transponder(tp_ch_st &transponder, doomed_services &doomed);

// Frees a network with its transponders, dooms their channels, and counts the list's networks down.
void release_network(network_ch_st &network, doomed_services &doomed);

// Takes a network or transponder out of its list and frees it; its own list must be empty.
void free_record(list_head &node);

// Releases every network below a head with all that hangs from it; the head is empty afterwards.
void release_hierarchy(list_head &network_list);

// The same for records that no view and no host has seen yet: nothing points to their channels.
void free_hierarchy(list_head &network_list);

// Counts in records never fall below 0, whatever a host has written there.
template <class Count>
void count_down(Count &count) {
  if (count != 0) {
    --count;
  }
}

}  // namespace channel
