// The door to the real file system: the standard library's streams and `sync`.
#include "channel/persist/file.h"

#include <unistd.h>

namespace channel::persist {

constinit const file_door system_door = {std::fopen, std::fread, std::fwrite, std::fflush, std::fclose, ::sync};

const file_door *door = &system_door;

file::file(const char *path, const char *mode) : stream_(path != nullptr ? door->open(path, mode) : nullptr) {
  if (stream_ != nullptr) {
    // A stream that refuses the buffer has one of its own.
    static_cast<void>(std::setvbuf(stream_, buffer_, _IOFBF, buffer_size));
  }
}

bool file::close() {
  if (stream_ == nullptr) {
    return true;
  }
  std::FILE *closed = stream_;
  stream_ = nullptr;
  return door->close(closed) == 0;
}

}  // namespace channel::persist
