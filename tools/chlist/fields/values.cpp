// Spelling out values, and reading them.
#include "chlist/fields/values.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "chlist/text/utf8.h"

namespace chlist {
namespace {

const word *word_for(const value_range &values, std::int64_t number) {
  const auto found = std::ranges::find(values.words, number, &word::value);
  return found != values.words.end() ? &*found : nullptr;
}

std::optional<std::int64_t> digits_from(const value_range &values, std::string_view text) {
  if (!values.prefix.empty() && text.starts_with(values.prefix)) {
    text.remove_prefix(values.prefix.size());
  }
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool is_whole = error == std::errc() && end == text.data() + text.size();
  return is_whole && number >= values.least && number <= values.most ? std::optional(number) : std::nullopt;
}

}  // namespace

json shown_value(const value_range &values, std::int64_t number) {
  if (number == values.unset) {
    return {};
  }
  switch (values.kind) {
    case value_kind::yes_or_no:
      return number != 0;
    case value_kind::named: {
      const word *named = word_for(values, number);
      return named != nullptr ? std::string(named->text) : fmt::format("{}{}", values.prefix, number);
    }
    default:
      return number;
  }
}

bool spells_unset(const value_range &values, std::string_view text) {
  return values.unset && is_same_name(text, "none");
}

std::optional<std::int64_t> number_from(const value_range &values, std::string_view text) {
  if (const auto number = digits_from(values, text)) {
    return number;
  }
  if (spells_unset(values, text)) {
    return values.unset;
  }
  const std::string spelled = folded(text);
  const auto named =
      std::ranges::find_if(values.words, [&spelled](const word &each) { return folded(each.text) == spelled; });
  return named != values.words.end() ? std::optional(named->value) : std::nullopt;
}

std::string text_of_value(const json &value, std::string_view separator) {
  if (value.is_null()) {
    return "";
  }
  if (value.is_bool()) {
    return value.as_bool() ? "yes" : "no";
  }
  if (value.is_string()) {
    return value.as_string();
  }
  if (!value.is_array()) {
    return value.dump();
  }
  std::string text;
  for (const json &element : value.elements()) {
    text.append(text.empty() ? "" : separator).append(text_of_value(element));
  }
  return text;
}

}  // namespace chlist
