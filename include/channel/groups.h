/**
 * @file
 * Group lists: the group selection in use, the provider, genre and country tables, the group ids of services, and the
 * files that keep genres and countries apart from the channel file.
 */
#ifndef CHANNEL_GROUPS_H
#define CHANNEL_GROUPS_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup groups Groups
 * @brief The group selection in use, the tables of genres, providers and countries, and their side files.
 *
 * `#include <channel/groups.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * Group kinds are the GROUP_ codes. Genres, providers and countries have a table; satellites are known by the services'
 * network index alone. Group ids are the host's: the library compares them and gives them no meaning.
 * @{
 */

/**
 * The group kind in use.
 *
 * @return channel_list_st::use_group_list, a GROUP_ code.
 * @logs none.
 */
int8_t get_use_group_list(void);

/**
 * The view from which the current list was made.
 *
 * @return channel_list_st::service_type: 1 TV, 2 radio, or another source view of create_service_by_group_list_id().
 * @logs none.
 */
int8_t get_current_service_type(void);

/**
 * The group id in use.
 *
 * @return channel_list_st::sub_group_id; -1 when none.
 * @logs none.
 */
int16_t get_current_sub_group_id(void);

/**
 * The table of a group kind.
 *
 * @param kind GROUP_GENRE, GROUP_PROVIDER or GROUP_COUNTRY.
 * @param count receives the number of groups; left untouched for GROUP_SATELLITE, 0 for every other kind and for an
 *       empty table. Null is refused with null.
 * @return the first group, owned by the list, or null when the count is 0 and for every other kind.
 * @logs 0: null.
 */
group_st *get_group_list(int8_t kind, uint16_t *count);

/**
 * The first group of a table with an id.
 *
 * @param kind GROUP_GENRE, GROUP_PROVIDER or GROUP_COUNTRY; every other kind gives null.
 * @param id group id.
 * @return the group, owned by the list, or null.
 * @logs none.
 */
group_st *get_group_st_by_id(int8_t kind, int16_t id);

/**
 * The first genre with an id.
 *
 * @param id group id.
 * @return the genre, owned by the list, or null.
 * @logs none.
 */
group_st *find_genre_id(int16_t id);

/**
 * The first country with an id.
 *
 * @param id group id.
 * @return the country, owned by the list, or null.
 * @logs none.
 */
group_st *find_country_id(int16_t id);

/**
 * The group id of an entry's real channel (its cached pointer).
 *
 * @param kind GROUP_SATELLITE for the network index, GROUP_GENRE, GROUP_PROVIDER or GROUP_COUNTRY.
 * @param vch the entry.
 * @return the id; -1 for another kind, a null entry, or an entry without a real channel.
 * @logs none.
 */
int get_group_id(int8_t kind, const virtual_channel_st *vch);

/**
 * Stores a group id in an entry's real channel (its cached pointer).
 *
 * @param kind as for get_group_id(). GROUP_SATELLITE overwrites the channel's network index with the id's low byte.
 * @param vch the entry.
 * @param id the group id.
 * @return the value stored; -1 for another kind, a null entry, or an entry without a real channel.
 * @logs 2: the id of a genre.
 */
int set_group_id(int8_t kind, virtual_channel_st *vch, int16_t id);

/**
 * Replaces the genre or country table and saves it to its file.
 *
 * @param kind GROUP_GENRE or GROUP_COUNTRY; any other is reported and changes nothing.
 * @param table the whole table, 50 genres or 200 countries, used or not. Null is refused and changes nothing.
 * @param count the number of groups in use, stored as given; beyond the table it is read as the table's size.
 * @return 1 in every case, also when the file cannot be written.
 * @logs 0: null; what save_group_list() reports. 1: another kind. 2: the saving.
 */
int set_group_list(int8_t kind, const group_st *table, int16_t count);

/**
 * Fills the genre table from "genre.dat" or the country table from "country.dat" in the target directory.
 *
 * @param kind GROUP_GENRE or GROUP_COUNTRY; any other is refused with 0.
 * @return 0 when read, and when there is no file, which leaves the table as it was; -1 when the file is short, which
 *         empties the table.
 * @logs 0: another kind, no file, a short file, a count outside the table, which is brought back.
 */
int load_group_list(int8_t kind);

/**
 * Writes the genre or the country table to its file in the target directory, and calls `sync`.
 *
 * The genre table goes to a file named "genre.dat" followed by a newline character, which load_group_list() does not
 * read: kept as receivers in the field have it. An empty table is not written.
 *
 * @param kind GROUP_GENRE or GROUP_COUNTRY; any other is refused with 0.
 * @return 1 when written or empty; 0 otherwise.
 * @logs 0: another kind, an empty table, a file that cannot be opened or written. 2: the saving.
 */
int save_group_list(int8_t kind);

/**
 * Does nothing but look the view up; kept for hosts that call it.
 *
 * @param view_type a view code.
 * @return 0.
 * @logs 1: an unknown view, twice.
 */
int get_country_id_by_service_type(int8_t view_type);

/**
 * Does nothing but look the view up; kept for hosts that call it.
 *
 * @param view_type a view code.
 * @return 0.
 * @logs 1: an unknown view, twice.
 */
int get_genre_id_by_service_type(int8_t view_type);

/** @} */

CHANNEL_END_DECLS

#endif
