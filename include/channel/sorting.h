/**
 * @file
 * Sorting of views. Sorting permutes whole entries; channel numbers stay with their channels.
 */
#ifndef CHANNEL_SORTING_H
#define CHANNEL_SORTING_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup sorting Sorting
 * @brief The order of a view, by name, number, transponder, service id, flag or the user's own key.
 *
 * `#include <channel/sorting.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * Sorting permutes whole entries; channel numbers stay with their channels. The order of entries that are equal on all
 * keys is not promised. Names and the user's keys are read through the entries' cached pointers: an entry without a
 * real channel equals every other. In names a first byte below 0x20, which selects a character table, is passed over,
 * also that of an empty name. Frequencies are compared by their difference as 32 signed bits.
 * @{
 */

/**
 * Sorts a view.
 *
 * @param sort_type SORT_CH_NAME, SORT_TRANSPONDER, SORT_NUMBER, SORT_SERVICE_ID, SORT_FAV_DEFAULT or SORT_USER_TYPE;
 *       any other is logged and sorts nothing.
 * @param view_type VIEW_ALL, VIEW_TV, VIEW_RADIO, VIEW_USER or a favourite group; any other is refused and nothing is
 *       sorted.
 * @return 0 in every case.
 * @logs 0: a view that is refused, an unknown sort type. 2: the call, the sort type's name, the count, the end.
 */
int sort_vch_type(int8_t sort_type, int8_t view_type);

/**
 * Sorts the ALL, USER, promotion, TV and radio views. Favourite groups keep their order.
 *
 * @param sort_type as for sort_vch_type().
 * @return 0, or -1 for a sort type that is unknown or not supported.
 * @logs 0: an unknown sort type, once for each view. 2: for each view the sort type's name, the count, the end.
 */
int sort_vindex_ex(int8_t sort_type);

/**
 * Sorts a view by the bytes of its entries, first byte first.
 *
 * That is vch_tag, favorite_id, the low and then the high byte of major_ch_num, and so on to the pointer. Despite its
 * name it does not sort by channel number; hosts rely on the order.
 *
 * @param view_type a view code.
 * @return 0, or -1 for an unknown view.
 * @logs 1: an unknown view, twice.
 */
int sort_vindex_by_number(int8_t view_type);

/**
 * Sorts the ALL, promotion, TV and radio views as sort_vindex_by_number() does.
 *
 * @return 0.
 * @logs none.
 */
int sort_vindex(void);

/**
 * Copies a view into the USER view, channels without a flag first, and makes the USER view current.
 *
 * Those with the flag come last, each part in the view's order. The source view is not changed, unless it is the USER
 * view itself. An empty source empties the USER view, which then does not become current. Entries without a real
 * channel are reported; at the end of the USER view stand as many of the source's last entries.
 *
 * @param view_type the view to copy, a view code.
 * @param sort_type SORT_FTA for CHANNEL_FLAG_FTA, SORT_LOCK for CHANNEL_FLAG_LOCKED.
 * @return 0; -1 for an unknown view or another sort type.
 * @logs 0: another sort type, each entry without a real channel. 1: an unknown view, twice; an empty USER view. 2: the
 *       sort type's name, the count, and what change_vindex_type() says.
 */
int sort_vindex_by_flag(int8_t view_type, int8_t sort_type);

/** @} */

CHANNEL_END_DECLS

#endif
