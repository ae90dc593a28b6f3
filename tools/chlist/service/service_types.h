// The service types of EN 300 468 by name.
#pragma once

#include <cstdint>
#include <string>

namespace chlist {

// "TV", "radio", "HD TV", "data"; "type 200" for one that has no name.
std::string service_type_name(std::uint8_t service_type);

}  // namespace chlist
