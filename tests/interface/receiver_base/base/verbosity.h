/* The log levels of a receiver's own base library. */
#ifndef RECEIVER_VERBOSITY_H
#define RECEIVER_VERBOSITY_H

#ifdef __cplusplus
extern "C" {
#endif

extern int verbosity_map[107];

#ifdef __cplusplus
}
#endif

#endif
