// VDR's channels.conf as a line-up: what a line says becomes the fields of a service, and what the channel list does
// not keep of it is counted; and back.
#pragma once

#include <filesystem>
#include <string_view>

#include "chlist/exchange/layout/source_layout.h"
#include "chlist/exchange/list_source.h"
#include "chlist/exchange/loss_counts.h"
#include "chlist/exchange/vdr/vdr_channels_conf.h"
#include "chlist/exchange/written_list.h"

namespace chlist {

line_up_service line_up_service_of(const vdr_service &service);

line_up line_up_of(vdr_line_up parsed, loss_counts &lost);

// The reader of the format.
line_up read_vdr(const list_source &from, loss_counts &lost);

// In the order of the numbers, which ":@N" lines raise where they leap.
written_list write_vdr(const line_up &list, const write_options &options);

// Line by line: services, and the separators that name groups and raise numbers.
extern const source_layout vdr_layout;

bool is_like_vdr(const std::filesystem::path &path, std::string_view beginning);

}  // namespace chlist
