// Reads the state of the library under test.
#pragma once

#include <channel/records.h>

#include "state.h"

namespace model_tests {

// Every record of a list, in its order.
template <class Record, class Action>
void for_each_below(const list_head &head, const Action &action) {
  for (list_head *node = head.next; node != nullptr && node != &head; node = node->next) {
    action(*reinterpret_cast<Record *>(node));
  }
}

// Where the host keeps a channel's serial number: reserved bytes, which travel with the record through files.
void set_serial(channel_st &service, int serial);

// A pointer that points to no channel of the hierarchy shows up as rch -1; it is not followed.
state observe();

}  // namespace model_tests
