// What a value may be, and how it is spelled: one reading of texts for the command line, for CSV and for filters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "chlist/json/json.h"

namespace chlist {

// A number that a word stands for.
struct word {
  std::string_view text;
  std::int64_t value = 0;
};

enum class value_kind : std::uint8_t {
  text,
  number,
  yes_or_no,
  named,  // a number that is shown by its name
  texts,  // several; only shown
};

struct value_range {
  value_kind kind = value_kind::text;
  std::int64_t least = 0;
  std::int64_t most = 0;
  std::string_view text = {};              // as help and refusals have it: "0 to 8191, or none"
  std::optional<std::int64_t> unset = {};  // is shown as nothing, and spelled "none"; a text has any to say so
  std::span<const word> words = {};  // of named values and of switches; the first of a number is the one that is shown
  std::string_view prefix = {};      // in front of a number that has no name: "type "
};

// Nothing for what is not set, the name of a number that has one, true or false.
json shown_value(const value_range &values, std::int64_t number);

// Whether a text says that a value that can be unset is: "none", whatever its case.
bool spells_unset(const value_range &values, std::string_view text);

// The number that a text spells; case does not count. None when it is none of the values.
std::optional<std::int64_t> number_from(const value_range &values, std::string_view text);

// A value as a table or CSV shows it: nothing for null, the text itself, true as "yes" and false as "no", the elements
// of an array with a separator between them.
std::string text_of_value(const json &value, std::string_view separator = ", ");

}  // namespace chlist
