/* The table of log levels, for hosts that bring no base library of their own. */
#include <base/verbosity.h>

#if defined(__GNUC__)
__attribute__((visibility("default")))
#endif
int verbosity_map[VERBOSITY_MODULES];
