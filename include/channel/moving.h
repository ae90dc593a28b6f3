/**
 * @file
 * Moving entries within the current view. Order changes, numbers and counts do not.
 */
#ifndef CHANNEL_MOVING_H
#define CHANNEL_MOVING_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup moving Moving
 * @brief One entry or several to another place of the current view.
 *
 * `#include <channel/moving.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * Order changes, numbers and counts do not. Entries of favourite groups are moved by move_fav_channel().
 * @{
 */

/**
 * Moves entries of the current view, and carries the move over to the TV or radio view while a group list is in use.
 *
 * One entry is taken out and put in at the destination, counted in the view without it. Several entries follow, in the
 * order given, the entry that stands at the destination. Every call with another count than 1 compacts entries without
 * a real channel away, those of channels that were freed included: the count stays, and as many slots at the end then
 * hold copies of the entry that was last (empty slots when that one is moved itself). Sweep a view whose channels were
 * freed with remove_invalid_virtual_channel() first. A destination that is itself among them stands for the next entry
 * left. After a single move the slot behind the count holds a copy of the view's former last entry.
 *
 * The service-type view is the view of channel_list_st::service_type. While use_group_list is not 0 the move is
 * mirrored there, unless that view is the current one, which has made the move already, or lacks the channel at the
 * destination: then it is left alone. A channel that it lacks is left out of the mirror, the others are mirrored.
 *
 * While use_group_list is 0 nothing is mirrored, but a move of several entries clears their slots in the service-type
 * view all the same, and they stay empty: move several entries while a TV, radio or group view is current.
 *
 * Channels are looked for in the service-type view by tag and identity, and the first entry is taken: of twins, alike
 * in both, the first is mirrored, whichever was named. A move of several clears it as well: when the service-type view
 * is the current one, the first twin goes together with the one that was named, and the view holds the channel once.
 *
 * The mirror of a single move opens its gap at the current view's position: where that differs from the destination's
 * position in the service-type view, entries there are overwritten and others stand twice. Rebuild it with
 * create_vindex_type() then.
 *
 * @code{.c}
 * const int16_t third_and_fifth[] = {2, 4};
 * move_channel(0, 2, third_and_fifth);
 * @endcode
 *
 * @param des_index destination, 0..count-1 of the current view.
 * @param count how many positions @p src_indices gives; 0 or less only compacts entries without a real channel away.
 * @param src_indices distinct positions, 0..count-1 of the current view; may be null when @p count is below 1.
 * @return 1; -1, and nothing moved, when the current view or the service-type view does not exist or a position is not
 *         valid.
 * @logs 0: null, or a position that is not valid. 1: an unknown service-type view, twice. 2: each step; for several
 *       entries where each stands in both views.
 */
int move_channel(int16_t des_index, int16_t count, const int16_t *src_indices);

/** @} */

CHANNEL_END_DECLS

#endif
