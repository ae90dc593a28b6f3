// What can be told of a service and its entry in a view, column by column: one table serves listings, CSV, differences
// and the search for a name.
#pragma once

#include <channel/records.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/list_contents.h"
#include "chlist/report.h"

namespace chlist {

// A service as a view shows it; a service in no view has no entry, and an entry that resolves to nothing no service.
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

// Every column there is: number, minor, name, short_name, type, provider, genre, country, network_name, net_index,
// network_id, ts_id, frequency, polarisation, service_id, the PIDs and tags, flags (locked, skipped, scrambled, data,
// and the byte itself), source_type, order_key, position, and the favourite groups that hold the service.
std::span<const column> all_columns();

// Columns by name, "name,number". Throws std::runtime_error that names the unknown one and those that there are.
std::vector<const column *> columns_named(std::string_view names);

// A value as a table or CSV shows it: nothing for null, the text itself, true as "yes" and false as "no".
std::string text_of_value(const json &value);

}  // namespace chlist
