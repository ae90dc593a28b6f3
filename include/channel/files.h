/**
 * @file
 * The channel file and the directory that the data files live in.
 */
#ifndef CHANNEL_FILES_H
#define CHANNEL_FILES_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * Sets the directory of every data file.
 *
 * A file's path is this text followed directly by the file's name, so the text must end with "/". At start it is "/".
 *
 * @param dir at most 31 characters. A longer text or null is refused and leaves the directory as it is.
 * @return the directory in use, a terminated text owned by the library and valid for the life of the process.
 */
char *set_target_dir(const char *dir);

/**
 * Replaces the whole list by the contents of a channel file.
 *
 * Rebuilds the hierarchy, makes the file's current view current (the ALL view when that one is empty), links every view
 * entry to its real channel, sorts on request, and fills empty genre and country tables from their own files. Sets
 * country_id of every channel to 0. Counts of views and groups that lie outside their arrays are brought back into
 * them. The file's version is not tested: a host compares the result with CHANNEL_LIST_VERSION.
 *
 * Records that are still linked when the load begins are not released, because the host may hold pointers to them:
 * call reset_channel_list() first when the list is not empty.
 *
 * Also prints one line with the file's name on standard output.
 *
 * @param name the file's name below the target directory. Null is refused with -1 and changes nothing. A path of 64
 *        characters or more is a file that cannot be opened.
 * @param sort_mode a SORT_ code of the view sort for the ALL, USER, promotion, TV and radio views, or 255 to keep the
 *        file's order.
 * @return the version in the file (10 for a current one); 1 when the file cannot be opened; -1 when it is short. After
 * 1 and -1 the list is initialised, with genres and countries from their own files.
 */
int load_channel(const char *name, uint8_t sort_mode);

/**
 * Writes the whole list to a channel file, in place, and calls `sync`.
 *
 * Pointers are written as zero, so that the same list gives the same bytes on every target. The list is not changed.
 *
 * @param name the file's name below the target directory. Null is refused with 0. A path of 64 characters or more is a
 *        file that cannot be opened.
 * @return 1 when every byte was written; 0 otherwise, and then the file may be truncated or partly written.
 */
int save_channel(const char *name);

/**
 * Merges a complete new channel list, in the format of the channel file, from "/DATA/BACKUP/all_channel.dat".
 *
 * Services that the list does not hold are added and numbered at the end of the ALL, TV, radio and promotion views by
 * service type and service id; services that the new list lacks are deleted with every entry that shows them; services
 * in both stay exactly as the list has them. Afterwards the views are pruned and linked. The current view stays.
 *
 * Call it after load_channel(): country_id serves as the mark of presence, 0 for a channel not seen yet, and is 1 on
 * every channel that the merge keeps. A channel whose country_id was not 0 before is not deleted. The list is saved by
 * the host.
 *
 * @return the number of services added and deleted; 0 when nothing changed, and when the new list cannot be read, which
 *         leaves the list untouched.
 */
int check_load_channel(void);

/**
 * Reads a channel file of version 9 into a list of its own. The channel list in memory is not touched, but its views
 * are linked again. The version in the file is not looked at.
 *
 * @param path the whole path; the target directory is not put in front. Null is refused with null.
 * @return the list with its networks, transponders and channels, all owned by the caller, each from `calloc`; null when
 *         the file cannot be opened or is short.
 */
channel_list_st *v9_load_channel(const char *path);

/** As v9_load_channel(), for a file of version 8: its records are the v8_ records. */
v8_channel_list_st *v8_load_channel(const char *path);

/** As v9_load_channel(), for a file of version 7: its records are the v8_ records. */
v8_channel_list_st *v7_load_channel(const char *path);

/**
 * Replaces the list by the contents of a channel file of version 7, 8 or 9, converted field by field.
 *
 * The list is emptied first, also by a call that is refused; records still linked are not released: call
 * reset_channel_list() before. Views come without pointers to their channels, no view is switched and nothing is saved:
 * save and load the list to use it. Networks and transponders without channels are not carried over. The provider of a
 * channel is taken from its genre, as receivers of the time filed it.
 *
 * @param version 7, 8 or 9, the version of the file; any other, 10 included, is refused.
 * @param path the whole path; the target directory is not put in front.
 * @return 0; -1 when the version is refused or the file cannot be read.
 */
int repair_channel(int version, const char *path);

CHANNEL_END_DECLS

#endif
