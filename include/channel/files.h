/**
 * @file
 * The channel file and the directory that the data files live in.
 */
#ifndef CHANNEL_FILES_H
#define CHANNEL_FILES_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup files Files
 * @brief Loading, saving, merging a new channel list, and channel files of earlier versions.
 *
 * `#include <channel/files.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * A file operation lends its stream a buffer of 64 KiB on the stack. A file that ends early is found out before the
 * list is used; nothing is left open, and what was read of it is released. The guide @ref md_docs_guides_files tells
 * what each operation does to a list and what it loses.
 * @{
 */

/**
 * Sets the directory of every data file.
 *
 * A file's path is this text followed directly by the file's name, so the text must end with "/". At start it is "/".
 *
 * @param dir at most 31 characters. A longer text or null is refused and leaves the directory as it is.
 * @return the directory in use, a terminated text owned by the library and valid for the life of the process.
 * @logs 0: refused. 2: the call.
 */
char *set_target_dir(const char *dir);

/**
 * Replaces the whole list by the contents of a channel file.
 *
 * Rebuilds the hierarchy, makes the file's current view current (the ALL view when that one is empty), links every view
 * entry to its real channel, sorts on request, and fills empty genre and country tables from their own files. Sets
 * country_id of every channel to 0. Counts of views and groups that lie outside their arrays are brought back into
 * them; favourite groups are counted in the low byte of their field, signed, and the field holds that number
 * afterwards. Bytes behind the last record are ignored. The file's version is not tested: a host compares the result
 * with CHANNEL_LIST_VERSION.
 *
 * Records that are still linked when the load begins are not released, because the host may hold pointers to them:
 * call reset_channel_list() first when the list is not empty.
 *
 * Also prints one line with the file's name on standard output.
 *
 * @code{.c}
 * reset_channel_list();
 * set_target_dir("/data/");
 * if (load_channel("channels.dat", 255) != CHANNEL_LIST_VERSION) {
 *   reset_channel_list();
 * }
 * @endcode
 *
 * @param name the file's name below the target directory. Null is refused with -1 and changes nothing. A path of 64
 *       characters or more is a file that cannot be opened.
 * @param sort_mode a SORT_ code of sort_vindex_ex() for the ALL, USER, promotion, TV and radio views, or 255 to keep
 *       the file's order. An unknown code sorts nothing.
 * @return the version in the file (10 for a current one); 1 when the file cannot be opened; -1 when it is short, and
 *         for null. After a missing or short file the list is initialised, with genres and countries from their own
 *         files. A file whose version field is 1 or -1 gives the same numbers.
 * @logs Most lines carry the name load_channel_internal. 0: null, a file that cannot be opened or is short, a count
 *       that was brought back, an entry without a channel ("link..."), an unknown sort mode, a current view that does
 *       not exist, a genre or country file that is missing. 1: a current view that is empty; a current favourite group,
 *       as change_vindex_type() tells; with 20 favourite groups the code behind the last one, twice, when entries are
 *       linked. 2: the path, limits, networks, transponders, the settings and the ALL view. 3: networks, transponders
 *       and channels as they are read. 2, 3, 5: each entry that does not resolve, as get_channel_st() tells it.
 */
int load_channel(const char *name, uint8_t sort_mode);

/**
 * Writes the whole list to a channel file, in place, and calls `sync`.
 *
 * Pointers are written as zero, so that the same list gives the same bytes on every target. The list is not changed.
 * Counts are written as they stand: a transponder's channel count that does not fit its list is reported, those of
 * networks and transponders are not looked at, and a file with such a count is not read back as it was meant.
 *
 * @param name the file's name below the target directory. Null is refused with 0. A path of 64 characters or more is a
 *       file that cannot be opened.
 * @return 1 when every byte was written; 0 otherwise: the file is truncated or partly written, and untouched only when
 *         it could not be opened.
 * @logs The lines carry the name save_channel_internal. 0: null, a file that cannot be opened or written, a channel
 *       count that does not fit. 2: the path, the records as they go out, the settings.
 */
int save_channel(const char *name);

/**
 * Merges a complete new channel list, in the format of the channel file, from "/DATA/BACKUP/all_channel.dat".
 *
 * Services that the list does not hold are added and numbered at the end of the ALL, TV, radio and promotion views by
 * service type and service id; services that the new list lacks are deleted with every entry that shows them; services
 * in both stay exactly as the list has them. Afterwards the views are pruned and linked. The current view stays.
 *
 * An added service gets the low 14 bits of its service id as its number, or the view's count plus 1 when they are 0.
 * Service types (ETSI EN 300 468) 0x01, 0x80 and 0x81 go to the ALL and the TV view, 0x02 to the ALL and the radio
 * view, 0x03 to the ALL view when it is of source type 9; the numbers 200, 202, 606 and 607 go to the promotion view as
 * well, whatever the type. A full view takes no more: the service is filed without an entry there.
 *
 * Call it after load_channel(): country_id serves as the mark of presence, 0 for a channel not seen yet, and is 1
 * afterwards on every channel that the new list holds: the country ids that they had are overwritten. One that the new
 * list lacks is not deleted when its country_id was not 0, and keeps that value. Of several channels with one identity
 * only the first is marked, and the others are deleted. The new file's version is not looked at. The list is saved by
 * the host.
 *
 * @return the number of services added and deleted; 0 when nothing changed, and when the new list cannot be read, which
 *         leaves the list untouched.
 * @logs 0: a file that cannot be opened or is short (new_load_channel), a full view, an entry without a channel, a
 *       service that is not found once it is filed ("can't find channel"). 1: a service that is filed already while
 *       channel_list_st::network_num is 0; with 20 favourite groups the code behind the last one, twice. 2: each
 *       service added and deleted, and how many. 2, 3, 5: each service that the list lacks and each entry that is
 *       pruned, as get_channel_st() tells its miss. 3: networks, transponders and channels as they are read. Entry 1 of
 *       verbosity_map gates the warning of a service type without a view, at 1, and the numbers given in the radio and
 *       promotion views, at 5.
 */
int check_load_channel(void);

/**
 * Reads a channel file of version 9 into a list of its own.
 *
 * The channel list in memory is not touched, but its views are linked again. The version in the file is not looked at.
 *
 * @param path the whole path; the target directory is not put in front. Null is refused with null.
 * @return the list with its networks, transponders and channels, all owned by the caller, each from `calloc`; null when
 *         the file cannot be opened or is short.
 * @logs 0: null, a file that cannot be opened or is short, an entry of the list in memory without a channel, no current
 *       view after destroy_channel_list() (link_rch_info). 1: with 20 favourite groups in memory the code behind the
 *       last one, twice. 2: the path, the number of networks, the settings of the old list. 3: networks, transponders
 *       and channels. 2, 3, 5: each entry of the list in memory that does not resolve, as get_channel_st() tells it.
 */
channel_list_st *v9_load_channel(const char *path);

/**
 * Reads a channel file of version 8 into a list of its own: as v9_load_channel(), but its records are the v8_ records.
 *
 * @param path the whole path; the target directory is not put in front. Null is refused with null.
 * @return the list with all below it, owned by the caller; null when the file cannot be opened or is short.
 * @logs as v9_load_channel().
 */
v8_channel_list_st *v8_load_channel(const char *path);

/**
 * Reads a channel file of version 7 into a list of its own: as v8_load_channel(), whose records it has.
 *
 * @param path the whole path; the target directory is not put in front. Null is refused with null.
 * @return the list with all below it, owned by the caller; null when the file cannot be opened or is short.
 * @logs as v9_load_channel().
 */
v8_channel_list_st *v7_load_channel(const char *path);

/**
 * Replaces the list by the contents of a channel file of version 7, 8 or 9, converted field by field.
 *
 * The list is emptied first, also by a call that is refused; records still linked are not released: call
 * reset_channel_list() before. Views come without pointers to their channels, no view is switched and nothing is saved:
 * save and load the list to use it. Networks and transponders without channels are not carried over. The provider of a
 * channel is taken from its genre, as receivers of the time filed it. vch_type is copied while the ALL view stays
 * current. Tags and favorite_id: see the guide @ref md_docs_guides_files.
 *
 * @code{.c}
 * reset_channel_list();
 * if (repair_channel(8, "/data/old.dat") == 0 && save_channel("channels.dat") == 1) {
 *   reset_channel_list();
 *   load_channel("channels.dat", 255);
 * }
 * @endcode
 *
 * @param version 7, 8 or 9, the version of the file; any other, 10 included, is refused.
 * @param path the whole path; the target directory is not put in front.
 * @return 0; -1 when the version is refused or the file cannot be read.
 * @logs 0: the errors of the reader, each entry of the work view, which has no channel in an empty list
 *       (link_rch_info), a count that was brought back. 1: a service that the file holds twice. 2: the path, the old
 *       settings, each network, each channel as it is filed. 3: what the reader reads, and each network and transponder
 *       that is created, as the miss of its finder. A refused version writes no error.
 */
int repair_channel(int version, const char *path);

/** @} */

CHANNEL_END_DECLS

#endif
