/**
 * @file
 * Lists of the services of one group, built into the USER view or the work view.
 */
#ifndef CHANNEL_SERVICE_LISTS_H
#define CHANNEL_SERVICE_LISTS_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup service_lists Service lists
 * @brief The services of one satellite, genre, provider, country, access or favourite group as a list.
 *
 * `#include <channel/service_lists.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * A service belongs to a group by its network index (GROUP_SATELLITE), genre, provider or country id, or by its flags
 * (GROUP_FTACAS: id 0 free, 1 scrambled, 2 flag 0x40). Entries without a real channel are reported and passed over.
 *
 * @code{.c}
 * if (create_service_by_group_list_id(GROUP_FTACAS, 0, VIEW_TV, 1) == 0) {
 *   printf("%d free services\n", get_channel_list_number());
 * }
 * @endcode
 * @{
 */

/**
 * Builds the list of a group's services, in the source view's order and with its numbers.
 *
 * With @p make_current the list goes to the USER view, the selection is recorded in the channel list, and the USER view
 * becomes current unless the list is empty. Without, it goes to the work view and nothing else changes. The target is
 * emptied first: a source that is the target itself gives 0 and an empty list.
 *
 * GROUP_FAV copies the favourite group as it is: its own order and numbers, entries without a real channel too.
 * GROUP_ALL and codes without a meaning give an empty list.
 *
 * @param kind a GROUP_ code; GROUP_FAV copies the favourite group with the id @p id.
 * @param id group id; the network index for GROUP_SATELLITE, 0, 1 or 2 for GROUP_FTACAS.
 * @param source_type the view to take services from, a view code.
 * @param make_current 0 or not.
 * @return 0, also for an empty list; -1 when the source view is unknown or empty.
 * @logs 0: each entry without a real channel, an empty list, a favourite group that is not there. 1: an unknown view,
 *       twice; an empty USER view. 2: each favourite copied, and what change_vindex_type() says.
 */
int create_service_by_group_list_id(int8_t kind, int16_t id, int8_t source_type, uint8_t make_current);

/**
 * Removes the services of a group that a view shows from the whole channel list, and sweeps the views.
 *
 * @param kind a GROUP_ code; GROUP_FAV removes nothing.
 * @param id group id, as for create_service_by_group_list_id().
 * @param view_type the view to look at, a view code.
 * @return 0; -1 when the view is unknown or empty.
 * @logs 0: each entry without a real channel. 1: an unknown view, twice. 2: the view and the id. Then
 *       what remove_invalid_virtual_channel() says.
 */
int remove_service_by_group_list_id(int8_t kind, int16_t id, int8_t view_type);

/**
 * The groups that a view's services belong to, sorted by name without regard to case. Id 0 is never listed.
 *
 * @param kind GROUP_GENRE, GROUP_PROVIDER or GROUP_COUNTRY; every other kind gives 0.
 * @param view_type a view code.
 * @param out room for as many records as the kind's table holds: 50 genres, 500 providers or 200 countries. Null is
 *       refused with 0.
 * @return how many groups were copied to @p out.
 * @logs 0: an unknown or empty view, null, each entry without a real channel. 1: an unknown view, twice.
 */
int get_group_id_by_service_type(int8_t kind, int8_t view_type, group_st *out);

/**
 * Adds the services of a group to a favourite group, by way of the work view.
 *
 * When the source view is unknown or empty the work view is not built anew, and what an earlier call left there is
 * added: hosts rely on it to add the list that they show.
 *
 * @param fav_id id of the favourite group.
 * @param source_type the view to take services from, a view code.
 * @param kind a GROUP_ code.
 * @param kind_id group id within the kind.
 * @return 1 when the list was built, also when the favourite group was missing or became full; 0 when it was not; -2
 *         when the work view is empty.
 * @logs those of create_service_by_group_list_id() and of add_fav_virtual_channel() for each service.
 */
int add_fav_ch_group(int16_t fav_id, int8_t source_type, int8_t kind, int16_t kind_id);

/** @} */

CHANNEL_END_DECLS

#endif
