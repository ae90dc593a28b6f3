// The entries of a view, sorted by the library and filtered.
#pragma once

#include <channel/records.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/command.h"
#include "chlist/fields/service_fields.h"

namespace chlist {

// What a service must have to be listed.
class row_filter {
 public:
  // "FIELD=TEXT": the text is part of the field's, or, of numbers and of yes and no, spells its value. Any other text:
  // part of the name or of the provider, or the number. Case and accents do not count. Throws when there is no such
  // field, or the text is none of its values.
  explicit row_filter(std::string_view text);

  [[nodiscard]] bool takes(const service_row &row) const;

 private:
  const field *field_ = nullptr;
  std::string text_;
  std::optional<json> value_;  // that the field must have, where it is no text
};

// How a view can be sorted.
struct view_sort {
  std::string_view name;
  std::int8_t type;  // the library's
  std::string_view about;
};

std::span<const view_sort> all_sorts();
std::vector<term> terms_of_sorts();

// Sorts a view of a list as the library does. Throws when there is no sort of that name.
void sort_view(channel_list_st &list, std::int8_t view, std::string_view sort);

// The entries of a view that every filter takes.
std::vector<service_row> filtered(const line_up &list, std::int8_t view, const std::vector<row_filter> &filters);

}  // namespace chlist
