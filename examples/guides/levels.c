/* Some calls at the log level that the command line gives. */
#include <base/verbosity.h>
#include <channel/channel.h>
#include <stdlib.h>

enum { channel_module = 7 };

int main(int argc, char **argv) {
  verbosity_map[channel_module] = argc > 1 ? (int)strtol(argv[1], NULL, 10) : 0;
  set_target_dir("./");
  init_channel_list();
  alloc_network_ch_info(1, 133, NULL);
  get_channel_index(42);
  change_vindex_type(VIEW_TV);
  get_virtual_channel_st(9);
  set_channel_flag(2, 133, 1101, 11362000, 11100, 0, CHANNEL_FLAG_SKIP, 1);
  get_channel(0);
  reset_channel_list();
  return 0;
}
