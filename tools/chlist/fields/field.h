// One field of one kind of record. Each kind has a table of them, and whatever shows, compares or explains a record
// goes by its table.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "chlist/fields/values.h"

namespace chlist {

// What is said of a field wherever it occurs.
struct field_words {
  std::string_view name;   // in JSON, filters and CSV: "video_pid"
  std::string_view title;  // in tables: "video PID"
  std::string_view about;  // one line, for help
  value_range values = {};
};

enum class field_role : std::uint8_t {
  key,      // what the record is found by: records that stand for each other have the same
  own,      // what may differ between them
  counted,  // told of the record, and kept elsewhere
};

template <class Row>
struct record_field : field_words {
  field_role role = field_role::own;
  json (*get)(const Row &row) = nullptr;  // null when it is not set
};

// Adds the fields of a record to an object.
template <class Row>
void put_fields(json &object, std::span<const record_field<Row>> fields, const Row &row) {
  for (const record_field<Row> &each : fields) {
    object[std::string(each.name)] = each.get(row);
  }
}

template <class Row>
json json_of_fields(std::span<const record_field<Row>> fields, const Row &row) {
  json object = json::object();
  put_fields(object, fields, row);
  return object;
}

}  // namespace chlist
