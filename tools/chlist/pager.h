// Reports that are longer than the terminal go through the user's pager.
#pragma once

#include <memory>

#include "chlist/files/descriptor.h"

namespace chlist {

// Whether the user asked for none (--no-pager).
bool &is_without_pager();

// Keeps what is printed on standard output while it lives, where that is a terminal with a pager.
class paged_output {
 public:
  paged_output();
  ~paged_output();
  paged_output(const paged_output &) = delete;
  paged_output &operator=(const paged_output &) = delete;

  // What was kept goes to the terminal: through the pager when it has more lines. However that ends, all has been shown
  // that the user wanted to see. Throws std::system_error when the terminal cannot be written.
  void show();

 private:
  void give_back();

  std::unique_ptr<descriptor> kept_;      // the report
  std::unique_ptr<descriptor> terminal_;  // standard output as it was
};

}  // namespace chlist
