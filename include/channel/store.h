/**
 * @file
 * The store: its lifecycle, the hierarchy of networks, transponders and real channels, and its finders.
 */
#ifndef CHANNEL_STORE_H
#define CHANNEL_STORE_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup store Store
 * @brief Lifecycle of the list; networks, transponders and real channels; finding them.
 *
 * `#include <channel/store.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * The hierarchy is three lists deep: channel_list_st::network_list holds networks, each holds transponders
 * (network_ch_st::tp_list), each holds real channels (tp_ch_st::rch_list). Finders walk it in list order, and the first
 * match wins. Filing a channel gives it no number: views get their entries from the host or from a merge.
 * @{
 */

/**
 * Zeroes the channel list, sets its defaults and makes the ALL view current.
 *
 * Records still linked are not released, because a host may hold pointers to them: call reset_channel_list() instead
 * when there may be any. The work view, the history, the limited switch and the target directory stay as they are.
 *
 * @return the result of change_vindex_type(VIEW_ALL), which is -4 since the view is empty.
 * @logs none.
 */
int init_channel_list(void);

/**
 * Releases every network, transponder and real channel, then does what init_channel_list() does.
 *
 * Nothing is released when channel_list_st::network_num is 0, whatever the list of networks holds. Pointers to the
 * records are invalid afterwards; the history and the work view forget theirs.
 *
 * @return the result of init_channel_list().
 * @logs 3: each transponder that is released, with its number of channels. 5: the call.
 */
int reset_channel_list(void);

/**
 * Releases every record and zeroes the channel list without setting defaults.
 *
 * There is no current view afterwards: initialise or load before any other use. The history and the work view stay,
 * without their pointers to the channels.
 * @logs none.
 */
void destroy_channel_list(void);

/**
 * Clears a real channel to its unset state: all zero, but ids and PIDs 0xFFFF and component tags 0xFF.
 *
 * @param rch the record to clear; its link is cleared too, so it must be in no list. Null is refused.
 * @logs 0: null.
 */
void reset_channel(channel_st *rch);

/**
 * Allocates a real channel in its unset state, in no list.
 *
 * @return the record, owned by the caller until add_rch_info() files it; free it with `free`.
 * @logs none.
 */
channel_st *alloc_channel_info(void);

/**
 * Allocates a transponder without channels, in no list. The caller links it into a network and counts it.
 *
 * @param ts_id transport stream id (ISO/IEC 13818-1), 0..65535.
 * @param frequency its frequency, in the unit that the channel search stores.
 * @param polarisation 0 horizontal, otherwise vertical.
 * @return the record, owned by the caller until it is linked into a network; then by the list.
 * @logs none.
 */
tp_ch_st *alloc_tp_ch_info(uint16_t ts_id, uint32_t frequency, uint8_t polarisation);

/**
 * Creates a network without transponders, appends it to the channel list and counts it.
 *
 * It is not looked for first: a second network of the same ids may be made, and finders then give the first.
 *
 * @param net_index network index, 0..255.
 * @param network_id original network id (ETSI EN 300 468), 0..65535.
 * @param name 64 readable bytes, all of which are copied; null leaves the name empty.
 * @return the network, owned by the list; null when the list already counts 65,535 networks.
 * @logs 0: the list is full.
 */
network_ch_st *alloc_network_ch_info(uint8_t net_index, uint16_t network_id, const char *name);

/**
 * Files a real channel under its network and transponder, creating them as needed.
 *
 * The network is found by net_index and network_id, the transponder by frequency and polarisation (by ts_id when the
 * frequency is 0), both from the record. When the transponder already holds the service_id, the record is not filed: a
 * WARNING names the channel that is there, and the record stays the caller's to free. No view gets an entry.
 *
 * @code{.c}
 * channel_st *service = alloc_channel_info();
 * service->net_index = 1;
 * service->network_id = 1;
 * service->ts_id = 1101;
 * service->frequency = 11597000;
 * service->service_id = 28106;
 * service->service_type = SERVICE_TYPE_TV;
 * add_rch_info(service, NULL);
 * if (get_channel_st(1, 1, 1101, 11597000, 28106, 0) != service) {
 *   free(service);
 * }
 * @endcode
 *
 * @param rch the record, from alloc_channel_info() or `calloc`, in no list. Null is refused with -1.
 * @param network_name 64 readable bytes for a network that is created; may be null.
 * @return 0, also for a service that is already there; -1 when refused: null, or 65,535 records counted on the way.
 * @logs 0: null, or a count that is full. 1: the service is already there. 2: the channel as it is filed. 3: a network
 *       or a transponder that has to be created, as the miss of its finder.
 */
int add_rch_info(channel_st *rch, const char *network_name);

/**
 * Unlinks and frees one real channel and lowers its transponder's count.
 *
 * The count is lowered on the first matching transponder (ts_id, frequency and polarisation) of every network with the
 * channel's net_index and network_id; where no transponder matches, as after the broadcaster changed the transport
 * stream id, on the one that holds the channel. Entries of the channel in every view and in the history stay, without
 * their pointer to it; an empty transponder stays.
 *
 * @param rch a filed channel; the pointer is invalid afterwards. Null is refused.
 * @logs 0: null.
 */
void release_rch_info(channel_st *rch);

/**
 * Frees a transponder with all its real channels. The network's tp_num is the caller's to lower.
 *
 * Entries of the channels in every view and in the history stay, without their pointers.
 *
 * @param tp a transponder; the pointer is invalid afterwards, and so are those to its channels. Null is refused.
 * @logs 0: null. 2: the call.
 */
void release_tp_ch_info(tp_ch_st *tp);

/**
 * Frees a network with its transponders and their channels, and lowers network_num.
 *
 * Entries of the channels in every view and in the history stay, without their pointers.
 *
 * @param network a network of the list; the pointer is invalid afterwards, and so are those to what it held. Null is
 *       refused.
 * @logs 0: null. 2: each transponder, as release_tp_ch_info().
 */
void release_network_ch_info(network_ch_st *network);

/**
 * Resolves an identity to its real channel.
 *
 * With a frequency the transponder is found by frequency and polarisation, and ts_id is not looked at. With frequency 0
 * every transponder of the network with the ts_id is searched and the polarisation is not looked at.
 *
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @return the channel, owned by the list, or null.
 * @logs A miss: 3: no network, no transponder. 5: the step that failed. 2: no transponder, once more. None while the
 *       list counts no network.
 */
channel_st *get_channel_st(uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                           uint16_t service_id, uint8_t polarisation);

/**
 * Finds the first network with a network index and an original network id.
 *
 * @param net_index network index, 0..255.
 * @param network_id original network id (ETSI EN 300 468), 0..65535.
 * @return the network, owned by the list, or null.
 * @logs 3: a miss.
 */
network_ch_st *get_network_ch_info(uint8_t net_index, uint16_t network_id);

/**
 * Finds the first transponder of a network.
 *
 * @param network the network to search. Null is refused with null.
 * @param ts_id transport stream id (ISO/IEC 13818-1); looked at only when the frequency is 0.
 * @param frequency matched within the tolerance together with the polarisation; 0 to match by ts_id alone.
 * @param polarisation 0 horizontal, otherwise vertical, compared exactly.
 * @return the transponder, owned by the list, or null.
 * @logs 0: null. 3: a miss.
 */
tp_ch_st *get_tp_ch_info_by_network_ch(network_ch_st *network, uint16_t ts_id, uint32_t frequency,
                                       uint8_t polarisation);

/**
 * Finds the first real channel of a transponder with a service id.
 *
 * @param tp the transponder to search; null gives null, without a log line.
 * @param service_id service id (ETSI EN 300 468), 0..65535.
 * @return the channel, owned by the list, or null.
 * @logs none.
 */
channel_st *get_rch_ch_info_by_tp_ch(tp_ch_st *tp, uint16_t service_id);

/** @} */

CHANNEL_END_DECLS

#endif
