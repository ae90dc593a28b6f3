/* A host in C11 that knows the installed package only. */
#include <base/verbosity.h>
#include <channel/channel.h>

#include <stdio.h>
#include <stdlib.h>

static int fail(const char *what) {
  fprintf(stderr, "c_host: %s\n", what);
  return 1;
}

int main(void) {
  verbosity_map[7] = -1;
  if (init_channel_list() != -4 || get_channel_list()->version != CHANNEL_LIST_VERSION) {
    return fail("init_channel_list");
  }
  channel_st *rch = calloc(1, sizeof *rch);
  if (rch == NULL) {
    return fail("calloc");
  }
  rch->net_index = 85;
  rch->network_id = 4;
  rch->ts_id = 0x401;
  rch->frequency = 11597000;
  rch->service_id = 0x1b1d;
  if (add_rch_info(rch, NULL) != 0 || get_channel_list()->network_num != 1) {
    return fail("add_rch_info");
  }
  if (get_channel_st(85, 4, 0x401, 11597000 + 2499, 0x1b1d, 0) != rch) {
    return fail("get_channel_st");
  }
  destroy_channel_list();
  return SID_TYPE == 0 ? 0 : fail("SID_TYPE");
}
