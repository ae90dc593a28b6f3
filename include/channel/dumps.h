/**
 * @file
 * Dumps of the list for developers: they change nothing and print on standard error when the log level is at least 2.
 *
 * Every line tests the level again, so that a level lowered in between cuts a dump short.
 */
#ifndef CHANNEL_DUMPS_H
#define CHANNEL_DUMPS_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/** Prints the limits, the version of the list in memory, and the sizes that records have in the channel file. */
void channel_version_info(void);

/** Prints the settings, every network and every transponder with its number of real channels. */
void print_channel_list(void);

/**
 * Prints one real channel.
 *
 * @param rch the channel; null prints nothing.
 */
void print_channel_info(const channel_st *rch);

/** Prints the settings and the number of entries of each view. */
void print_channel_status(void);

/**
 * Prints a view as comma-separated lines, one for each entry.
 *
 * @param type a view code; an unknown one prints only the warnings of the view lookup.
 */
void print_virtual_channel_list(int8_t type);

/**
 * Prints groups, one for each line.
 *
 * @param groups the first of @p count records; null is refused with -1 when the count is positive.
 * @param count how many; below 1 prints nothing.
 * @return 0, or -1 when refused.
 */
int print_group_info(const group_st *groups, int16_t count);

/**
 * Prints the favourite groups that have a name length.
 *
 * @param show_channels 0, or any other value to print the numbers of each group's entries as well.
 */
void print_fav_list(int show_channels);

/** Prints the provider table. */
void print_provider_info(void);

CHANNEL_END_DECLS

#endif
