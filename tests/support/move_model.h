// What moving entries does, step by step: every shift of entries that receivers perform, one after the other, on copies
// of the views with room around the arrays, so that a shift may run past them. Slow, and independent of the library.
//
// Beside the steps stand the rules that keep a move from losing entries: a channel that the service-type view lacks is
// not mirrored, a slot of that view is taken out once, a service-type view that is the current one is not rearranged
// twice, and a block whose destination was itself taken out, with everything behind it, ends where the view ends.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <vector>

#include "support/view_cases.h"

namespace test_support {

class modelled_view {
 public:
  // Looks at the first slots of the view, as many as window; further shifts run into the room behind.
  modelled_view(std::int8_t code, int window, int room)
      : code_(code), count_(*get_virtual_channel_vnumber(code)), window_(std::min(window, capacity_of(code))),
        slots_(static_cast<std::size_t>(window_ + room)) {
    std::copy_n(get_virtual_channel_st(code), window_, slots_.begin());
  }

  [[nodiscard]] int count() const { return count_; }
  [[nodiscard]] bool is(std::int8_t code) const { return code_ == code; }
  virtual_channel_st &operator[](int position) { return slots_.at(static_cast<std::size_t>(position)); }

  // Moves n entries that begin at one position to another, over what is there.
  void shift(int to, int from, int n) {
    if (n > 0) {
      ASSERT_LE(static_cast<std::size_t>(std::max(to, from) + n), slots_.size());
      std::memmove(&(*this)[to], &(*this)[from], static_cast<std::size_t>(n) * sizeof(virtual_channel_st));
    }
  }

  // Where the channel of an entry stands; without a frequency neither tag nor polarisation is compared.
  [[nodiscard]] int find(const virtual_channel_st &sought) const {
    for (int i = 0; i < count_; ++i) {
      const virtual_channel_st &entry = slots_[static_cast<std::size_t>(i)];
      const bool same_ids = entry.net_index == sought.net_index && entry.network_id == sought.network_id &&
                            entry.ts_id == sought.ts_id && entry.service_id == sought.service_id;
      const auto [low, high] = std::minmax(entry.frequency, sought.frequency);
      const bool same_signal =
          entry.vch_tag == sought.vch_tag && entry.polarisation == sought.polarisation && high - low < 2500;
      if (same_ids && (sought.frequency == 0 || same_signal)) {
        return i;
      }
    }
    return -1;
  }

  [[nodiscard]] ::testing::AssertionResult agrees() const {
    if (*get_virtual_channel_vnumber(code_) != count_) {
      return ::testing::AssertionFailure()
             << "view " << int{code_} << " counts " << *get_virtual_channel_vnumber(code_);
    }
    const virtual_channel_st *entries = get_virtual_channel_st(code_);
    for (int i = 0; i < window_; ++i) {
      const virtual_channel_st &expected = slots_[static_cast<std::size_t>(i)];
      if (std::memcmp(entries + i, &expected, sizeof expected) != 0) {
        return ::testing::AssertionFailure() << "view " << int{code_} << " of " << count_ << " holds "
                                             << entries[i].service_id << " at " << i << ", not " << expected.service_id;
      }
    }
    return ::testing::AssertionSuccess();
  }

 private:
  static int capacity_of(std::int8_t code) {
    const std::vector<view_case> views = every_view();
    return std::find_if(views.begin(), views.end(), [code](const view_case &each) { return each.code == code; })
        ->capacity;
  }

  std::int8_t code_;
  int count_;
  int window_;
  std::vector<virtual_channel_st> slots_;
};

// The current view and the service-type view as they stand when the model is made.
class move_model {
 public:
  explicit move_model(int window = MAX_CHANNEL)
      : services_are_current_(get_channel_list()->service_type == get_vindex_type()),
        uses_group_list_(get_channel_list()->use_group_list != 0), current_(get_vindex_type(), window, room()),
        services_(get_channel_list()->service_type, window, room()) {}

  void move(int destination, const std::vector<std::int16_t> &sources) {
    if (sources.size() == 1) {
      move_one(destination, sources[0]);
    } else {
      move_several(destination, sources);
    }
  }

  [[nodiscard]] ::testing::AssertionResult agrees() const {
    const ::testing::AssertionResult current_agrees = current_.agrees();
    return current_agrees && !services_are_current_ ? services_.agrees() : current_agrees;
  }

 private:
  using block = std::vector<virtual_channel_st>;

  // No shift reaches further than both counts behind the last slot looked at.
  static int room() {
    return *get_virtual_channel_vnumber(get_vindex_type()) +
           *get_virtual_channel_vnumber(get_channel_list()->service_type) + 2;
  }

  modelled_view &services() { return services_are_current_ ? current_ : services_; }

  void move_one(int destination, int source) {
    const virtual_channel_st entry = current_[source];
    const int service_source = services().find(entry);
    const int service_destination = services().find(current_[destination]);
    current_.shift(source, source + 1, current_.count() - source - 1);
    current_.shift(destination + 1, destination, current_.count() - destination);
    current_[destination] = entry;
    if (uses_group_list_ && !services_are_current_ && service_source >= 0 && service_destination >= 0) {
      services_.shift(service_source, service_source + 1, services_.count() - service_source - 1);
      services_.shift(destination + 1, destination, services_.count() - service_destination);
      services_[service_destination] = entry;
    }
  }

  void move_several(int destination, const std::vector<std::int16_t> &sources) {
    const int service_destination = services().find(current_[destination]);
    const bool rearranges = uses_group_list_ && !services_are_current_ && service_destination >= 0;
    block from_current;
    block from_services;
    std::set<int> taken;
    for (const std::int16_t source : sources) {
      from_current.push_back(current_[source]);
      const int service_source = services().find(current_[source]);
      if (service_source >= 0 && taken.insert(service_source).second) {
        from_services.push_back(services()[service_source]);
      }
      current_[source] = {};
      if (service_source >= 0 && (rearranges || services_are_current_ || !uses_group_list_)) {
        services()[service_source] = {};
      }
    }
    rearrange(current_, destination, from_current);
    if (rearranges) {
      rearrange(services_, service_destination, from_services);
    }
  }

  static void rearrange(modelled_view &view, int destination, const block &moved) {
    int working_count = view.count();
    for (int position = 0; position < working_count;) {
      if (view[position].rch != nullptr) {
        ++position;
        continue;
      }
      view.shift(position, position + 1, working_count - position - 1);
      if (position < destination) {
        --destination;
      }
      --working_count;
    }
    const int length = static_cast<int>(moved.size());
    destination = std::min(destination, view.count() - length - 1);
    if (destination >= 0) {
      view.shift(destination + length, destination, working_count - destination);
    }
    for (int i = 0; i < length; ++i) {
      view[destination + 1 + i] = moved[static_cast<std::size_t>(i)];
    }
  }

  bool services_are_current_;
  bool uses_group_list_;
  modelled_view current_;
  modelled_view services_;
};

}  // namespace test_support
