// A text on its way back: pieces that are kept, and those that the list adds, in their new order.
#pragma once

#include <list>
#include <string>
#include <string_view>

#include "chlist/files/companion.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

struct woven_piece {
  const source_piece *kept = nullptr;  // none of a new service or line
  std::size_t read = nowhere;          // the service that the kept piece is read as
  std::size_t service = nowhere;       // the one of the list
  std::string text{};                  // of a new piece, or one that is changed: without the end of its last line
  bool is_changed = false;

  [[nodiscard]] bool is_service() const { return service != nowhere; }
  [[nodiscard]] std::string_view current() const {
    return kept == nullptr || is_changed ? std::string_view(text) : std::string_view(kept->text);
  }
  void change_to(std::string changed) {
    text = std::move(changed);
    is_changed = true;
  }
};

using woven_row = std::list<woven_piece>;

}  // namespace chlist
