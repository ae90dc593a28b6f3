/**
 * @file
 * The numbered views: their arrays and counts, and how they are cleared, built, appended to and made current.
 */
#ifndef CHANNEL_VIEWS_H
#define CHANNEL_VIEWS_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup views Views
 * @brief The numbered lists that a user sees, which of them is current, and the list's settings.
 *
 * `#include <channel/views.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * View codes are 0..5 (VIEW_ALL to VIEW_PROMOTION) and 10..29 (favourite group code - VIEW_FAVOURITE); every other code
 * is unknown. A view is an array of entries and a count; entries 0..count-1 are in use. One view is current. An unknown
 * code is warned of by each of get_virtual_channel_st() and get_virtual_channel_vnumber(), so that operations that look
 * a view up write that WARNING twice.
 * @{
 */

/**
 * The one channel list: its settings, group tables and views, and the head of the hierarchy.
 *
 * @return the list, never null, owned by the library and valid for the life of the process.
 * @logs none.
 */
channel_list_st *get_channel_list(void);

/**
 * The code of the current view.
 *
 * @return the low byte of channel_list_st::vch_type. After change_vindex_type() with an unknown code, that code.
 * @logs none.
 */
int8_t get_vindex_type(void);

/**
 * The list's channel type: which of the ALL view and the favourite groups was chosen last.
 *
 * @return channel_list_st::ch_type: 0, or the code of the favourite group.
 * @logs none.
 */
int8_t get_ch_type(void);

/**
 * Stores the bouquet id (ETSI EN 300 468). The library keeps it and reads it nowhere.
 *
 * @param bouquet_id 0..65535.
 * @logs none.
 */
void set_bouquet_id(uint16_t bouquet_id);

/**
 * The bouquet id (ETSI EN 300 468).
 *
 * @return the id; 0xFFFF when none was set.
 * @logs none.
 */
uint16_t get_bouquet_id(void);

/**
 * Stores the host's tuner setting. The library keeps it and reads it nowhere.
 *
 * @param use_tuner -128..127, kept as given.
 * @logs none.
 */
void CHAPI_set_use_tuner(int8_t use_tuner);

/**
 * The host's tuner setting.
 *
 * @return the setting; -1 after initialisation.
 * @logs none.
 */
int8_t CHAPI_get_use_tuner(void);

/**
 * The network index in use.
 *
 * @return the index as a signed byte; -1 (255) for all networks.
 * @logs none.
 */
int8_t get_channel_list_net_index(void);

/**
 * The entries of a view.
 *
 * @param type a view code.
 * @return the first entry of the view's array, owned by the library and valid for the life of the process; null for an
 *         unknown code.
 * @logs 1: an unknown code.
 */
virtual_channel_st *get_virtual_channel_st(int8_t type);

/**
 * The count of a view.
 *
 * @param type a view code.
 * @return the address of the view's count, which the host may write; null for an unknown code.
 * @logs 1: an unknown code.
 */
int16_t *get_virtual_channel_vnumber(int8_t type);

/**
 * Clears a view: count 0 and the whole array zero.
 *
 * @param type a view code; an unknown one changes nothing.
 * @return 0 in every case.
 * @logs 0: an unknown code.
 */
int init_vindex(int8_t type);

/**
 * Builds the TV or the radio view from the ALL view, in its order and with its numbers.
 *
 * Takes the entries whose real channel has the service type (ETSI EN 300 468), 1 for TV and 2 for radio. The view is
 * cleared first.
 *
 * @param type VIEW_TV or VIEW_RADIO.
 * @param net_filter take only entries with this vch_tag; -1 takes all.
 * @return 0; -1 when the ALL view is empty (the view is left alone), for another type, when no entry was taken, and
 *         when the view is too small: it then holds the first 4,000 (radio: 1,000) channels.
 * @logs 0: another type, no entry taken, a view that is too small. 2: how many entries were taken.
 */
int create_vindex_type(int8_t type, int8_t net_filter);

/**
 * Makes a view current.
 *
 * An empty TV, radio, USER or promotion view is refused with -1 and the current view stays. An empty ALL or favourite
 * view becomes current with the result -4. ALL, TV and radio leave any group list (use_group_list 0); a favourite group
 * sets use_group_list to GROUP_FAV and sub_group_id to the group's id, and numbers its entries' favorite_id anew when
 * one of them occurs twice. TV and radio also set service_type, and net_index to -1. ALL sets ch_type to 0, a favourite
 * group sets it to its code; USER and promotion change no setting but the current view.
 *
 * @param type a view code. An unknown code, and VIEW_WORK, makes lookups use the ALL view, sets use_group_list to 0, is
 *       kept as the current code all the same, and gives -1: hosts rely on reading their code back.
 * @return 0, -1 or -4 as above.
 * @logs 0: an unknown code or VIEW_WORK. 1: a view that is empty (not ALL); each entry of a favourite group while a
 *       double favorite_id is looked for, and that they are numbered anew. 2: the view, between two rules, unless it is
 *       empty.
 */
int change_vindex_type(int8_t type);

/**
 * Inserts an entry before a position of a view.
 *
 * @code{.c}
 * const virtual_channel_st *entry = vtype_get_vchannel_by_vindex(0, VIEW_ALL);
 * uint32_t w[5];
 * memcpy(w, entry, sizeof w);
 * insert_vch_vindex_type(w[0], w[1], w[2], w[3], w[4], 0, 0, VIEW_USER);
 * @endcode
 *
 * @param w0,w1,w2,w3,w4 the first 20 bytes of a virtual_channel_st as 32-bit words: vch_tag, favorite_id and
 *       major_ch_num; minor_ch_num, net_index and a reserved byte; frequency; polarisation, a reserved byte and
 *       service_id; network_id and ts_id.
 * @param w5 ignored: the pointer to the real channel is resolved from the identity.
 * @param vindex position, 0..count-1. A position equal to the count is refused: this function does not append.
 * @param type a view code.
 * @return 0; -1 for an unknown view, a position outside, or a full view.
 * @logs 0: refused. 1: an unknown code. 2, 3, 5: an entry without a real channel, as get_channel_st() tells it; it is
 *       inserted all the same.
 */
int insert_vch_vindex_type(uint32_t w0, uint32_t w1, uint32_t w2, uint32_t w3, uint32_t w4, uint32_t w5, int16_t vindex,
                           int8_t type);

/**
 * Appends an entry of the ALL view to the USER view unless the same channel is there.
 *
 * @param all_index index in the ALL view, 0..4999; -1 does nothing and gives 0.
 * @return 0; -1 when the USER view holds the channel already, is full, or the index lies outside the array.
 * @logs 0: an index outside the array, a full view. 5: the channel is there already.
 */
int insert_user_vch_vindex(int16_t all_index);

/** @} */

CHANNEL_END_DECLS

#endif
