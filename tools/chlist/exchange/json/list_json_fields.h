// The fields of the records of a channel file as JSON has them: by name, with their place in the record, their type and
// what they are when nothing is said. Reading and writing go by the same tables.
#pragma once

#include <channel/records.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace chlist {

enum class field_kind {
  number,    // signed or unsigned, 1 to 8 bytes
  text,      // in any table of characters, with zeros behind it; what stands there otherwise is told by its bytes
  length,    // of the text that the row before describes, unless it is said
  reserved,  // hexadecimal digits for each byte
};

struct json_field {
  std::string_view name;
  field_kind kind;
  std::size_t offset;
  std::size_t size;
  bool is_signed = false;
  bool is_needed = false;   // always there; others may be left out when they are what they are without
  std::int64_t absent = 0;  // of a number
};

// A record in memory as bytes.
using record_bytes = std::span<std::byte>;
using const_record_bytes = std::span<const std::byte>;

std::span<const json_field> fields_of_list();
std::span<const json_field> fields_of_group();
std::span<const json_field> fields_of_entry();
std::span<const json_field> fields_of_network();
std::span<const json_field> fields_of_transponder();
std::span<const json_field> fields_of_service();

// An array of records within the list, with its count: a group table or a view.
struct json_array {
  std::string_view name;
  std::string_view count_name;
  std::size_t offset;
  std::size_t count_offset;
  std::size_t capacity;
  std::size_t stride;
  std::span<const json_field> (*fields)();
};

// In the order of the file. The favourite groups' entries are as many arrays as there are groups.
std::span<const json_array> groups_of_list();
std::span<const json_array> views_of_list();

}  // namespace chlist
