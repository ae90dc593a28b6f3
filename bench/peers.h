// Peers: other ways to keep the same list, which do the same job with the same data in the same run. Each is there when
// its library was found.
#pragma once

#include <span>
#include <vector>

#include "operations.h"

namespace bench {

// A database: the list in tables with indices, statements prepared, the connection open and its cache warm.
std::span<const operation> sqlite_operations();

// A library that reads channel lists as text.
std::span<const operation> dvbv5_operations();

// Whichever of them there are.
std::vector<std::span<const operation>> peers();

}  // namespace bench
