// Writes a line-up as an extended M3U playlist.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "chlist/exchange/loss_counts.h"
#include "chlist/exchange/made_files.h"

namespace chlist {

// The address of a service as EN 300 468 identifies it, for players that know it: ids in hexadecimal digits.
inline constexpr std::string_view default_m3u_url = "dvb://{network_id:x}.{ts_id:x}.{service_id:x}";

// Throws std::runtime_error when the template of the address names something that there is not.
std::vector<made_file> write_m3u(const line_up &list, const write_options &options, loss_counts &lost);

bool is_like_m3u(const std::filesystem::path &path, std::string_view beginning);

}  // namespace chlist
