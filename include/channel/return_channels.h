/**
 * @file
 * The history of watched channels, the promotion channels, and limited channels.
 *
 * The history holds the last 20 distinct channels, most recent first, each with the group selection of its time. It and
 * the limited switch live outside the channel list, are never saved, and start empty with the process. Its channels are
 * known by a tag and an identity, matched exactly but for the tolerance of the frequency; 0 is no wildcard.
 */
#ifndef CHANNEL_RETURN_CHANNELS_H
#define CHANNEL_RETURN_CHANNELS_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/** Empties the history. */
void init_return_channel(void);

/** @return entry 0 of the history's 20 entries, valid for the life of the process. */
return_channel_st *get_return_channel(void);

/** @return the number of channels in the history, 0..20. */
int16_t get_return_channel_num(void);

/**
 * An entry of the history.
 *
 * @param index 0 (most recent) to 19.
 * @return the entry, in use or not; null outside the array.
 */
return_channel_st *get_return_channel_by_index(int16_t index);

/**
 * The place of a channel in the history.
 *
 * @return its index; -1 when it is not there; -2 when it is not there and the history is full.
 */
int check_same_return_channel(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                              uint16_t service_id, uint8_t polarisation);

/**
 * Puts a channel of the current view at the top of the history.
 *
 * A channel further down moves up; a full history drops its oldest. A channel that already is at the top stays as it
 * is, its group selection included; one that is not in the current view is reported and changes nothing.
 */
void add_return_channel(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                        uint16_t service_id, uint8_t polarisation);

/**
 * Takes a channel out of the history and looks up the view indexes of the others again in the current view.
 *
 * @return the index it had, or -1 when it is not there.
 */
int remove_return_channel(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                          uint16_t service_id, uint8_t polarisation);

/**
 * Where the promotion channels stand in the ALL view.
 *
 * @param out one number for each promotion channel (10 at most): the last matching position; left as it was when there
 *        is none. Null is refused with -1.
 * @param count receives the number of promotion channels. Null is refused with -1.
 * @return 0, or -1 when refused.
 */
int get_promo_channel_vindex(uint16_t *out, uint16_t *count);

/**
 * Whether a channel may be shown freely.
 *
 * @param rch the channel; null is reported and counts as free.
 * @return 1 when it may be shown freely: the limited switch is 1, or CHANNEL_FLAG_LOCKED is clear; 0 when limited.
 */
int check_limited_channel(const channel_st *rch);

/** @return the limited switch. */
uint8_t get_limited_channel_flag(void);

/**
 * Sets the limited switch.
 *
 * @param value 1 lifts the limit from every channel; every other value leaves it to the channels' flags.
 */
void set_limited_channel_flag(uint8_t value);

CHANNEL_END_DECLS

#endif
