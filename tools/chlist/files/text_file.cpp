// The text goes to the disk in as many writes as the system needs for it.
#include "chlist/files/text_file.h"

#include <unistd.h>

#include <cerrno>

#include "chlist/files/descriptor.h"
#include "chlist/files/replacement.h"

namespace chlist {

void write_text_file(const std::filesystem::path &target, std::string_view text) {
  replacement file(target);
  while (!text.empty()) {
    const ssize_t written = ::write(file.fd(), text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      fail(target.string());
    }
  }
  file.take_place();
}

}  // namespace chlist
