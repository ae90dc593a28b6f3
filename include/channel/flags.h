/**
 * @file
 * The flags of real channels, whether a position can be zapped to, and renaming.
 */
#ifndef CHANNEL_FLAGS_H
#define CHANNEL_FLAGS_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup flags Flags and names
 * @brief Locking, skipping, and the user's names: what is kept with a channel whatever view shows it.
 *
 * `#include <channel/flags.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * Flags live on the real channel and so survive sorting and renumbering. The library reads the CHANNEL_FLAG_ bits; it
 * stores and returns the others unchanged. As 255 is the answer of the getters when there is no channel, a host never
 * sets every bit at once. Positions are resolved as by get_channel() (current view) and vtype_get_channel_by_vindex()
 * (a view), with their log lines.
 *
 * @code{.c}
 * int16_t vindex = get_channel_index(7);
 * if (set_channel_flag_by_vindex(vindex, CHANNEL_FLAG_LOCKED, 1) == 0) {
 *   printf("locked: %d\n", !check_limited_channel(get_channel(vindex)));
 * }
 * @endcode
 * @{
 */

/**
 * Sets or clears flag bits of the channel with an identity.
 *
 * With frequency 0 the first transponder with the ts_id that carries the service is taken.
 *
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @param bits the bits to set or clear.
 * @param set 0 clears them, any other value sets them.
 * @return 1 when applied; 0 when the channel is not found.
 * @logs 3: a miss, by its finder and with the step that failed. None while the list counts no network.
 */
int set_channel_flag(uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency, uint16_t service_id,
                     uint8_t polarisation, uint8_t bits, int set);

/**
 * Sets flag bits on every channel of the current view, as far as the ALL view's count reaches.
 *
 * @param bits the bits to set.
 * @return 0.
 * @logs those of get_channel_by_vindex(), for each position up to the ALL view's count.
 */
int set_channel_flag_by_bit(uint8_t bits);

/**
 * Clears flag bits on every channel of the current view, as far as the ALL view's count reaches.
 *
 * @param bits the bits to clear.
 * @return 0.
 * @logs those of get_channel_by_vindex(), for each position up to the ALL view's count.
 */
int clear_channel_flag_by_bit(uint8_t bits);

/**
 * Sets or clears flag bits of the channel at a position of the current view.
 *
 * @param vindex position, 0..count-1.
 * @param bits the bits to set or clear.
 * @param set 0 clears them, any other value sets them.
 * @return 0, or -1 when there is no channel.
 * @logs those of get_channel_by_vindex().
 */
int set_channel_flag_by_vindex(int16_t vindex, uint8_t bits, int set);

/**
 * The flags of the channel at a position of the current view.
 *
 * @param vindex position, 0..count-1.
 * @return the flag byte, or 255 when there is no channel.
 * @logs those of get_channel_by_vindex().
 */
uint8_t get_channel_flag_by_vindex(int16_t vindex);

/**
 * Sets or clears flag bits of the channel at a position of a view.
 *
 * @param vindex position in the array.
 * @param bits the bits to set or clear.
 * @param set 0 clears them, any other value sets them.
 * @param type a view code.
 * @return 0, or -1 when there is no channel.
 * @logs those of vtype_get_channel_by_vindex().
 */
int vtype_set_channel_flag_by_vindex(int16_t vindex, uint8_t bits, int set, int8_t type);

/**
 * The flags of the channel at a position of a view.
 *
 * @param vindex position in the array.
 * @param type a view code.
 * @return the flag byte, or 255 when there is no channel.
 * @logs those of vtype_get_channel_by_vindex().
 */
uint8_t vtype_get_channel_flag_by_vindex(int16_t vindex, int8_t type);

/**
 * Whether zapping passes over a position of the current view.
 *
 * @param vindex position, 0..count-1.
 * @return 1 when CHANNEL_FLAG_SKIP is set; 0 otherwise, and when there is no channel.
 * @logs those of get_channel_by_vindex().
 */
int check_skip_channel_index(int16_t vindex);

/**
 * Whether a position of the current view holds a channel that can be zapped to.
 *
 * @param vindex position, 0..count-1.
 * @return 1 when the entry resolves to a real channel and its major or minor number is not 0; 0 otherwise.
 * @logs 0: no current view, an entry whose numbers are both 0. 5: no channel; beside those of get_channel_by_vindex().
 */
int check_available_channel(int16_t vindex);

/**
 * Renames the channel with an identity and stores the length of the name.
 *
 * The old text is cleared first, so that a length below 1 leaves the name empty and gives -1. The bytes are those of
 * the receiver's character table (ETSI EN 300 468, annex A, where a first byte below 0x20 selects it); none is
 * converted.
 *
 * @param net_index,network_id,ts_id,frequency,service_id,polarisation the channel's @ref rules_identity "identity".
 * @param slot 0 for the service name, 1 for the other name; anything else is refused with -1.
 * @param name @p length bytes, copied without conversion; null is refused with -1 unless the length is below 1.
 * @param length in bytes; cut to 96.
 * @return 0; -1 when the channel is not found or the name is refused.
 * @logs 0: an unknown slot, a null name. 2, 3, 5: a miss, as get_channel_st() tells it.
 */
int rename_channel_info(uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency, uint16_t service_id,
                        uint8_t polarisation, uint8_t slot, const char *name, int16_t length);

/**
 * Renames the channel at a position of a view.
 *
 * Unlike rename_channel_info() it leaves the stored length of the name as it was; hosts rely on it.
 *
 * @param vindex position in the array.
 * @param slot 0 for the service name, 1 for the other name; anything else is refused with -1.
 * @param name @p length bytes, copied without conversion; null is refused with -1 unless the length is below 1.
 * @param length in bytes; cut to 96; below 1 clears the name and gives -1.
 * @param type a view code.
 * @return 0; -1 when there is no channel or the name is refused.
 * @logs 0: an unknown slot, a null name; beside those of vtype_get_channel_by_vindex().
 */
int vtype_rename_channel_info(int16_t vindex, uint8_t slot, const char *name, int16_t length, int8_t type);

/** @} */

CHANNEL_END_DECLS

#endif
