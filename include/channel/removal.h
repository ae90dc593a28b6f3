/**
 * @file
 * Removal of view entries and of real channels, and the sweep that keeps views and hierarchy together.
 *
 * Removing an entry moves the entries behind it down by one; the freed last slot is zeroed. Entries are matched by tag
 * and identity, all seven values; the frequency within the tolerance, and 0 is no wildcard. The work view is never
 * swept.
 */
#ifndef CHANNEL_REMOVAL_H
#define CHANNEL_REMOVAL_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * Removes one entry of a view.
 *
 * @param vindex position, 0..count-1.
 * @param type a view code.
 * @return 0; -1 for a position outside the view or an unknown view.
 */
int vtype_remove_by_vindex(int16_t vindex, int8_t type);

/**
 * Removes every entry of a network index from a view.
 *
 * @param net_index network index, 0..255.
 * @param type a view code.
 * @return 0; -1 for an unknown view.
 */
int vtype_remove_by_net_index(uint8_t net_index, int8_t type);

/**
 * Removes every entry of a channel from a view and logs each at level 2.
 *
 * @param type a view code; the other arguments are the entry's tag and identity.
 * @return 0, also when nothing matched; -1 for an unknown view.
 */
int vtype_remove_vch(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                     uint16_t service_id, uint8_t polarisation, int8_t type);

/**
 * Removes every entry of a channel from a view, silently.
 *
 * @param type a view code; the other arguments are the entry's tag and identity.
 * @return the number of entries left; -1 for an unknown view.
 */
int vtype_remove_virtual_channel_st(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id,
                                    uint32_t frequency, uint16_t service_id, uint8_t polarisation, int8_t type);

/**
 * The sweep: removes every entry that no longer resolves to a real channel from the ALL, TV, radio, USER and promotion
 * views and from every favourite group.
 *
 * @return 0.
 */
int remove_invalid_virtual_channel(void);

/**
 * Unlinks and frees one real channel and lowers its transponder's count; the transponder stays, empty or not.
 *
 * With a frequency the view entries of the channel stay. With frequency 0 the first transponder with the ts_id that
 * carries the service is taken, and the sweep follows. Hosts rely on either.
 *
 * @return 0; -1 when the channel is not found, which is logged at level 3.
 */
int remove_channel_st(uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency, uint16_t service_id,
                      uint8_t polarisation);

/**
 * Removes a channel from every view but the work view; then the real channel, unless vtype_get_vch_index_by_ts_info()
 * still finds it in the ALL view; then sweeps.
 *
 * With a frequency nothing is left to be found: entries with another tag do not save the channel, and are swept. With
 * frequency 0 the removal takes only entries of that frequency, and any entry of the ALL view with the same ids saves
 * the channel.
 *
 * @return 0, whatever was found.
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
 */
int remove_channel_info_by_net_index(uint8_t net_index);

CHANNEL_END_DECLS

#endif
