/*
 * The log levels of the receiver's modules: one int for each module number.
 *
 * A line of a module is printed when the module's entry is at least the line's level: 0 errors, 1 warnings, 2 traces,
 * 3 details, 5 misses of single lookups; -1 silences a module. The channel list is module 7.
 */
#ifndef BASE_VERBOSITY_H
#define BASE_VERBOSITY_H

#ifdef __cplusplus
extern "C" {
#endif

enum { VERBOSITY_MODULES = 256 };

/** The level of every module, all 0 at start; the host writes it at any time. */
extern int verbosity_map[VERBOSITY_MODULES];

#ifdef __cplusplus
}
#endif

#endif
