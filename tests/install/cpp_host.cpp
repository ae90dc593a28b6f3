// A host in C++20 that knows the installed package only.
#include <base/list.h>
#include <base/verbosity.h>
#include <channel/channel.h>

#include <cstdio>
#include <span>

namespace {

int fail(const char *what) {
  std::fprintf(stderr, "cpp_host: %s\n", what);
  return 1;
}

}  // namespace

int main() {
  verbosity_map[7] = -1;
  if (init_channel_list() != -4) {
    return fail("init_channel_list");
  }
  channel_st *rch = alloc_channel_info();
  rch->service_id = 7;
  rch->service_type = SERVICE_TYPE_TV;
  if (add_rch_info(rch, nullptr) != 0) {
    return fail("add_rch_info");
  }
  channel_list_st &list = *get_channel_list();
  list.vch[list.vnumber++] = {.major_ch_num = 101,
                              .net_index = rch->net_index,
                              .service_id = rch->service_id,
                              .network_id = rch->network_id,
                              .ts_id = rch->ts_id,
                              .rch = rch};
  if (change_vindex_type(VIEW_ALL) != 0 || get_channel_index(101) != 0 || get_channel(0) != rch) {
    return fail("get_channel");
  }
  const std::span view{get_channel_list_vch(), static_cast<std::size_t>(get_channel_list_number())};
  if (view.size() != 1 || view.front().rch != rch) {
    return fail("get_channel_list_vch");
  }
  reset_channel_list();
  return list.network_num == 0 ? 0 : fail("reset_channel_list");
}
