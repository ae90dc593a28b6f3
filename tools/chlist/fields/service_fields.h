// What can be told of a service and of an entry that shows it, field by field. One table: listings, filters, CSV,
// edits, differences, losses, addresses and help are read from it. Whoever adds a field adds a row.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/fields/field.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

enum class field_owner : std::uint8_t {
  entry,     // of one that shows the service
  service,   // the service's own
  identity,  // what a service is known by
  derived,   // told of the service, and kept elsewhere
};

struct field : field_words {
  field_owner owner = field_owner::service;
  json (*get)(const service_row &row) = nullptr;                               // null when it is not set
  void (*set_number)(line_up_service &service, std::int64_t value) = nullptr;  // null: not a number that can be set
  std::string line_up_service::*text = nullptr;                                // of a text that can be set

  [[nodiscard]] bool is_number() const { return values.kind == value_kind::number; }
};

// In the order of listings.
std::span<const field> service_fields();
std::vector<std::string> names_of_fields();

// Null when there is none of the name.
const field *find_field(std::string_view name);

// Fields by name, "name,number". Both throw std::runtime_error that names the unknown one and those that there are.
std::vector<const field *> fields_named(std::string_view names);
const field &field_named(std::string_view name);

// The number that a text spells for a field that is no text. Throws std::runtime_error that names the field, the text
// and the range, when it is none of the field's values: the same words for the command line, CSV and filters.
std::int64_t number_for(const field &which, std::string_view text);

// Sets a field that can be set. Throws as number_for().
void set_field(line_up_service &service, const field &which, std::string_view text);

}  // namespace chlist
