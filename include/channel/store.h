/**
 * @file
 * The store: its lifecycle, the hierarchy of networks, transponders and real channels, and its finders.
 */
#ifndef CHANNEL_STORE_H
#define CHANNEL_STORE_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * Zeroes the channel list, sets its defaults and makes the ALL view current.
 *
 * Records still linked are not released, because a host may hold pointers to them: call reset_channel_list() instead
 * when there may be any.
 *
 * @return the result of change_vindex_type(VIEW_ALL), which is -4 since the view is empty.
 */
int init_channel_list(void);

/**
 * Releases every network, transponder and real channel, then does what init_channel_list() does.
 *
 * Nothing is released when channel_list_st::network_num is 0, whatever the list of networks holds.
 *
 * @return the result of init_channel_list().
 */
int reset_channel_list(void);

/**
 * Releases every record and zeroes the channel list without setting defaults.
 *
 * Initialise or load before any other use.
 */
void destroy_channel_list(void);

/**
 * Clears a real channel to its unset state: all zero, but ids and PIDs 0xFFFF and component tags 0xFF.
 *
 * @param rch the record to clear; its link is cleared too, so it must be in no list. Null is refused.
 */
void reset_channel(channel_st *rch);

/**
 * Allocates a real channel in its unset state, in no list.
 *
 * @return the record, owned by the caller until add_rch_info() files it; free it with `free`.
 */
channel_st *alloc_channel_info(void);

/**
 * Allocates a transponder without channels, in no list. The caller links it into a network and counts it.
 *
 * @param ts_id transport stream id, 0..65535.
 * @param frequency its frequency.
 * @param polarisation 0 horizontal, otherwise vertical.
 * @return the record, owned by the caller until it is linked into a network.
 */
tp_ch_st *alloc_tp_ch_info(uint16_t ts_id, uint32_t frequency, uint8_t polarisation);

/**
 * Creates a network without transponders, appends it to the channel list and counts it.
 *
 * @param net_index network index, 0..255.
 * @param network_id original network id, 0..65535.
 * @param name 64 readable bytes, all of which are copied; null leaves the name empty.
 * @return the network, owned by the list; null when the list already counts 65,535 networks.
 */
network_ch_st *alloc_network_ch_info(uint8_t net_index, uint16_t network_id, const char *name);

/**
 * Files a real channel under its network and transponder, creating them as needed.
 *
 * The network is found by net_index and network_id, the transponder by frequency and polarisation (by ts_id when the
 * frequency is 0), both from the record. When the transponder already holds the service_id, the record is not filed: a
 * WARNING names the channel that is there, and the record stays the caller's to free. No view gets an entry.
 *
 * @param rch the record, from alloc_channel_info() or `calloc`, in no list. Null is refused with -1.
 * @param network_name 64 readable bytes for a network that is created; may be null.
 * @return 0, also for a service that is already there; -1 when refused.
 */
int add_rch_info(channel_st *rch, const char *network_name);

/**
 * Unlinks and frees one real channel and lowers its transponder's count.
 *
 * The count is lowered on the first matching transponder (ts_id, frequency and polarisation) of every network with the
 * channel's net_index and network_id. View entries of the channel stay; an empty transponder stays.
 *
 * @param rch a filed channel; the pointer is invalid afterwards. Null is refused.
 */
void release_rch_info(channel_st *rch);

/**
 * Frees a transponder with all its real channels. The network's tp_num is the caller's to lower.
 *
 * @param tp a transponder; the pointer is invalid afterwards. Null is refused.
 */
void release_tp_ch_info(tp_ch_st *tp);

/**
 * Frees a network with its transponders and their channels, and lowers network_num.
 *
 * @param network a network of the list; the pointer is invalid afterwards. Null is refused.
 */
void release_network_ch_info(network_ch_st *network);

/**
 * Resolves an identity to its real channel.
 *
 * With a frequency the transponder is found by frequency and polarisation, and ts_id is not looked at. With frequency 0
 * every transponder of the network with the ts_id is searched and the polarisation is not looked at.
 *
 * @return the channel, owned by the list, or null. Misses are logged at levels 2, 3 and 5.
 */
channel_st *get_channel_st(uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                           uint16_t service_id, uint8_t polarisation);

/**
 * Finds the first network with a network index and an original network id.
 *
 * @return the network, owned by the list, or null. A miss is logged at level 3.
 */
network_ch_st *get_network_ch_info(uint8_t net_index, uint16_t network_id);

/**
 * Finds the first transponder of a network.
 *
 * @param network the network to search. Null is refused with null.
 * @param ts_id transport stream id; looked at only when the frequency is 0.
 * @param frequency matched within the tolerance together with the polarisation; 0 to match by ts_id alone.
 * @param polarisation 0 horizontal, otherwise vertical, compared exactly.
 * @return the transponder, owned by the list, or null. A miss is logged at level 3.
 */
tp_ch_st *get_tp_ch_info_by_network_ch(network_ch_st *network, uint16_t ts_id, uint32_t frequency,
                                       uint8_t polarisation);

/**
 * Finds the first real channel of a transponder with a service id.
 *
 * @param tp the transponder to search; null gives null, without a log line.
 * @param service_id service id, 0..65535.
 * @return the channel, owned by the list, or null. A miss is not logged.
 */
channel_st *get_rch_ch_info_by_tp_ch(tp_ch_st *tp, uint16_t service_id);

CHANNEL_END_DECLS

#endif
