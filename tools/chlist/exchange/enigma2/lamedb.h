// The channel lists of Enigma2: a folder with the transponders and services in "lamedb" (versions 3 and 4) or "lamedb5"
// (version 5), and with bouquets, which hold the order, the channel numbers and the favourites (bouquets.h).
//
// Transponders are told apart by a namespace, the satellite's position in its upper half, and their ids; where these
// are the same for two transponders, the lower half tells them apart. A source without a position gets one of its own,
// from 0.1 east on, which is in no other's use. Satellites and cable are in kHz, terrestrial transponders in Hz. What
// the format cannot do without and a channel list does not hold is assumed: symbol rates of 27,500,000 and 6,900,000,
// DVB-S, DVB-C and DVB-T with all else automatic.
#pragma once

#include <filesystem>
#include <string_view>
#include <unordered_map>

#include "chlist/exchange/enigma2/service_reference.h"
#include "chlist/exchange/list_source.h"
#include "chlist/exchange/loss_counts.h"

namespace chlist {

// The services of a lamedb, and where each stands by what bouquets call it.
struct lamedb_services {
  line_up list;
  std::unordered_map<service_reference, std::size_t, service_reference::hash> places;
};

// Throws std::runtime_error when the first line names no version that is known.
lamedb_services parse_lamedb(std::string_view text, loss_counts &lost);

// A lamedb with what the other files of its folder say.
line_up parse_lamedb_folder(std::string_view text, const folder_files &files, loss_counts &lost);

written_list write_lamedb(const line_up &list, int version);

// The rows of the table of formats. What is read is the folder or the file in it, of any version: the rows differ in
// the file that they prefer in a folder.
line_up read_lamedb(const list_source &from, loss_counts &lost);
line_up read_lamedb5(const list_source &from, loss_counts &lost);

template <int Version>
written_list write_lamedb(const line_up &list, const write_options & /*options*/) {
  return write_lamedb(list, Version);
}

// A folder is of version 4 when there is a lamedb in it, whatever the version that this names.
bool is_like_lamedb3(const std::filesystem::path &path, std::string_view beginning);
bool is_like_lamedb4(const std::filesystem::path &path, std::string_view beginning);
bool is_like_lamedb5(const std::filesystem::path &path, std::string_view beginning);

}  // namespace chlist
