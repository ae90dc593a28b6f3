// CSV with a header line as a line-up: columns by their names, in any order.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "chlist/exchange/list_source.h"
#include "chlist/exchange/loss_counts.h"

namespace chlist {

// The reader of the format.
line_up read_csv(const list_source &from, loss_counts &lost);

// The same from text. Throws std::runtime_error when the header does not tell what services are known by.
line_up line_up_of_csv(std::string_view text, loss_counts &lost);

// A line for each service of the line-up.
written_list write_csv(const line_up &list, const write_options &options);

bool is_like_csv(const std::filesystem::path &path, std::string_view beginning);

// What stands for the number of a service that no view shows.
inline constexpr std::string_view csv_unlisted = "-";

// What parts the names of favourite groups.
inline constexpr char csv_group_separator = ';';

}  // namespace chlist
