// What a service's picture is like, as far as its name and its type tell: "News HD" is "News" in high definition.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "chlist/line_up/line_up.h"

namespace chlist {

enum class picture : std::uint8_t { standard, high, ultra_high };

// The name tells the picture, or else the service type does (EN 300 468).
picture picture_of(const line_up_service &service);

// A name as people look for it, folded, without the words at its end that tell of the picture.
std::string plain_name(std::string_view name);

bool is_radio(const line_up_service &service);

}  // namespace chlist
