/**
 * @file
 * Queries by broadcast identity, comparison of channels and of entries, and what a channel is received from.
 *
 * Queries are walks in list order; the first match wins. A frequency or polarisation of 0 is also the answer when
 * nothing is found: read the record where that matters.
 */
#ifndef CHANNEL_TRANSPORT_H
#define CHANNEL_TRANSPORT_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * The transponder of a network: get_network_ch_info(), then get_tp_ch_info_by_network_ch().
 *
 * @return the transponder, owned by the list, or null; a miss is logged at level 3.
 */
tp_ch_st *get_tp_ch_info(uint8_t net_index, uint16_t network_id, uint16_t ts_id, int32_t frequency,
                         uint8_t polarisation);

/**
 * The first transponder of any network with a network index, by frequency (within the tolerance) and polarisation.
 *
 * @return the transponder, owned by the list, or null; a miss is logged at level 3.
 */
tp_ch_st *get_tp_ch_simple(uint8_t net_index, uint32_t frequency, uint8_t polarisation);

/**
 * The first channel of a transponder that has the video PID or the audio PID (ISO/IEC 13818-1).
 *
 * @param tp the transponder; null gives null without a log line.
 * @param video_pid PID, 0..0x1FFF, or 0xFFFF for unset.
 * @param audio_pid PID, 0..0x1FFF, or 0xFFFF for unset.
 * @return the channel, owned by the list, or null; a miss is logged at level 3.
 */
channel_st *get_rch_ch_info_by_tp_ch_and_avpid(tp_ch_st *tp, uint16_t video_pid, uint16_t audio_pid);

/**
 * The first channel with a service id on a transport stream of any network with a network index.
 *
 * @return the channel, owned by the list, or null.
 */
channel_st *get_ipchannel(uint8_t net_index, uint16_t ts_id, uint16_t service_id);

/** @return the frequency of the first transponder of the network with the ts_id; 0 when there is none. */
uint32_t get_frequency_by_ts_id(uint8_t net_index, uint16_t network_id, uint16_t ts_id);

/** @return the polarisation of the first transponder of the network with the ts_id; 0 when there is none. */
uint32_t get_polarisation_by_ts_id(uint8_t net_index, uint16_t network_id, uint16_t ts_id);

/**
 * The frequency of a service in any network with a network index: the channel's own, its low 32 bits.
 *
 * @return the frequency; 0 when there is none.
 */
uint32_t get_frequency_by_service_id(uint8_t net_index, uint16_t service_id);

/**
 * The polarisation of a service in any network with a network index: its transponder's, unlike its frequency.
 *
 * @return the polarisation; 0 when there is none.
 */
uint32_t get_polarisation_by_service_id(uint8_t net_index, uint16_t service_id);

/**
 * Whether a channel is received over IP: source types 4, 5 and 12.
 *
 * @param rch the channel; null is logged and gives 0. This function's lines are gated by entry 5 of verbosity_map.
 * @return 1 for an IP source; 0 for a broadcast source (1, 2, 3, 6, 8..11) and, with an ERROR line, for any other.
 */
int is_ip_channel(const channel_st *rch);

/** @return 1 when both channels have the same identity; 0 otherwise, and with an ERROR line when one is null. */
int is_same_channel(const channel_st *ch1, const channel_st *ch2);

/** @return 1 when both entries have the same tag and identity; 0 otherwise, and with an ERROR line when one is null. */
int is_same_vchannel(const virtual_channel_st *x, const virtual_channel_st *y);

/**
 * The channel that carries the DSM-CC data service (ISO/IEC 13818-6).
 *
 * @return the index in the current view of the first entry whose channel has CHANNEL_FLAG_DSMCC, or -1.
 */
int get_dsmcc_channel(void);

/** @return channel_list_st::version. */
int get_channel_list_version(void);

/**
 * Releases every transponder on a frequency and polarisation in the networks with a network index, makes the TV view
 * current (the radio view when TV is empty), and sweeps the views.
 *
 * The counts are looked at before the sweep: a TV view that the sweep empties becomes current all the same. A network
 * left without transponders stays.
 *
 * @param net_index network index; outside 0..255 it matches no network.
 * @param frequency matched within the tolerance; 0 is no wildcard.
 * @param polarisation compared exactly.
 * @return 0.
 */
int remove_channel_info_by_frequency(int net_index, uint32_t frequency, uint8_t polarisation);

CHANNEL_END_DECLS

#endif
