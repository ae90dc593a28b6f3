// What writers of formats are told, and what they make.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "chlist/exchange/loss_counts.h"
#include "chlist/fields/service_fields.h"
#include "chlist/files/text_folder.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

// A file that a writer makes, by its name within the output folder; a format of one file leaves the name empty.
using made_file = named_text;

// What the command line says of how a file is made.
struct write_options {
  std::string columns;        // of CSV: columns by name, all of them when empty
  std::string url;            // of M3U: the address of a service, with fields in braces; the format's own when empty
  bool names_picons = false;  // of Enigma2: a file with the names of services' pictures
  bool is_by_favourites = false;  // of M3U: groups are the favourite groups, not the providers
};

struct written_list {
  std::vector<made_file> files;
  std::vector<std::size_t> services;   // the places of those that were written, in the order of their lines
  std::vector<std::size_t> lines;      // of each of these; none: they follow each other
  loss_counts left_out;                // the others, by reason
  std::vector<std::string> notes;      // what became of files that are kept, one text for each
  std::vector<const field *> carried;  // of what nobody reads again: the fields that are in it
};

// Where each service that was read stands among those that were written: by its line, which the writer tells, or else
// lines come in the order of writing, and those that became no service were skipped.
std::vector<std::size_t> places_among_written(const line_up &read, const written_list &written);

}  // namespace chlist
