// The records of a channel file as one JSON object, and one JSON object as the records of a channel file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "chlist/exchange/json/list_json_codec.h"
#include "chlist/exchange/json/list_json_fields.h"
#include "chlist/json/json.h"

namespace chlist {

// The members that are no fields of a record.
inline constexpr std::string_view mark_key = "format";
inline constexpr std::string_view mark = "channel file";
inline constexpr std::string_view favourites_key = "favorite_vch";
inline constexpr std::string_view favourite_counts_key = "favorite_vnumber";
inline constexpr std::string_view networks_key = "networks";
inline constexpr std::string_view transponders_key = "transponders";
inline constexpr std::string_view services_key = "services";
inline constexpr std::string_view patches_key = "patches";

template <class Record>
const_record_bytes bytes_of(const Record &record) {
  return std::as_bytes(std::span(&record, 1));
}

template <class Record>
record_bytes bytes_of(Record &record) {
  return std::as_writable_bytes(std::span(&record, 1));
}

// The count of an array.
constexpr json_field count_field(std::size_t offset) {
  return {"", field_kind::number, offset, sizeof(std::int16_t), true};
}

// "$.networks[3]".
std::string path_of_element(const std::string &path, std::size_t at);

// An array within an object. Throws as refuse_json() does when it is none, or longer than it may be.
const json &array_in(const json &object, std::string_view key, const std::string &path, std::size_t most);

json json_of_list(channel_list_st &list);

// The file that the records make, without patches.
std::string file_of_records(const json &object);

}  // namespace chlist
