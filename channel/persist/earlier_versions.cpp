// The readers of channel files of versions 9, 8 and 7. Each hands its caller a list of its own.
#include <channel/files.h>

#include "channel/log.h"
#include "channel/persist/detached_list.h"
#include "channel/store/links.h"

namespace channel::persist {
namespace {

// Compatibility: the list in memory is linked again after an earlier one was read; hosts see its errors there.
template <class Format>
typename Format::list *load_earlier(const char *path, const char *operation) {
  if (path == nullptr) {
    LOG_ERROR_AS(operation, "path is null\n");
    return nullptr;
  }
  detached_list<Format> list = read_detached<Format>(path, {operation, "old_channel_list", path});
  if (list == nullptr) {
    return nullptr;
  }
  link_rch_info();
  print_list_read(operation, "old", base_of(*list));
  return list.release();
}

}  // namespace
}  // namespace channel::persist

extern "C" {

channel_list_st *v9_load_channel(const char *path) {
  return channel::persist::load_earlier<channel::persist::current_format>(path, __func__);
}

v8_channel_list_st *v8_load_channel(const char *path) {
  return channel::persist::load_earlier<channel::persist::version_8_format>(path, __func__);
}

v8_channel_list_st *v7_load_channel(const char *path) {
  return channel::persist::load_earlier<channel::persist::version_8_format>(path, __func__);
}
}
