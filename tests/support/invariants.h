// What holds of the channel list between any two calls of the interface, whatever the calls were. Free of the test
// framework and of the library's internals.
#pragma once

#include <string>

namespace test_support {

// Invariants that some operations are documented to give up; a test that used one of them switches the promise off.
struct promises {
  bool counts = true;               // releasing a channel may count another transponder down than its own
  bool zeros_behind_counts = true;  // moves and the sort by flag leave copies behind a count
  bool distinct_favourites = true;  // a host inserts what it likes, and block moves may leave copies at a group's end
  bool distinct_history = true;     // an addition by another frequency than the entry's own is not recognised
  bool well_kept_groups = true;     // a channel file brings what groups it likes
};

// The first invariant that does not hold, in words; empty when all of them do:
// - the lists are well linked, and every count in them is the length of its list;
// - counts of views, providers and favourite groups lie inside their arrays, and what is behind them is zero;
// - every pointer to a real channel, in views and in the history, is null or points to one in the hierarchy;
// - the current view is one of the views;
// - providers are sorted without regard to case, their ids and those of the favourite groups are unique;
// - no favourite group, and not the history, holds a channel twice.
std::string broken_invariant(const promises &kept = {});

}  // namespace test_support
