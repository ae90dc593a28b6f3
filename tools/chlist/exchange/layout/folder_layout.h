// The files beside the first one of a format that is a folder: what they say of its services, by references of their
// own.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/layout/group_edits.h"
#include "chlist/exchange/layout/source_layout.h"
#include "chlist/exchange/written_list.h"
#include "chlist/files/companion.h"

namespace chlist {

// A service of the list, and its piece in the first file as it is written now.
struct referred_service {
  const line_up_service *service = nullptr;
  std::string text;  // empty: it is not written
};

// How services keep their numbers, where these are places: something stands in the place of one that went; the places
// are its numbers without that; or a file of its own numbers all of them.
enum class numbered_by { places_kept, places, file_of_all };
inline constexpr std::array ways_to_number = {numbered_by::places_kept, numbered_by::places, numbered_by::file_of_all};

// The files as they are kept, and what became of what they say.
struct kept_folder {
  const std::vector<source_file> &files;  // the first one as well
  const std::vector<referred_service> &services;
  const std::vector<group_edit> &groups;
  numbered_by by = numbered_by::places_kept;
};

struct folder_layout {
  // What the first file is called that has this text.
  std::string (*name_of_first)(std::string_view text);
  // The pieces of another file, those of services with their identities, which the pieces of the first file tell.
  std::vector<source_piece> (*pieces)(const std::string &text, const source_file &first);
  // The first file as a writer made it, with what services stand on called as in the kept one. Of that, the lines of
  // the kept one that the list says otherwise now, by their numbers; and those that it lacks, in front of whose piece
  // they come.
  std::string (*in_terms_of)(const std::string &written, const std::string &kept);
  std::map<std::size_t, std::string> (*changed)(const piece_versions &files);
  std::vector<std::string> (*missing)(const std::string &written, const std::string &kept);
  bool (*is_behind_missing)(std::string_view piece);
  // The other files, in which only the lines differ that edits are about. notes: what became of files.
  std::vector<made_file> (*woven)(const kept_folder &kept, std::vector<std::string> &notes);
};

}  // namespace chlist
