// Single records of a channel file to JSON and back. Whatever a JSON text can say wrong ends in an error that tells
// where.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "chlist/exchange/json/list_json_fields.h"
#include "chlist/json/json.h"

namespace chlist {

// Throws std::runtime_error "PATH: WHY"; the path is that of the value in the text, like "$.networks[2].net_index".
[[noreturn]] void refuse_json(const std::string &path, const std::string &why);

std::string hex_of(const_record_bytes bytes);
// Throws when it is no text of as many hexadecimal bytes; any number of them when none is given.
std::string bytes_of_hex(const json &value, const std::string &path);

// Fields in the order of the table; those that have nothing to say are left out.
json json_of_record(const_record_bytes record, std::span<const json_field> fields);

// Fills a record, zero before. Members that are no fields are the caller's when it names them.
void fill_record(record_bytes record, const json &object, std::span<const json_field> fields, const std::string &path,
                 std::span<const std::string_view> others = {});

// A number of a record, in the machine's order of bytes.
std::int64_t number_in(const_record_bytes record, const json_field &field);
void put_number(record_bytes record, const json_field &field, std::int64_t value);

// The integer of a JSON value within the range of a field.
std::int64_t integer_of(const json &value, std::size_t size, bool is_signed, const std::string &path);

}  // namespace chlist
