// What stands beside a channel file, on its way in and out: taken from what an import reads, and put back into what an
// export writes.
#pragma once

#include <vector>

#include "chlist/exchange/formats.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/files/companion.h"

namespace chlist {

// The files of a folder that a reader asked for, in that order.
struct read_files {
  struct file {
    std::string name;
    std::string text;
    text_encoding encoding;
  };
  std::vector<file> files;
};

// The same source, which takes down what is read of it.
list_source recorded(const list_source &source, read_files &read);

// What was read, before anybody chose among it or called it otherwise.
struct read_list {
  const list_source &source;
  const format &from;
  const std::vector<line_up_service> &services;
  const read_files &files;  // beside the text of the source
};

// The companion of an imported list: `chosen` are the services that the import took, `filled` tells what became of
// them, and `list` is the channel list that they are in.
companion companion_of_import(const read_list &read, const std::vector<line_up_service> &chosen,
                              const filled_list &filled, const line_up &list);

// The companion of services that were made for the list and read from nowhere.
companion companion_of_services(const std::vector<line_up_service> &made, const std::vector<const channel_st *> &filed,
                                const line_up &list);

// Gives the services of a list what is kept of them; names that somebody changed stay. Returns how many of the kept
// services the list does not have.
std::size_t put_back(line_up &list, const companion &kept);

}  // namespace chlist
