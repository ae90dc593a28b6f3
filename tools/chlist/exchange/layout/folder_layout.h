// The files beside the first one of a format that is a folder: what they say of its services, by references of their
// own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/written_list.h"
#include "chlist/files/companion.h"

namespace chlist {

// A service of the list, and its piece in the first file as it is written now.
struct referred_service {
  const line_up_service *service = nullptr;
  std::string text;  // empty: it is not written
};

struct folder_layout {
  // What the first file is called that has this text.
  std::string (*name_of_first)(std::string_view text);
  // The pieces of another file, those of services with their identities, which the pieces of the first file tell.
  std::vector<source_piece> (*pieces)(const std::string &text, const source_file &first);
  // The other files as they are kept, with what became of the services. kept: all files; services: of the list.
  std::vector<made_file> (*kept)(const std::vector<source_file> &kept, const std::vector<referred_service> &services);
  // The other files as the format's writer makes them.
  std::vector<made_file> (*anew)(const line_up &list, const std::vector<referred_service> &services);
};

}  // namespace chlist
