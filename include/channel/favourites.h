/**
 * @file
 * Favourite groups: up to 20 named lists of up to 40 channels each.
 */
#ifndef CHANNEL_FAVOURITES_H
#define CHANNEL_FAVOURITES_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup favourites Favourites
 * @brief The user's own lists: up to 20 named groups of up to 40 channels each.
 *
 * `#include <channel/favourites.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * A group is addressed by its index (0..19, its place in the table, which is its view code - VIEW_FAVOURITE) or by its
 * id (0..19), which stays with it when groups move. Entries are copies of view entries. Pointers to groups and entries
 * name a place: they show another when groups or entries move.
 *
 * @code{.c}
 * group_st group = {0};
 * group.name_len = 7;
 * memcpy(group.name, "Evening", 7);
 * int id = add_fav_group_info(group);
 * const virtual_channel_st *watched = get_vchannel_by_vindex(0);
 * if (id >= 0 && watched != NULL && add_fav_virtual_channel((int16_t)id, watched) == 0) {
 *   change_vindex_type((int8_t)(VIEW_FAVOURITE + get_fav_index((int16_t)id)));
 * }
 * @endcode
 * @{
 */

/**
 * The number of favourite groups.
 *
 * @return the low byte of channel_list_st::favorite_group_num as it stands, as a signed number: 0..20 unless a host
 *         wrote another.
 * @logs none.
 */
int get_fav_group_number(void);

/**
 * A group by its index.
 *
 * @param index 0..count-1.
 * @return the group, owned by the list; null outside.
 * @logs 0: an index outside, as an empty line with the function's name.
 */
group_st *get_fav_group_info(int16_t index);

/**
 * A group by its id.
 *
 * @param id group id.
 * @return the first group with it, owned by the list, or null.
 * @logs none.
 */
group_st *get_fav_group_info_by_fav_id(int16_t id);

/**
 * The index of a group.
 *
 * @param id group id.
 * @return its index; -1 when there is none.
 * @logs 0: a miss, as an empty line with the function's name.
 */
int16_t get_fav_index(int16_t id);

/**
 * An entry slot of a group, in use or not.
 *
 * @param group group index, 0..19.
 * @param entry entry index, 0..39.
 * @return the slot, owned by the list; null outside the arrays.
 * @logs 0: an index outside.
 */
virtual_channel_st *get_fav_vch(int16_t group, int16_t entry);

/**
 * The number of entries of a group.
 *
 * @param group group index, 0..19.
 * @return the stored count as it stands; 0 outside the array.
 * @logs 0: an index outside.
 */
int16_t get_fav_vch_number(int16_t group);

/**
 * The entry with a channel number in a group.
 *
 * @param group group index, 0..19.
 * @param major channel number, compared exactly.
 * @param minor minor number, compared exactly.
 * @return the index of the first entry with both, or -1.
 * @logs 0: an index outside. A miss is not told.
 */
int16_t get_fav_vindex_by_number(int16_t group, int16_t major, int16_t minor);

/**
 * The entry with a channel number in a group: the same as get_fav_vindex_by_number().
 *
 * @param group group index, 0..19.
 * @param major channel number, compared exactly.
 * @param minor minor number, compared exactly.
 * @return the index of the first entry with both, or -1.
 * @logs as get_fav_vindex_by_number(), under its name.
 */
int16_t get_fav_index_by_number(int16_t group, int16_t major, int16_t minor);

/**
 * The entries of the group with a name.
 *
 * @param name a terminated text, compared with regard to case. Null is refused with 0.
 * @param out receives the group's first entry, owned by the list; untouched when there is no such group. Null is
 *       refused with 0.
 * @return the number of its entries as it is stored; 0 when there is no such group.
 * @logs 0: null.
 */
int16_t get_fav_vch_by_group_name(const char *name, virtual_channel_st **out);

/**
 * Creates a group at the end of the table, empty, under the smallest free id.
 *
 * A group that has the name already stays as it is, except that its name_len becomes the length of its name.
 *
 * @param group name and name_len are used; the id is not.
 * @return the new id, or the id of the group that has the name already (without regard to case); -1 when name_len is
 *         negative or there are 20 groups.
 * @logs 0: refused. 1: a group has the name already. 3: the group and its index.
 */
int add_fav_group_info(group_st group);

/**
 * Renames a group.
 *
 * The first 96 of the name's 98 bytes are cleared first. A length below 1 blanks the name of every group with the id,
 * leaves name_len and gives -1: hosts rely on the group staying in dumps.
 *
 * @param id group id.
 * @param name @p length bytes. Null is refused with -1 unless the length is below 1.
 * @param length in bytes; cut to 97.
 * @return 0; -1 when there is no such group or the name is refused.
 * @logs 0: null.
 */
int rename_favorite_group(int16_t id, const char *name, int16_t length);

/**
 * Removes a group with its entries; the groups behind it move up and their view codes change.
 *
 * @param id group id.
 * @return 0; -1 when there is no such group.
 * @logs none.
 */
int remove_fav_group(int16_t id);

/**
 * Moves a group with its entries to another index.
 *
 * A copy of the former last group stays behind the table's end; a group created there starts empty all the same.
 *
 * @param dest new index, 0..count-1.
 * @param src old index, 0..count-1.
 * @return 0; -1, and nothing moved, outside the table.
 * @logs 0: an index outside.
 */
int move_fav_ch_group(int16_t dest, int16_t src);

/**
 * Adds a channel at the end of a group.
 *
 * @param id group id.
 * @param vch the entry to copy; its favorite_id becomes its position in the group. Null is refused with -1.
 * @return 0, also when the channel is there already and the group is not full; -1 when there is no such group or it
 *         holds 40 entries, that channel among them or not.
 * @logs 0: refused. 2: the entry as it was added.
 */
int add_fav_virtual_channel(int16_t id, const virtual_channel_st *vch);

/**
 * Removes an entry of a group. Numbers and favorite_id of the others stay.
 *
 * @param id group id.
 * @param index entry index, 0..count-1.
 * @return 0; -1 when there is no such group or entry.
 * @logs 0: no such entry (a missing group is not told). 2: the removal.
 */
int remove_fav_virtual_channel(int16_t id, int16_t index);

/**
 * Removes a channel of a group and closes the gap in numbers and positions.
 *
 * Higher channel numbers and higher favorite_id of the others are lowered by one.
 *
 * @param tag compared with vch_tag.
 * @param id group id.
 * @param net_index,frequency,polarisation,network_id,ts_id,service_id the channel's @ref rules_identity "identity",
 *       where frequency 0 is no wildcard.
 * @return 0, also when the channel is not there; -1 when there is no such group.
 * @logs 2: each group looked at.
 */
int remove_fav_virtual_channel_by_ts_info(int8_t tag, int16_t id, uint8_t net_index, uint32_t frequency,
                                          uint8_t polarisation, uint16_t network_id, uint16_t ts_id,
                                          uint16_t service_id);

/**
 * Moves entries within a group. No favorite_id or channel number changes.
 *
 * One entry ends at the destination. Several entries follow, in the order given, the entry that stands at the
 * destination: an offset by one that hosts rely on. Where that entry moves itself, with all behind it, they end the
 * group. Every call with another count than 1 compacts entries without a real channel away: the count stays, and as
 * many slots at the end then hold copies of the entry that was last (empty slots when that one is moved itself).
 *
 * @param group group index, 0..19.
 * @param dest destination, 0..count-1.
 * @param count how many positions @p sources gives; 0 or less only compacts entries without a real channel away.
 * @param sources distinct entry indexes, 0..count-1; may be null when @p count is below 1.
 * @return 0; -1, and nothing moved, when a position is not valid.
 * @logs 0: refused. 2: each of several entries.
 */
int move_fav_channel(int16_t group, int16_t dest, int16_t count, const uint16_t *sources);

/** @} */

CHANNEL_END_DECLS

#endif
