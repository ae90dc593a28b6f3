/* A host that names nothing of the base library: the linker may leave it to libchannel to ask for that. */
#include <channel/channel.h>

int main(void) { return init_channel_list() == -4 ? 0 : 1; }
