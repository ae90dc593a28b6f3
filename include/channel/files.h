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

CHANNEL_END_DECLS

#endif
