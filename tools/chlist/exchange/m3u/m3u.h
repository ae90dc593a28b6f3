// A line-up as an extended M3U playlist.
#pragma once

#include <filesystem>
#include <string_view>

#include "chlist/exchange/layout/source_layout.h"
#include "chlist/exchange/list_source.h"
#include "chlist/exchange/loss_counts.h"
#include "chlist/exchange/written_list.h"

namespace chlist {

// The address of a service as EN 300 468 identifies it, for players that know it: ids in hexadecimal digits.
inline constexpr std::string_view default_m3u_url = "dvb://{network_id:x}.{ts_id:x}.{service_id:x}";

// Services are known by what their addresses say: by the source's template, or else as dvb:// addresses, Enigma2's
// references and VDR's channel ids say it. Throws std::runtime_error when a template names something that there is not,
// or does not name the ids that a service is known by.
line_up read_m3u(const list_source &from, loss_counts &lost);

// Throws std::runtime_error when the template of the address names something that there is not.
written_list write_m3u(const line_up &list, const write_options &options);

// How a playlist falls apart into the lines of its services.
extern const source_layout m3u_layout;

bool is_like_m3u(const std::filesystem::path &path, std::string_view beginning);

}  // namespace chlist
