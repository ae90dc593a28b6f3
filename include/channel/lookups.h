/**
 * @file
 * Lookups by position in a view ("vindex"), by channel number and by transport identity. They change nothing.
 */
#ifndef CHANNEL_LOOKUPS_H
#define CHANNEL_LOOKUPS_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup lookups Lookups
 * @brief From a position, a channel number or an identity to an entry of a view and to its real channel.
 *
 * `#include <channel/lookups.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * Functions without a view argument work on the current view; the `vtype_` functions take a view code. Searches walk
 * the view from position 0 and the first match wins. Positions from the count up to the array's capacity are readable
 * where no range check is named: they hold what was left there: zeros after clearing or removing, copies after a move,
 * older entries after sort_vindex_by_flag(), a file's bytes after a load. Positions outside the array are refused.
 * Pointers to entries are owned by the library; the entry at a position changes when the view does.
 *
 * @code{.c}
 * if (change_vindex_type(VIEW_TV) == 0) {
 *   int16_t vindex = get_channel_index(7);
 *   const channel_st *service = vindex >= 0 ? get_channel(vindex) : NULL;
 *   if (service != NULL) {
 *     printf("%.96s: PMT PID %u\n", service->name[0].text, service->pmt_pid);
 *   }
 * }
 * @endcode
 * @{
 */

/**
 * The entries of the current view.
 *
 * @return the first entry of the array, owned by the library; null when there is no current view.
 * @logs 0: no current view.
 */
virtual_channel_st *get_channel_list_vch(void);

/**
 * The number of entries of the current view.
 *
 * @return the count; 0 when there is no current view.
 * @logs 0: no current view.
 */
int16_t get_channel_list_number(void);

/**
 * The number of entries of the current view, not its largest channel number: hosts rely on the count.
 *
 * @return the count; 0 when there is no current view.
 * @logs 0: no current view.
 */
uint16_t find_max_channel_number(void);

/**
 * An entry of the current view.
 *
 * @param vindex position in the array; positions behind the count are readable.
 * @return the entry, or null outside the array or without a current view.
 * @logs 0: no current view, a position outside the array.
 */
virtual_channel_st *get_vchannel_by_vindex(int16_t vindex);

/**
 * An entry of a view.
 *
 * @param vindex position in the array; positions behind the count are readable.
 * @param type a view code.
 * @return the entry, or null outside the array or for an unknown view.
 * @logs 0: an unknown view, a position outside the array. 1: an unknown view, twice.
 */
virtual_channel_st *vtype_get_vchannel_by_vindex(int16_t vindex, int8_t type);

/**
 * The channel number at a position of the current view.
 *
 * @param vindex position in the array; positions behind the count are readable.
 * @return major_ch_num, or -1 outside the array or without a current view.
 * @logs 0: no current view, a position outside the array.
 */
int16_t get_channel_number(int16_t vindex);

/**
 * The minor channel number at a position of the current view.
 *
 * @param vindex position in the array; positions behind the count are readable.
 * @return minor_ch_num, or -1 outside the array or without a current view.
 * @logs 0: no current view, a position outside the array.
 */
int16_t get_channel_minor_number(int16_t vindex);

/**
 * The position of a channel number in the current view.
 *
 * @param major channel number, compared exactly.
 * @return the lowest position with that major_ch_num, or -1.
 * @logs 0: a miss.
 */
int16_t get_channel_index(int16_t major);

/**
 * The position of a channel number with its minor number in the current view.
 *
 * @param major channel number, compared exactly.
 * @param minor minor number, compared exactly.
 * @return the lowest position with both, or -1.
 * @logs 0: a miss.
 */
int16_t get_channel_index_by_number(int16_t major, int16_t minor);

/**
 * The position of a channel number with its minor number in a view.
 *
 * @param major channel number, compared exactly.
 * @param minor minor number, compared exactly.
 * @param type a view code.
 * @return the lowest position with both, or -1, also for an unknown view.
 * @logs 0: a miss. 1: an unknown view, twice.
 */
int16_t vtype_get_vindex_by_number(int16_t major, int16_t minor, int8_t type);

/**
 * The entry with a channel number and a minor number in a view.
 *
 * @param major channel number, compared exactly.
 * @param minor minor number, compared exactly.
 * @param type a view code.
 * @return the first entry with both, or null, also for an unknown view.
 * @logs 0: a miss. 1: an unknown view, twice.
 */
virtual_channel_st *vtype_get_vch_by_number(int16_t major, int16_t minor, int8_t type);

/**
 * The position of a service id in the current view.
 *
 * @param service_id service id (ETSI EN 300 468), 0..65535.
 * @return the lowest position with it, or -1.
 * @logs none.
 */
int16_t get_vch_index_by_service_id(uint16_t service_id);

/**
 * The position of a transport identity in the current view.
 *
 * All seven values must match; a frequency of 0 matches any frequency.
 *
 * @param tag compared with vch_tag.
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @return the lowest matching position, or -1.
 * @logs 3: every entry visited, beside the values wanted; without a function name.
 */
int16_t get_vch_index_by_ts_info(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                                 uint16_t service_id, uint8_t polarisation);

/**
 * The entry of a transport identity in a view.
 *
 * All seven values must match; with a frequency of 0 neither frequency nor polarisation is compared, but the tag is.
 *
 * @param tag compared with vch_tag.
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @param type a view code.
 * @return the first matching entry, or null, also for an unknown view.
 * @logs 1: an unknown view, twice.
 */
virtual_channel_st *vtype_get_vch_by_ts_info(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id,
                                             uint32_t frequency, uint16_t service_id, uint8_t polarisation,
                                             int8_t type);

/**
 * The position of a transport identity in a view.
 *
 * All seven values must match; with a frequency of 0 neither frequency, polarisation nor tag is compared. (The tag is
 * where this search differs from vtype_get_vch_by_ts_info(); hosts rely on either.)
 *
 * @param tag compared with vch_tag unless the frequency is 0.
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @param type a view code.
 * @return the lowest matching position, or -1, also for an unknown view.
 * @logs 1: an unknown view, twice.
 */
int16_t vtype_get_vch_index_by_ts_info(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id,
                                       uint32_t frequency, uint16_t service_id, uint8_t polarisation, int8_t type);

/**
 * The first entry of a view on a transponder.
 *
 * @param tag compared with vch_tag.
 * @param net_index network index.
 * @param frequency compared within the tolerance; 0 is no wildcard.
 * @param polarisation compared exactly.
 * @param type a view code.
 * @return the entry, or null, also for an unknown view.
 * @logs 1: an unknown view, twice.
 */
virtual_channel_st *vtype_get_vch_by_frequency(int8_t tag, uint8_t net_index, uint32_t frequency, uint8_t polarisation,
                                               int8_t type);

/**
 * The real channel at a position of the current view.
 *
 * It is resolved from the entry's identity as by get_channel_st(); the entry's cached pointer is not used.
 *
 * @param vindex position, 0..count-1.
 * @return the channel, owned by the list; null outside the view, without a current view, and for an entry that no
 *         longer resolves.
 * @logs 0: no current view. 5: the position, or the entry's identity. 2, 3, 5: an entry that does not resolve, as
 *       get_channel_st() tells it.
 */
channel_st *get_channel(int16_t vindex);

/**
 * The real channel at a position of the current view: the same as get_channel(), under the name of its family.
 *
 * @param vindex position, 0..count-1.
 * @return the channel, owned by the list, or null, as by get_channel().
 * @logs as get_channel().
 */
channel_st *get_channel_by_vindex(int16_t vindex);

/**
 * The real channel at a position of a view, resolved from the entry's identity.
 *
 * @param vindex position in the array; behind the count what was left in the slot is resolved; an empty one normally
 *       gives null.
 * @param type a view code.
 * @return the channel, owned by the list; null outside the array, for an unknown view, or when it does not resolve.
 * @logs 0: a position beyond the array (a negative one is not told). 1: an unknown view, twice. 5: the entry's
 *       identity. 2, 3, 5: an entry that does not resolve, as get_channel_st() tells it.
 */
channel_st *vtype_get_channel_by_vindex(int16_t vindex, int8_t type);

/** @} */

CHANNEL_END_DECLS

#endif
