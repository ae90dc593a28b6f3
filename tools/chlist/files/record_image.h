// The bytes of a record as a channel file has them.
#pragma once

#include <memory>
#include <string>

#include "channel/persist/image.h"

namespace chlist {

// The image of a list is too large for a small stack.
template <class Record>
void append_image(std::string &bytes, const Record &record) {
  const auto image = std::make_unique<channel::persist::image<Record>>();
  channel::persist::to_image(record, *image);
  bytes.append(reinterpret_cast<const char *>(image->data()), image->size());
}

}  // namespace chlist
