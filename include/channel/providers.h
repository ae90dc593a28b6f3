/**
 * @file
 * Providers: who a service belongs to (the provider name of the service descriptor, ETSI EN 300 468).
 */
#ifndef CHANNEL_PROVIDERS_H
#define CHANNEL_PROVIDERS_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * @defgroup providers Providers
 * @brief The table of service providers (the provider name of the service descriptor, ETSI EN 300 468).
 *
 * `#include <channel/providers.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * The table is sorted by name without regard to case; names that compare equal keep the order in which they came. A
 * provider's id (0..499) stays with it when records in front of it come and go; services carry it in provider_id.
 * Pointers to records name a place: they show another provider when records in front come or go.
 *
 * @code{.c}
 * group_st provider = {0};
 * provider.name_len = 3;
 * memcpy(provider.name, "ZDF", 3);
 * const group_st *known = find_provider_info(provider.name, 3);
 * int id = known != NULL ? known->id : add_provider_info(provider);
 * printf("%d\n", id);
 * @endcode
 * @{
 */

/**
 * Adds a provider under the smallest free id. Look the name up first: equal names are added twice.
 *
 * @param provider name and name_len are used; the id is not.
 * @return the new id, 0..499; -1 when name_len is negative or the table is full.
 * @logs 0: a full table. 3: the provider and its place.
 */
int add_provider_info(group_st provider);

/**
 * Finds a provider by its exact name.
 *
 * @param name @p length bytes, compared with regard to case. Null is refused with null.
 * @param length 0..98; must equal the provider's name_len. Any other never matches.
 * @return the provider, owned by the list, or null.
 * @logs 0: null.
 */
group_st *find_provider_info(const char *name, int8_t length);

/**
 * The first provider with an id.
 *
 * @param id provider id.
 * @return the provider, owned by the list, or null.
 * @logs none.
 */
group_st *find_provider_id(int16_t id);

/**
 * A provider by its place in the table.
 *
 * @param index 0..count; the place behind the last provider holds an empty record.
 * @return the record, owned by the list; null outside that range and outside the array.
 * @logs 0: a negative index, and 500 when the table is full. An index beyond the count is not told.
 */
group_st *get_provider_info_by_index(int16_t index);

/**
 * The number of providers.
 *
 * @return channel_list_st::provider_num as it stands: 0..500 unless a host wrote another.
 * @logs none.
 */
int16_t get_provider_number(void);

/**
 * Removes a provider. Services that carry its id keep it.
 *
 * @param index 0..count-1.
 * @return 0; -1 outside the table.
 * @logs 0: a negative index, and one equal to the count. An index beyond is not told.
 */
int remove_provider_index(int32_t index);

/**
 * Removes providers that no service carries: the first one, and every provider behind it whether used or not.
 *
 * What is in use is marked by place and the marks do not move with the records; hosts register the providers of a scan
 * anew.
 *
 * @return 0. Nothing is removed while the list has no networks.
 * @logs 2: the call and each provider removed.
 */
int remove_invalid_provider_info(void);

/**
 * The providers of a view's services.
 *
 * @param view_type a view code.
 * @param out receives 500 ids: those found, sorted by name, and -1 behind them. Left alone for an unknown or empty
 *       view. Null is refused with 0.
 * @return how many were found; a service whose provider is not in the table is reported and passed over.
 * @logs 0: null, each entry without a real channel, each provider that is not in the table. 1: an unknown view, twice.
 */
int get_provider_id_by_service_type(int8_t view_type, int16_t *out);

/** @} */

CHANNEL_END_DECLS

#endif
