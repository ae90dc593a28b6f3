// Releasing records. No entry of a view or of the history is ever left pointing to a freed channel.
#pragma once

#include <base/list.h>
#include <channel/records.h>
#include <optional>

#include "channel/store/first_table.h"
#include "channel/store/transponder_matches.h"

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

  // The transponder that a channel hangs from, whatever the channel says; null when it hangs from none.
  tp_ch_st *holder_of(const channel_st &service);

 private:
  list_head *first_ = nullptr;
  // Every channel's transponder, from one walk when the first is asked for: a pass may ask for thousands.
  std::optional<first_table<tp_ch_st>> holders_;
};

// Whether a channel has been doomed. It is freed when its collection goes.
bool is_doomed(const channel_st &service);

// Counts the channel's transponder down and dooms the channel, unless it is doomed already. Where none matches the
// channel, the transponder that it hangs from is counted down: counts that are not the lengths of their lists make a
// file that is read out of frame.
void release_service(channel_st &service, doomed_services &doomed);
// The same in a pass that releases many.
void release_service(channel_st &service, const transponder_matches &matches, doomed_services &doomed);

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
