/**
 * @file
 * The history of watched channels, the promotion channels, and limited channels.
 */
#ifndef CHANNEL_RETURN_CHANNELS_H
#define CHANNEL_RETURN_CHANNELS_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup return_channels Return channels
 * @brief The history of watched channels; promotion channels; limited channels.
 *
 * `#include <channel/return_channels.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * The history holds the last 20 distinct channels, most recent first, each with the group selection of its time. It and
 * the limited switch live outside the channel list, are never saved, and start empty with the process. Its channels are
 * known by a tag and an identity, matched exactly but for the tolerance of the frequency; 0 is no wildcard.
 *
 * @code{.c}
 * for (int16_t i = 0; i < get_return_channel_num(); ++i) {
 *   const return_channel_st *watched = get_return_channel_by_index(i);
 *   printf("%d, group kind %d\n", watched->vch.major_ch_num, watched->group);
 * }
 * @endcode
 * @{
 */

/**
 * Empties the history.
 * @logs none.
 */
void init_return_channel(void);

/**
 * The history, for reading in place.
 *
 * @return entry 0 of the history's 20 entries, owned by the library and valid for the life of the process.
 * @logs none.
 */
return_channel_st *get_return_channel(void);

/**
 * The number of channels in the history.
 *
 * @return the number, 0..20.
 * @logs none.
 */
int16_t get_return_channel_num(void);

/**
 * An entry of the history.
 *
 * @param index 0 (most recent) to 19.
 * @return the entry, in use or not, owned by the library; null outside the array.
 * @logs 0: an index outside.
 */
return_channel_st *get_return_channel_by_index(int16_t index);

/**
 * The place of a channel in the history.
 *
 * @param tag compared with the tag of the entry that is remembered.
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @return its index; -1 when it is not there; -2 when it is not there and the history is full.
 * @logs 2: a channel that is there, as wanted and as found.
 */
int check_same_return_channel(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                              uint16_t service_id, uint8_t polarisation);

/**
 * Puts a channel of the current view at the top of the history.
 *
 * A channel further down moves up; a full history drops its oldest. A channel that already is at the top stays as it
 * is, its group selection included; one that is not in the current view is reported and changes nothing. The entry is
 * found as by get_vch_index_by_ts_info(), where frequency 0 matches any. In the history the channel is looked up with
 * the frequency as given: 0 does not find an entry that is listed under its frequency, and the channel is then listed
 * twice.
 *
 * @param tag compared with vch_tag.
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @logs 0: not in the current view. 2: what became of it, and the entry. 3: the entries that the search visits.
 */
void add_return_channel(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                        uint16_t service_id, uint8_t polarisation);

/**
 * Takes a channel out of the history and looks up the view indexes of the others again in the current view.
 *
 * @param tag compared with the tag of the entry that is remembered.
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @return the index it had, or -1 when it is not there.
 * @logs 2: those of check_same_return_channel(). 3: the entries that the searches visit. Entry 106 of verbosity_map
 *       gates the line of the removal, at 2.
 */
int remove_return_channel(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                          uint16_t service_id, uint8_t polarisation);

/**
 * Where the promotion channels stand in the ALL view.
 *
 * @param out one number for each promotion channel (10 at most): the last matching position; left as it was when there
 *       is none. Null is refused with -1.
 * @param count receives the number of promotion channels. Null is refused with -1.
 * @return 0, or -1 when refused.
 * @logs 0: null. 5: the call and each match.
 */
int get_promo_channel_vindex(uint16_t *out, uint16_t *count);

/**
 * Whether a channel may be shown freely.
 *
 * @param rch the channel; null is reported and counts as free.
 * @return 1 when it may be shown freely: the limited switch is 1, or CHANNEL_FLAG_LOCKED is clear; 0 when limited.
 * @logs 0: null, unless the switch lifts every limit.
 */
int check_limited_channel(const channel_st *rch);

/**
 * The limited switch.
 *
 * @return the value that was set last; 0 when the process starts.
 * @logs none.
 */
uint8_t get_limited_channel_flag(void);

/**
 * Sets the limited switch.
 *
 * @param value 1 lifts the limit from every channel; every other value leaves it to the channels' flags.
 * @logs none.
 */
void set_limited_channel_flag(uint8_t value);

/** @} */

CHANNEL_END_DECLS

#endif
