// Comma-separated values as RFC 4180 has them.
#pragma once

#include <span>
#include <string>

namespace chlist {

// One line with its end (CR LF). A cell that holds a comma, a quote or a line end stands in quotes.
std::string csv_line(std::span<const std::string> cells);

}  // namespace chlist
