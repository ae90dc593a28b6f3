// The DVBv5 format of libdvbv5 and its tools: a section [name] for each service, with a line KEY = value for each of
// its ids, PIDs and tuning parameters. Frequencies are in kHz on satellites and in Hz elsewhere.
//
// A source is what DELIVERY_SYSTEM tells of it: "S", "C" or "T"; several satellites are told apart by SAT_NUMBER, as
// "S#0", "S#1". VCHANNEL is the channel number, "7" or "7.1". What the format cannot do without and a channel list does
// not hold is assumed when it is written: DVB-S, DVB-C or DVB-T with usual symbol rates and bandwidths.
#pragma once

#include <filesystem>
#include <string_view>

#include "chlist/exchange/layout/source_layout.h"
#include "chlist/exchange/list_source.h"
#include "chlist/exchange/loss_counts.h"

namespace chlist {

line_up parse_dvbv5(std::string_view text, loss_counts &lost);

line_up read_dvbv5(const list_source &from, loss_counts &lost);
written_list write_dvbv5(const line_up &list, const write_options &options);

// Section by section.
extern const source_layout dvbv5_layout;

// The first line that is neither blank nor a comment begins a section.
bool is_like_dvbv5(const std::filesystem::path &path, std::string_view beginning);

}  // namespace chlist
