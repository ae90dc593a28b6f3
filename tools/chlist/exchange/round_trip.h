// What is lost on the way to another format, measured: a list is written, what was written is read again and filed as
// an import does, and the list that comes of it is held against the one that went in. Whatever a writer forgets, or a
// reader takes otherwise, is found so, and nobody keeps a list of it.
#pragma once

#include <channel/records.h>

#include "chlist/exchange/formats.h"
#include "chlist/exchange/record_losses.h"
#include "chlist/files/companion.h"

namespace chlist {

struct exported_list {
  std::vector<made_file> files;
  std::size_t services = 0;
  std::size_t favourite_groups = 0;
  loss_counts lost;
  std::vector<std::string> notes;  // what became of files that are kept
};

// Writes a list, which must not be the one in memory: that is filled with what is read again. Of what nobody can read
// again the fields are counted that are not carried. list: with what is kept beside it, whose text is woven again.
exported_list export_list(const records_of_list &list, const companion &kept, const format &to,
                          const write_options &options);

}  // namespace chlist
