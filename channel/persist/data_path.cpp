// The target directory, and the paths of data files below it. No separator is put between directory and name.
#include "channel/persist/data_path.h"

#include <algorithm>
#include <channel/files.h>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "channel/log.h"

namespace channel::persist {
namespace {

char target_dir[32] = "/";

}  // namespace

data_path::data_path(const char *name) {
  const int length = std::snprintf(text_, size, "%s%s", target_dir, name);
  // A negative length, which is a failure, is larger than any size.
  is_whole_ = static_cast<std::size_t>(length) < size;
}

}  // namespace channel::persist

using channel::persist::target_dir;

extern "C" {

char *set_target_dir(const char *dir) {
  LOG_TRACE(2, "\n");
  if (dir == nullptr) {
    LOG_ERROR("dir is null\n");
    return target_dir;
  }
  const std::size_t length = strnlen(dir, sizeof target_dir);
  if (length == sizeof target_dir) {
    LOG_ERROR("directory is longer than %d characters\n", static_cast<int>(sizeof target_dir) - 1);
    return target_dir;
  }
  // The text may be the directory in use itself.
  std::memmove(target_dir, dir, length);
  std::fill(target_dir + length, std::end(target_dir), '\0');
  return target_dir;
}
}
