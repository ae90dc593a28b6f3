// The door to the real file system: the standard library's streams and `sync`.
#include "channel/persist/file.h"

#include <unistd.h>

namespace channel::persist {

constinit const file_door system_door = {std::fopen, std::fread, std::fwrite, std::fflush, std::fclose, ::sync};

const file_door *door = &system_door;

bool file::close() {
  if (stream_ == nullptr) {
    return true;
  }
  std::FILE *closed = stream_;
  stream_ = nullptr;
  return door->close(closed) == 0;
}

}  // namespace channel::persist
