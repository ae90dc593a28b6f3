// Which services are listed, and in what order.
#include "chlist/see/listing.h"

#include <channel/sorting.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>

#include "chlist/closest.h"
#include "chlist/service/names.h"

namespace chlist {
namespace {

constexpr view_sort sorts[] = {
    {"number", SORT_NUMBER, "the channel number, then the minor one"},
    {"name", SORT_CH_NAME, "the name, without regard to case"},
    {"transponder", SORT_TRANSPONDER, "the frequency, then the service id"},
    {"service_id", SORT_SERVICE_ID, "the service id"},
    {"favourite_key", SORT_FAV_DEFAULT, "the position key of the entry"},
    {"order_key", SORT_USER_TYPE, "the key of the user's own order (`chlist set FILE SERVICE order_key=N`)"}};

constexpr std::array<std::string_view, 2> searched_columns = {"name", "provider"};

}  // namespace

row_filter::row_filter(std::string_view text) : text_(text) {
  if (const std::size_t equals = text.find('='); equals != std::string_view::npos) {
    column_ = &column_named(text.substr(0, equals));
    text_ = text.substr(equals + 1);
  }
}

bool row_filter::takes(const listed_service &row) const {
  if (column_ != nullptr) {
    const json value = column_->value(row);
    const bool is_text = value.is_string() || value.is_array();
    return is_text ? contains_name(text_of_value(value), text_) : is_same_name(text_of_value(value), text_);
  }
  return is_same_name(text_of_value(column_named("number").value(row)), text_) ||
         std::ranges::any_of(searched_columns, [&](std::string_view name) {
           const json value = column_named(name).value(row);
           return !value.is_null() && contains_name(text_of_value(value), text_);
         });
}

std::span<const view_sort> all_sorts() { return sorts; }

std::vector<term> terms_of_sorts() {
  std::vector<term> terms;
  for (const view_sort &each : sorts) {
    terms.push_back({std::string(each.name), std::string(each.about)});
  }
  return terms;
}

void sort_view(std::int8_t view, std::string_view sort) {
  const auto *const found = std::ranges::find(sorts, sort, &view_sort::name);
  if (found == std::end(sorts)) {
    throw std::runtime_error(unknown_name("sort", sort, words_of(terms_of_sorts())));
  }
  // The promotion view is only sorted together with the others.
  if (view == VIEW_PROMOTION) {
    sort_vindex_ex(found->type);
  } else {
    sort_vch_type(found->type, view);
  }
}

std::vector<listed_service> filtered(std::int8_t view, const std::vector<row_filter> &filters) {
  std::vector<listed_service> rows = listed_in(view);
  std::erase_if(rows, [&filters](const listed_service &row) {
    return !std::ranges::all_of(filters, [&row](const row_filter &filter) { return filter.takes(row); });
  });
  return rows;
}

}  // namespace chlist
