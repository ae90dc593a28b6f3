// What can be told of a service and its entry in a view, column by column: one table serves listings, CSV, differences
// and the search for a name.
#pragma once

#include <channel/records.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/list_contents.h"
#include "chlist/report.h"

namespace chlist {

// A service as a view shows it; a service in no view has no entry, and an entry that resolves to nothing no service.
// Either belongs to the list in memory, where the names of its groups and of its network are looked up.
struct listed_service {
  const virtual_channel_st *entry = nullptr;
  const channel_st *service = nullptr;
  std::size_t position = 0;
};

struct column {
  std::string_view name;   // as --columns and the header line of CSV have it: "video_pid"
  std::string_view title;  // of the table: "video PID"
  std::string_view about;  // for the help
  bool is_number = false;
  json (*value)(const listed_service &row);  // null when it is not set
};

// Every column there is: position, number, minor, tag and position key of the entry; name, short_name, types, groups
// with their ids, network, identity, the PIDs and tags, flags (locked, skipped, scrambled, data, and the byte itself),
// order_key, and the favourite groups that hold the service.
std::span<const column> all_columns();

// Columns by name, "name,number". Throws std::runtime_error that names the unknown one and those that there are.
std::vector<const column *> columns_named(std::string_view names);

// One column by its name. Throws as columns_named().
const column &column_named(std::string_view name);

// A value as a table or CSV shows it: nothing for null, the text itself, true as "yes" and false as "no", the elements
// of an array with commas between them.
std::string text_of_value(const json &value);

// Every entry of a view of the list in memory with the service that it is linked to; in the view's order.
std::vector<listed_service> listed_in(std::int8_t view);

}  // namespace chlist
