// The entries of a view, sorted by the library and filtered.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/command.h"
#include "chlist/service/columns.h"

namespace chlist {

// What a service must have to be listed.
class row_filter {
 public:
  // "COLUMN=TEXT": the text is part of the column's, or, of numbers and of yes and no, all of it. Any other text: part
  // of the name or of the provider, or the number. Case does not count. Throws when there is no such column.
  explicit row_filter(std::string_view text);

  [[nodiscard]] bool takes(const listed_service &row) const;

 private:
  const column *column_ = nullptr;
  std::string text_;
};

// How a view can be sorted.
struct view_sort {
  std::string_view name;
  std::int8_t type;  // the library's
  std::string_view about;
};

std::span<const view_sort> all_sorts();
std::vector<term> terms_of_sorts();

// Sorts a view of the list in memory by the library. Throws when there is no sort of that name.
void sort_view(std::int8_t view, std::string_view sort);

// The entries of a view that every filter takes.
std::vector<listed_service> filtered(std::int8_t view, const std::vector<row_filter> &filters);

}  // namespace chlist
