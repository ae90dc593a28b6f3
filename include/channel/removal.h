/**
 * @file
 * Removal of view entries and of real channels, and the sweep that keeps views and hierarchy together.
 */
#ifndef CHANNEL_REMOVAL_H
#define CHANNEL_REMOVAL_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup removal Removal
 * @brief Taking entries out of views and channels out of the list, and the sweep.
 *
 * `#include <channel/removal.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * Removing an entry moves the entries behind it down by one; the freed last slot is zeroed. Entries are matched by tag
 * and identity, all seven values; the frequency within the tolerance, and 0 is no wildcard. The work view is never
 * swept. A real channel that is freed leaves no pointer behind: view entries and the history lose theirs.
 * @{
 */

/**
 * Removes one entry of a view.
 *
 * @param vindex position, 0..count-1.
 * @param type a view code.
 * @return 0; -1 for a position outside the view or an unknown view.
 * @logs 0: a position outside. 1: an unknown view, twice. 2: the removal.
 */
int vtype_remove_by_vindex(int16_t vindex, int8_t type);

/**
 * Removes every entry of a network index from a view.
 *
 * @param net_index network index, 0..255.
 * @param type a view code.
 * @return 0, also when nothing matched; -1 for an unknown view.
 * @logs 1: an unknown view, twice.
 */
int vtype_remove_by_net_index(uint8_t net_index, int8_t type);

/**
 * Removes every entry of a channel from a view and logs each.
 *
 * @param tag compared with vch_tag.
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @param type a view code.
 * @return 0, also when nothing matched; -1 for an unknown view.
 * @logs 1: an unknown view, twice. 2: each entry removed.
 */
int vtype_remove_vch(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                     uint16_t service_id, uint8_t polarisation, int8_t type);

/**
 * Removes every entry of a channel from a view, silently.
 *
 * @param tag compared with vch_tag.
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @param type a view code.
 * @return the number of entries left; -1 for an unknown view.
 * @logs 1: an unknown view, twice.
 */
int vtype_remove_virtual_channel_st(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id,
                                    uint32_t frequency, uint16_t service_id, uint8_t polarisation, int8_t type);

/**
 * The sweep: removes every entry that no longer resolves to a real channel.
 *
 * It goes through the ALL, TV, radio, USER and promotion views and every favourite group.
 *
 * @return 0.
 * @logs 2: the call. 2, 3, 5: each entry removed, as get_channel_st() tells its miss.
 */
int remove_invalid_virtual_channel(void);

/**
 * Unlinks and frees one real channel and lowers its transponder's count; the transponder stays, empty or not.
 *
 * With a frequency the view entries of the channel stay. With frequency 0 the first transponder with the ts_id that
 * carries the service is taken, and the sweep follows. Hosts rely on either.
 *
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @return 0; -1 when the channel is not found.
 * @logs 2: the channel, as print_channel_info() does. 3: a miss, by its finder and with the step that failed. With
 *       frequency 0 also what remove_invalid_virtual_channel() says. None while the list counts no network.
 */
int remove_channel_st(uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency, uint16_t service_id,
                      uint8_t polarisation);

/**
 * Removes a channel from every view but the work view, and then the real channel, and sweeps.
 *
 * The real channel stays when vtype_get_vch_index_by_ts_info() still finds it in the ALL view. With a frequency nothing
 * is left to be found: entries with another tag do not save the channel, and are swept. With frequency 0 the removal
 * takes only entries of that frequency, and any entry of the ALL view with the same ids saves the channel.
 *
 * @param tag compared with vch_tag.
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @return 0, whatever was found.
 * @logs 2: start ("S") and end ("E"). 2, 3, 5: between them, what remove_channel_st() and
 *       remove_invalid_virtual_channel() say.
 */
int remove_virtual_channel_st(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                              uint16_t service_id, uint8_t polarisation);

/**
 * Removes every network with a network index, makes the TV view current (the radio view when TV is empty), and sweeps.
 *
 * The counts are looked at before the sweep: a TV view that the sweep empties becomes current all the same.
 *
 * @param net_index network index, 0..255.
 * @return 0.
 * @logs 0: neither view has entries, which entry 1 of verbosity_map gates. 2: each transponder, the new view. 5: the
 *       call and each network. Then what remove_invalid_virtual_channel() says.
 */
int remove_channel_info_by_net_index(uint8_t net_index);

/** @} */

CHANNEL_END_DECLS

#endif
