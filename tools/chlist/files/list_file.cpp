// The library writes the replacement of a channel file.
#include "chlist/files/list_file.h"

#include <channel/files.h>

#include <stdexcept>

#include "chlist/files/replacement.h"

namespace chlist {

void save_list_as(const std::filesystem::path &target) {
  replacement file(target);
  set_target_dir("./");
  if (save_channel(file.name()) != 1) {
    throw std::runtime_error(target.string() + ": the channel file could not be written");
  }
  file.take_place();
}

}  // namespace chlist
