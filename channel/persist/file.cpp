// The door to the real file system: the standard library's streams and `sync`.
#include "channel/persist/file.h"

#include <stdio_ext.h>
#include <unistd.h>

namespace channel::persist {

namespace {

// A stream serves one operation of one thread: locking it for each record would cost more than copying the record.
std::FILE *open_stream(const char *path, const char *mode, std::span<char> buffer) {
  std::FILE *stream = std::fopen(path, mode);
  if (stream != nullptr) {
    static_cast<void>(::__fsetlocking(stream, FSETLOCKING_BYCALLER));
    // A stream that refuses the buffer has one of its own.
    static_cast<void>(std::setvbuf(stream, buffer.data(), _IOFBF, buffer.size()));
  }
  return stream;
}

}  // namespace

constinit const file_door system_door = {open_stream, std::fread, std::fwrite, std::fflush, std::fclose, ::sync};

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
