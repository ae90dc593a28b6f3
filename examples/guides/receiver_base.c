/* A receiver's own base library: the log levels of its modules. The channel list reads entries 1, 5, 7 and 106. */
enum { modules = 128 };

extern int verbosity_map[modules];
__attribute__((visibility("default"))) int verbosity_map[modules] = {[7] = 2};
