// What writers of formats make, and what they are told.
#pragma once

#include <string>

#include "chlist/files/text_folder.h"

namespace chlist {

// A file that a writer makes, by its name within the output folder; a format of one file leaves the name empty.
using made_file = named_text;

// What the command line says of how a file is made.
struct write_options {
  std::string columns;  // of CSV: columns by name, all of them when empty
  std::string url;      // of M3U: the address of a service, with fields in braces; the format's own when empty
  bool is_by_favourites = false;  // of M3U: groups are the favourite groups, not the providers
};

}  // namespace chlist
