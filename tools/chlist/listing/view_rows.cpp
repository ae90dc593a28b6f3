// Which services are listed, and in what order.
#include "chlist/listing/view_rows.h"

#include <channel/sorting.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <stdexcept>
#include <utility>

#include "channel/store/service_index.h"
#include "channel/vindex/sorting.h"
#include "chlist/closest.h"
#include "chlist/line_up/selection.h"
#include "chlist/list_contents.h"
#include "chlist/report.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr view_sort sorts[] = {
    {"number", SORT_NUMBER, "the channel number, then the minor one"},
    {"name", SORT_CH_NAME, "the name, without regard to case"},
    {"transponder", SORT_TRANSPONDER, "the frequency, then the service id"},
    {"service_id", SORT_SERVICE_ID, "the service id"},
    {"favourite_key", SORT_FAV_DEFAULT, "the position key of the entry"},
    {"order_key", SORT_USER_TYPE, "the key of the user's own order (`chlist set FILE SERVICE order_key=N`)"}};

constexpr std::array<std::string_view, 2> searched_fields = {"name", "provider"};

bool is_text(const field &which) {
  return which.values.kind == value_kind::text || which.values.kind == value_kind::texts ||
         which.values.kind == value_kind::named;
}

// A part of one of the names will do.
void must_name_a_value(const field &which, std::string_view text) {
  const auto has_part = [text](const word &each) { return contains_name(each.text, text); };
  if (which.values.kind == value_kind::named && std::ranges::none_of(which.values.words, has_part)) {
    number_for(which, text);
  }
}

// The list is the caller's to change, through a view of it as well.
std::span<virtual_channel_st> entries_in(channel_list_st & /*list*/, const list_view &view) {
  return {const_cast<virtual_channel_st *>(view.slots.data()), view.size()};
}

}  // namespace

row_filter::row_filter(std::string_view text) : text_(text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) {
    return;
  }
  field_ = &field_named(text.substr(0, equals));
  text_ = text.substr(equals + 1);
  if (is_text(*field_)) {
    must_name_a_value(*field_, text_);
  } else if (!text_.empty()) {
    value_ = shown_value(field_->values, number_for(*field_, text_));
  }
}

bool row_filter::takes(const service_row &row) const {
  if (value_) {
    return field_->get(row) == *value_;
  }
  if (field_ != nullptr) {
    const std::string cell = text_of_value(field_->get(row));
    return is_text(*field_) ? contains_name(cell, text_) : cell.empty();
  }
  return is_same_name(text_of_value(field_named("number").get(row)), text_) ||
         std::ranges::any_of(searched_fields, [&](std::string_view name) {
           const json value = field_named(name).get(row);
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

void sort_view(channel_list_st &list, std::int8_t view, std::string_view sort) {
  const auto *const found = std::ranges::find(sorts, sort, &view_sort::name);
  if (found == std::end(sorts)) {
    throw std::runtime_error(unknown_name("sort", sort, words_of(terms_of_sorts())));
  }
  channel::service_index index(list);
  const std::vector<list_view> views = views_of(std::as_const(list));
  const list_view &sorted = *std::ranges::find(views, view, &list_view::code);
  const std::span<virtual_channel_st> entries = entries_in(list, sorted);
  for (virtual_channel_st &entry : entries) {
    entry.rch = index.look_up(channel::identity_of(entry));
  }
  channel::qsort_virtual_channel(entries, found->type);
}

std::vector<service_row> filtered(const line_up &list, std::int8_t view, const std::vector<row_filter> &filters) {
  std::vector<service_row> rows = rows_of(list, view);
  std::erase_if(rows, [&filters](const service_row &row) {
    return !std::ranges::all_of(filters, [&row](const row_filter &filter) { return filter.takes(row); });
  });
  return rows;
}

}  // namespace chlist
