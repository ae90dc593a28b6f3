/**
 * @file
 * Queries by broadcast identity, comparison of channels and of entries, and what a channel is received from.
 */
#ifndef CHANNEL_TRANSPORT_H
#define CHANNEL_TRANSPORT_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup transport Transport
 * @brief Queries by network, transponder, service and PID; comparison; broadcast or IP.
 *
 * `#include <channel/transport.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * Queries are walks in list order; the first match wins. Those that are given no network id go on into the next network
 * with the index when one holds no match; get_frequency_by_ts_id() and get_polarisation_by_ts_id() go on into a second
 * network with the same two ids. A frequency or polarisation of 0 is also the answer when nothing is found: read the
 * record where that matters.
 * @{
 */

/**
 * The transponder of a network: get_network_ch_info(), then get_tp_ch_info_by_network_ch().
 *
 * Only the first network with the two ids is searched.
 *
 * @param net_index network index, 0..255.
 * @param network_id original network id (ETSI EN 300 468), 0..65535.
 * @param ts_id transport stream id (ISO/IEC 13818-1); looked at only when the frequency is 0.
 * @param frequency its 32 bits, read without sign and matched within the tolerance; 0 to match by ts_id alone.
 * @param polarisation 0 horizontal, otherwise vertical, compared exactly.
 * @return the transponder, owned by the list, or null.
 * @logs 3: a miss, by its finder; without a network also under this name.
 */
tp_ch_st *get_tp_ch_info(uint8_t net_index, uint16_t network_id, uint16_t ts_id, int32_t frequency,
                         uint8_t polarisation);

/**
 * The first transponder of any network with a network index, by frequency and polarisation.
 *
 * @param net_index network index, 0..255.
 * @param frequency matched within the tolerance; 0 is no wildcard.
 * @param polarisation compared exactly.
 * @return the transponder, owned by the list, or null.
 * @logs 3: a miss, in two lines.
 */
tp_ch_st *get_tp_ch_simple(uint8_t net_index, uint32_t frequency, uint8_t polarisation);

/**
 * The first channel of a transponder that has the video PID or the audio PID (ISO/IEC 13818-1).
 *
 * @param tp the transponder; null gives null without a log line.
 * @param video_pid PID, 0..0x1FFF, or 0xFFFF for unset, which matches channels without one.
 * @param audio_pid PID, 0..0x1FFF, or 0xFFFF for unset, which matches channels without one.
 * @return the channel, owned by the list, or null.
 * @logs 3: a miss.
 */
channel_st *get_rch_ch_info_by_tp_ch_and_avpid(tp_ch_st *tp, uint16_t video_pid, uint16_t audio_pid);

/**
 * The first channel with a service id on a transport stream of any network with a network index.
 *
 * @param net_index network index, 0..255.
 * @param ts_id transport stream id (ISO/IEC 13818-1), 0..65535.
 * @param service_id service id (ETSI EN 300 468), 0..65535.
 * @return the channel, owned by the list, or null.
 * @logs 2: the call.
 */
channel_st *get_ipchannel(uint8_t net_index, uint16_t ts_id, uint16_t service_id);

/**
 * The frequency of the first transponder of a network with a transport stream id.
 *
 * @param net_index network index, 0..255.
 * @param network_id original network id (ETSI EN 300 468), 0..65535.
 * @param ts_id transport stream id (ISO/IEC 13818-1), 0..65535.
 * @return the frequency; 0 when there is none.
 * @logs none.
 */
uint32_t get_frequency_by_ts_id(uint8_t net_index, uint16_t network_id, uint16_t ts_id);

/**
 * The polarisation of the first transponder of a network with a transport stream id.
 *
 * @param net_index network index, 0..255.
 * @param network_id original network id (ETSI EN 300 468), 0..65535.
 * @param ts_id transport stream id (ISO/IEC 13818-1), 0..65535.
 * @return the polarisation, 0 horizontal, otherwise vertical; 0 when there is none.
 * @logs none.
 */
uint32_t get_polarisation_by_ts_id(uint8_t net_index, uint16_t network_id, uint16_t ts_id);

/**
 * The frequency of a service in any network with a network index: the channel's own, its low 32 bits.
 *
 * @param net_index network index, 0..255.
 * @param service_id service id (ETSI EN 300 468), 0..65535.
 * @return the frequency; 0 when there is none.
 * @logs none.
 */
uint32_t get_frequency_by_service_id(uint8_t net_index, uint16_t service_id);

/**
 * The polarisation of a service in any network with a network index: its transponder's, unlike its frequency.
 *
 * @param net_index network index, 0..255.
 * @param service_id service id (ETSI EN 300 468), 0..65535.
 * @return the polarisation, 0 horizontal, otherwise vertical; 0 when there is none.
 * @logs none.
 */
uint32_t get_polarisation_by_service_id(uint8_t net_index, uint16_t service_id);

/**
 * Whether a channel is received over IP: source types 4, 5 and 12.
 *
 * @param rch the channel; null gives 0.
 * @return 1 for an IP source; 0 for a broadcast source (1, 2, 3, 6, 8..11) and for any other.
 * @logs Entry 5 of verbosity_map gates the lines. 0: an unknown source type. 2: null.
 */
int is_ip_channel(const channel_st *rch);

/**
 * Whether two real channels have the same identity.
 *
 * @param ch1 a channel; null gives 0.
 * @param ch2 a channel; null gives 0.
 * @return 1 when all six values are the same, the 64-bit frequencies within the tolerance; 0 otherwise.
 * @logs 0: null.
 */
int is_same_channel(const channel_st *ch1, const channel_st *ch2);

/**
 * Whether two entries have the same tag and identity.
 *
 * @param x an entry; null gives 0.
 * @param y an entry; null gives 0.
 * @return 1 when all seven values are the same, the frequencies within the tolerance; 0 otherwise.
 * @logs 0: null.
 */
int is_same_vchannel(const virtual_channel_st *x, const virtual_channel_st *y);

/**
 * The channel that carries the DSM-CC data service (ISO/IEC 13818-6).
 *
 * @return the index in the current view of the first entry whose channel has CHANNEL_FLAG_DSMCC, or -1.
 * @logs 0: no current view. 2: each channel looked at. 2, 3, 5: each entry that does not resolve, as get_channel_st()
 *       tells it.
 */
int get_dsmcc_channel(void);

/**
 * The version of the list in memory.
 *
 * @return channel_list_st::version: 10, or what a file said.
 * @logs none.
 */
int get_channel_list_version(void);

/**
 * Releases every transponder on a frequency and polarisation in the networks with a network index.
 *
 * Then it makes the TV view current (the radio view when TV is empty), and sweeps the views. The counts are looked at
 * before the sweep: a TV view that the sweep empties becomes current all the same. A network left without transponders
 * stays.
 *
 * @param net_index network index; outside 0..255 it matches no network.
 * @param frequency matched within the tolerance; 0 is no wildcard.
 * @param polarisation compared exactly.
 * @return 0.
 * @logs 0: neither view has entries, which entry 1 of verbosity_map gates. 2: the call, each network and each
 *       transponder looked at, each one released, the new view. Then what remove_invalid_virtual_channel() says.
 */
int remove_channel_info_by_frequency(int net_index, uint32_t frequency, uint8_t polarisation);

/** @} */

CHANNEL_END_DECLS

#endif
