/**
 * @file
 * The flags of real channels, whether a position can be zapped to, and renaming.
 *
 * Flags live on the real channel and so survive sorting and renumbering. The library reads the CHANNEL_FLAG_ bits; it
 * stores and returns the others unchanged.
 */
#ifndef CHANNEL_FLAGS_H
#define CHANNEL_FLAGS_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * Sets or clears flag bits of the channel with an identity.
 *
 * With frequency 0 the first transponder with the ts_id that carries the service is taken.
 *
 * @param bits the bits to set or clear.
 * @param set 0 clears them, any other value sets them.
 * @return 1 when applied; 0 when the channel is not found, which is logged at level 3.
 */
int set_channel_flag(uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency, uint16_t service_id,
                     uint8_t polarisation, uint8_t bits, int set);

/**
 * Sets flag bits on every channel of the current view, as far as the ALL view's count reaches.
 *
 * @param bits the bits to set.
 * @return 0.
 */
int set_channel_flag_by_bit(uint8_t bits);

/**
 * Clears flag bits on every channel of the current view, as far as the ALL view's count reaches.
 *
 * @param bits the bits to clear.
 * @return 0.
 */
int clear_channel_flag_by_bit(uint8_t bits);

/**
 * Sets or clears flag bits of the channel at a position of the current view.
 *
 * @param vindex position, 0..count-1.
 * @param bits the bits to set or clear.
 * @param set 0 clears them, any other value sets them.
 * @return 0, or -1 when there is no channel.
 */
int set_channel_flag_by_vindex(int16_t vindex, uint8_t bits, int set);

/**
 * The flags of the channel at a position of the current view.
 *
 * @param vindex position, 0..count-1.
 * @return the flag byte, or 255 when there is no channel.
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
 */
int vtype_set_channel_flag_by_vindex(int16_t vindex, uint8_t bits, int set, int8_t type);

/**
 * The flags of the channel at a position of a view.
 *
 * @param vindex position in the array.
 * @param type a view code.
 * @return the flag byte, or 255 when there is no channel.
 */
uint8_t vtype_get_channel_flag_by_vindex(int16_t vindex, int8_t type);

/**
 * Whether zapping passes over a position of the current view.
 *
 * @param vindex position, 0..count-1.
 * @return 1 when CHANNEL_FLAG_SKIP is set; 0 otherwise, and when there is no channel.
 */
int check_skip_channel_index(int16_t vindex);

/**
 * Whether a position of the current view holds a channel that can be zapped to.
 *
 * @param vindex position, 0..count-1.
 * @return 1 when the entry resolves to a real channel and its major or minor number is not 0; 0 otherwise.
 */
int check_available_channel(int16_t vindex);

/**
 * Renames the channel with an identity and stores the length of the name.
 *
 * The old text is cleared first, so that a length below 1 leaves the name empty and gives -1.
 *
 * @param slot 0 for the service name, 1 for the other name; anything else is refused with -1.
 * @param name @p length bytes, copied without conversion; null is refused with -1 unless the length is below 1.
 * @param length in bytes; cut to 96.
 * @return 0; -1 when the channel is not found or the name is refused.
 */
int rename_channel_info(uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency, uint16_t service_id,
                        uint8_t polarisation, uint8_t slot, const char *name, int16_t length);

/**
 * Renames the channel at a position of a view. Unlike rename_channel_info() it leaves the stored length of the name as
 * it was; hosts rely on it.
 *
 * @param vindex position in the array.
 * @param slot 0 for the service name, 1 for the other name; anything else is refused with -1.
 * @param name @p length bytes, copied without conversion; null is refused with -1 unless the length is below 1.
 * @param length in bytes; cut to 96; below 1 clears the name and gives -1.
 * @param type a view code.
 * @return 0; -1 when there is no channel or the name is refused.
 */
int vtype_rename_channel_info(int16_t vindex, uint8_t slot, const char *name, int16_t length, int8_t type);

CHANNEL_END_DECLS

#endif
