// What holds of a channel list that came from a file, or that was changed by one.
#pragma once

#include "harness.h"

namespace fuzz {

// Fills the side files as the options say: none, whole, or short.
void put_side_files(run &run);

// What the list in memory is at one time. One at a time.
class list_snapshot {
 public:
  list_snapshot();
  [[nodiscard]] bool is_still_true() const;
};

// Saves the list and loads it again: what a load changes on purpose is changed then.
void reload(run &run);

// A list that was loaded, saved and loaded is saved as the same bytes again. The list is empty afterwards.
void require_same_when_saved_again(run &run);

}  // namespace fuzz
