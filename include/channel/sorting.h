/**
 * @file
 * Sorting of views. Sorting permutes whole entries; channel numbers stay with their channels.
 *
 * The sorts are not stable: entries that are equal on all keys end in no defined order.
 */
#ifndef CHANNEL_SORTING_H
#define CHANNEL_SORTING_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * Sorts a view.
 *
 * @param sort_type SORT_CH_NAME, SORT_TRANSPONDER, SORT_NUMBER, SORT_SERVICE_ID, SORT_FAV_DEFAULT or SORT_USER_TYPE;
 * any other is logged and sorts nothing.
 * @param view_type VIEW_ALL, VIEW_TV, VIEW_RADIO, VIEW_USER or a favourite group; any other is reported on an ERROR
 * line and nothing is sorted.
 * @return 0 in every case.
 */
int sort_vch_type(int8_t sort_type, int8_t view_type);

/**
 * Sorts the ALL, USER, promotion, TV and radio views. Favourite groups keep their order.
 *
 * @param sort_type as for sort_vch_type().
 * @return 0, or -1 for a sort type that is unknown or not supported.
 */
int sort_vindex_ex(int8_t sort_type);

/**
 * Sorts a view by the bytes of its entries, first byte first: vch_tag, favorite_id, the low and then the high byte of
 * major_ch_num, and so on to the pointer. Despite its name it does not sort by channel number; hosts rely on the order.
 *
 * @param view_type a view code.
 * @return 0, or -1 for an unknown view.
 */
int sort_vindex_by_number(int8_t view_type);

/**
 * Sorts the ALL, promotion, TV and radio views as sort_vindex_by_number() does.
 *
 * @return 0.
 */
int sort_vindex(void);

/**
 * Copies a view into the USER view, channels without a flag first and those with it last, each part in the view's
 * order, and makes the USER view current. The source view is not changed, unless it is the USER view itself.
 *
 * Entries without a real channel are reported; at the end of the USER view stand as many of the source's last entries.
 *
 * @param view_type the view to copy.
 * @param sort_type SORT_FTA for CHANNEL_FLAG_FTA, SORT_LOCK for CHANNEL_FLAG_LOCKED.
 * @return 0; -1 for an unknown view or another sort type.
 */
int sort_vindex_by_flag(int8_t view_type, int8_t sort_type);

CHANNEL_END_DECLS

#endif
