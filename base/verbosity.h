/**
 * @file
 * The log levels of the receiver's modules: one int for each module number.
 */
#ifndef BASE_VERBOSITY_H
#define BASE_VERBOSITY_H

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup base
 * @{
 */

/** How many modules a receiver has. */
enum {
  VERBOSITY_MODULES = 256 /**< entries of verbosity_map */
};

/**
 * The level of every module, all 0 at start; the host writes it at any time.
 *
 * A line of a module is printed when the module's entry is at least the line's level: 0 errors, 1 warnings, 2 traces,
 * 3 details, 5 misses of single lookups; -1 silences a module. The channel list is module 7; a few of its lines are
 * gated by entries 1, 5 and 106, and say so.
 */
extern int verbosity_map[VERBOSITY_MODULES];

/** @} */

#ifdef __cplusplus
}
#endif

#endif
