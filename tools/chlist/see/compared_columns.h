// The columns that make a service what it is. Those of its entries and of its network are compared by themselves; the
// number of a service type says no more than its name.
#pragma once

#include <span>
#include <string_view>

#include "chlist/service/columns.h"

namespace chlist {

std::span<const column *const> compared_columns();

// The column whose id stands behind a name, "provider_id" for "provider"; empty for every other column. A name alone
// that differs is a renamed group.
std::string_view id_behind(std::string_view column_name);

}  // namespace chlist
