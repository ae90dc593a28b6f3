// Bytes as letters, as JSON carries them (RFC 4648).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace chlist {

// None when something else stands in it, or bits are left over.
std::optional<std::string> bytes_of_base64(std::string_view text);

}  // namespace chlist
