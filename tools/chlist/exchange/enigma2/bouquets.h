// The bouquets of Enigma2: bouquets.tv and bouquets.radio name the files of the user bouquets, which hold the order and
// the numbers of the services. The numbers run on from bouquet to bouquet, apart for television and radio.
//
// A favourite group is a user bouquet, in bouquets.radio when all of it is radio. The ALL view is a bouquet of its own
// in front of them, with a file name by which it is known when it is read; hidden numbered markers fill the gaps
// between its numbers. A folder without it is that of a receiver: its services are taken in the order of its bouquets,
// television before radio, each with its first number, radio numbered on behind television; those in no bouquet follow.
// Bouquets that only part others ("----TOP----") are no groups.
//
// The file "blacklist" names the services that are locked.
#pragma once

#include <span>
#include <vector>

#include "chlist/exchange/enigma2/lamedb.h"
#include "chlist/exchange/enigma2/service_reference.h"
#include "chlist/exchange/list_source.h"
#include "chlist/exchange/loss_counts.h"

namespace chlist {

inline constexpr std::string_view file_of_all = "userbouquet.all_channels.tv";

line_up with_bouquets(const folder_files &files, lamedb_services services, loss_counts &lost);
void read_blacklist(const folder_files &files, lamedb_services &services, loss_counts &lost);

// references: what each service is called.
std::vector<made_file> write_bouquets(const line_up &list, std::span<const service_reference> references);

}  // namespace chlist
