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

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/enigma2/lamedb.h"
#include "chlist/exchange/enigma2/service_reference.h"
#include "chlist/exchange/list_source.h"
#include "chlist/exchange/loss_counts.h"

namespace chlist {

inline constexpr std::string_view file_of_all = "userbouquet.all_channels.tv";

// In the place of a service that is gone: it takes a number, and nobody sees it.
inline constexpr std::string_view hidden_numbered_marker = "#SERVICE 1:832:D:0:0:0:0:0:0:0:";

// The two indexes: "bouquets.tv" and "bouquets.radio".
struct bouquet_index {
  std::string_view file;
  std::string_view beginning;
  std::string_view ending;  // of the files that it names
  int type;
};
inline constexpr std::array bouquet_indexes = {
    bouquet_index{"bouquets.tv", "#NAME Bouquets (TV)\n", "tv", 1},
    bouquet_index{"bouquets.radio", "#NAME Bouquets (Radio)\n", "radio", 2},
};
inline const bouquet_index &index_for(bool is_radio) { return bouquet_indexes[is_radio ? 1 : 0]; }

// What a line of an index or of a bouquet refers to: "#SERVICE 1:...", or the reference alone as in a blacklist.
std::optional<bouquet_reference> reference_in_line(std::string_view line);

// The file that a line of an index names; nothing of other lines.
std::optional<std::string> bouquet_named_in(std::string_view line);
std::string line_of_index(const bouquet_index &index, std::string_view file);

// What the file of a favourite group is called, by a number that no other one has.
std::string file_of_group(int number, const bouquet_index &index);

line_up with_bouquets(const folder_files &files, lamedb_services services, loss_counts &lost);
void read_blacklist(const folder_files &files, lamedb_services &services, loss_counts &lost);

// references: what each service is called.
std::vector<made_file> write_bouquets(const line_up &list, std::span<const service_reference> references);

}  // namespace chlist
