// VDR's channels.conf as a line-up: what a line says becomes the fields of a service, and what the channel list does
// not keep of it is counted.
#pragma once

#include <filesystem>
#include <string_view>

#include "chlist/exchange/list_source.h"
#include "chlist/exchange/loss_counts.h"
#include "chlist/exchange/vdr/vdr_channels_conf.h"

namespace chlist {

line_up_service line_up_service_of(const vdr_service &service);

line_up line_up_of(vdr_line_up parsed, loss_counts &lost);

// The reader of the format.
line_up read_vdr(const list_source &from, loss_counts &lost);

bool is_like_vdr(const std::filesystem::path &path, std::string_view beginning);

}  // namespace chlist
