// Fields are compared as their kind asks for it.
#include "chlist/fields/row_filter.h"

#include <algorithm>
#include <array>

#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr std::array<std::string_view, 2> searched_fields = {"name", "provider"};

bool holds_text(const field &which) {
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

}  // namespace

row_filter::row_filter(std::string_view text) : text_(text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) {
    return;
  }
  field_ = &field_named(text.substr(0, equals));
  text_ = text.substr(equals + 1);
  if (holds_text(*field_)) {
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
    return holds_text(*field_) ? contains_name(cell, text_) : cell.empty();
  }
  return is_same_name(text_of_value(field_named("number").get(row)), text_) ||
         std::ranges::any_of(searched_fields, [&](std::string_view name) {
           const json value = field_named(name).get(row);
           return !value.is_null() && contains_name(text_of_value(value), text_);
         });
}

}  // namespace chlist
