// What a service must have to be taken: "FIELD=TEXT", as listings and imports are told it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "chlist/fields/service_fields.h"

namespace chlist {

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

}  // namespace chlist
