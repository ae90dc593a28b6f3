// What is left in the bytes of a damaged file: the list's own record, and the records behind it.
#pragma once

#include <channel/records.h>

#include "chlist/files/file_bytes.h"
#include "chlist/files/file_records.h"
#include "chlist/salvage/list_image.h"
#include "chlist/salvage/salvaged_records.h"
#include "chlist/salvage/service_search.h"
#include "chlist/salvage/witnesses.h"

namespace chlist {

struct damaged_list {
  int version = CHANNEL_LIST_VERSION;  // that the file has, or that it is read as
  record_sizes sizes;
  witnesses known;
  list_image list;
  std::vector<std::size_t> other_lists;  // where more lists begin in the same file
  salvaged_records records;
};

std::size_t searches_of(byte_span file);

// Read as the version that the file names; when that is none, as the one of which more services are found.
damaged_list search_file(byte_span file, const search_progress &progress);

}  // namespace chlist
