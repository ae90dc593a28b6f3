/**
 * @file
 * Dumps of the list for developers: they change nothing and print on standard error when the log level is at least 2.
 */
#ifndef CHANNEL_DUMPS_H
#define CHANNEL_DUMPS_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup dumps Dumps
 * @brief The list as text for developers, on standard error from log level 2 on.
 *
 * `#include <channel/dumps.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * Dumps change nothing. Every line tests the level again, so that a level lowered in between cuts a dump short. Sizes
 * are those of the channel file on every target; texts end where their field ends.
 * @{
 */

/**
 * Prints the limits, the version of the list in memory, and the sizes that records have in the channel file.
 * @logs 2: the dump, six lines.
 */
void channel_version_info(void);

/**
 * Prints the settings, every network and every transponder with its number of real channels.
 * @logs 2: the dump.
 */
void print_channel_list(void);

/**
 * Prints one real channel.
 *
 * @param rch the channel; null prints nothing.
 * @logs 2: the dump: name, frequency, polarisation, service id, types, PIDs and component tags.
 */
void print_channel_info(const channel_st *rch);

/**
 * Prints the settings and the number of entries of each view.
 * @logs 2: the dump.
 */
void print_channel_status(void);

/**
 * Prints a view as comma-separated lines, one for each entry.
 *
 * @param type a view code; an unknown one prints only the warnings of the view lookup.
 * @logs 1: an unknown code, twice. 2: the dump. 2, 3, 5: entries that resolve to no channel, as get_channel_st() tells
 *       them, from level 2 on only.
 */
void print_virtual_channel_list(int8_t type);

/**
 * Prints groups, one for each line.
 *
 * @param groups the first of @p count records; null is refused with -1 when the count is positive.
 * @param count how many; below 1 prints nothing.
 * @return 0, or -1 when refused.
 * @logs 0: null. 2: a line for each group.
 */
int print_group_info(const group_st *groups, int16_t count);

/**
 * Prints the favourite groups that have a name length.
 *
 * @param show_channels 0, or any other value to print the numbers of each group's entries as well.
 * @logs 2: the dump.
 */
void print_fav_list(int show_channels);

/**
 * Prints the provider table.
 * @logs 2: the dump.
 */
void print_provider_info(void);

/** @} */

CHANNEL_END_DECLS

#endif
