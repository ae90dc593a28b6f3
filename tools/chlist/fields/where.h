// Conditions on services in the words of the table of fields: `provider=Sky scrambled=yes name~"HD$"`.
#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "chlist/fields/service_fields.h"
#include "chlist/text/term.h"

namespace chlist {

// Conditions that stand side by side must all be met, as with "and"; "or" binds less than that, "not" more, and
// brackets more than all.
//   FIELD=VALUE FIELD!=VALUE   the whole value, as the table of fields spells it; texts without regard to case and
//                              accents; of several groups one must be it; "none" or "" is what is not set
//   FIELD~VALUE FIELD!~VALUE   a regular expression that is found in the value as listings show it, or is not
//   FIELD<VALUE FIELD>VALUE    of numbers; what is not set is neither
// A value with blanks or brackets stands in quotes, single or double.
class where {
 public:
  // Throws std::runtime_error that tells at which character of what the text cannot be understood, and why.
  explicit where(std::string_view text, std::string_view called = "--where");

  // What people type to find a service. "FIELD=TEXT": the text is part of the field's, or spells its value; of numbers
  // and of yes and no only that. Any other text: part of the name or of the provider, or the number. Case and accents
  // do not count. Throws std::runtime_error when there is no such field, or the text is none of its values.
  static where has(std::string_view text);

  [[nodiscard]] bool takes(const service_row &row) const { return takes_(row); }

 private:
  explicit where(std::function<bool(const service_row &)> takes) : takes_(std::move(takes)) {}

  std::function<bool(const service_row &)> takes_;
};

// The operators, for the help.
std::vector<term> terms_of_conditions();

}  // namespace chlist
