#include "chlist/exchange/layout/text_units.h"

#include <algorithm>

#include "chlist/exchange/field_reading.h"

namespace chlist {
namespace {

using unit_row = std::vector<text_unit>;

// It goes behind the nearest of the units in front of it that is kept, or in front of all.
void insert_unit(unit_row &kept, const unit_row &now, unit_row::const_iterator which) {
  auto place = kept.begin();
  for (auto before = which; before != now.begin() && place == kept.begin();) {
    --before;
    const auto found = std::ranges::find(kept, before->key, &text_unit::key);
    place = found != kept.end() ? found + 1 : place;
  }
  kept.insert(place, *which);
}

}  // namespace

std::string_view line_end_of(std::string_view text) {
  if (text.ends_with("\r\n")) {
    return "\r\n";
  }
  return text.ends_with('\n') ? "\n" : "";
}

std::string_view without_line_end(std::string_view text) {
  return text.substr(0, text.size() - line_end_of(text).size());
}

std::vector<text_unit> units_by_place(std::string_view text, char separator) {
  unit_row units;
  for (const std::string_view part : split(text, separator)) {
    units.push_back({std::to_string(units.size()), std::string(part)});
  }
  return units;
}

std::string joined_units(const std::vector<text_unit> &units, std::string_view separator) {
  std::string text;
  for (auto each = units.begin(); each != units.end(); ++each) {
    text += (each == units.begin() ? "" : std::string(separator)) + each->text;
  }
  return text;
}

std::vector<text_unit> merged_units(std::vector<text_unit> kept, const std::vector<text_unit> &before,
                                    const std::vector<text_unit> &now) {
  for (auto each = now.begin(); each != now.end(); ++each) {
    if (std::ranges::find(before, *each) != before.end()) {
      continue;
    }
    const auto found = std::ranges::find(kept, each->key, &text_unit::key);
    if (found != kept.end()) {
      found->text = each->text;
    } else {
      insert_unit(kept, now, each);
    }
  }
  std::erase_if(kept, [&](const text_unit &each) {
    const auto has_key = [&](const unit_row &row) {
      return std::ranges::find(row, each.key, &text_unit::key) != row.end();
    };
    return has_key(before) && !has_key(now);
  });
  return kept;
}

}  // namespace chlist
