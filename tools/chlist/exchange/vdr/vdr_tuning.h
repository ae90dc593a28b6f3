// What a VDR line says of a service that a channel list does not keep: its parameters, symbol rate, streams and CA ids,
// in the words of EN 300 468 and in VDR's.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/vdr/vdr_channels_conf.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

further_facts further_of(const vdr_service &service);

// The fields of a line, of a service as it is now: what it lacks is 0, and no field is empty.
std::string parameters_text(const line_up_service &service, bool is_satellite);
std::string symbol_rate_text(const line_up_service &service);
std::string video_text(const line_up_service &service);
std::string audio_text(const line_up_service &service);
std::string teletext_text(const line_up_service &service);
std::string ca_ids_text(const line_up_service &service);

}  // namespace chlist
