/**
 * @file
 * Providers: who a service belongs to (the provider name of the service descriptor, ETSI EN 300 468).
 *
 * The table is sorted by name without regard to case; names that compare equal keep the order in which they came. A
 * provider's id (0..499) stays with it when records in front of it come and go; services carry it in provider_id.
 */
#ifndef CHANNEL_PROVIDERS_H
#define CHANNEL_PROVIDERS_H

#include <channel/records.h>

CHANNEL_BEGIN_DECLS

/**
 * Adds a provider under the smallest free id. Look the name up first: equal names are added twice.
 *
 * @param provider name and name_len are used; the id is not.
 * @return the new id; -1 when name_len is negative or the table is full.
 */
int add_provider_info(group_st provider);

/**
 * Finds a provider by its exact name.
 *
 * @param name @p length bytes, compared with regard to case. Null is refused with null.
 * @param length 0..98; must equal the provider's name_len. Negative never matches.
 * @return the provider, owned by the list, or null.
 */
group_st *find_provider_info(const char *name, int8_t length);

/**
 * The first provider with an id.
 *
 * @param id provider id.
 * @return the provider, owned by the list, or null.
 */
group_st *find_provider_id(int16_t id);

/**
 * A provider by its place in the table.
 *
 * @param index 0..count; the place behind the last provider holds an empty record.
 * @return the record, owned by the list; null outside that range and outside the array.
 */
group_st *get_provider_info_by_index(int16_t index);

/** @return the number of providers. */
int16_t get_provider_number(void);

/**
 * Removes a provider. Services that carry its id keep it.
 *
 * @param index 0..count-1.
 * @return 0; -1 outside the table.
 */
int remove_provider_index(int32_t index);

/**
 * Removes providers that no service carries: the first one, and every provider behind it whether used or not. (What is
 * in use is marked by place and the marks do not move with the records; hosts register the providers of a scan anew.)
 *
 * @return 0. Nothing is removed while the list has no networks.
 */
int remove_invalid_provider_info(void);

/**
 * The providers of a view's services.
 *
 * @param view_type a view code.
 * @param out receives 500 ids: those found, sorted by name, and -1 behind them. Left alone for an unknown or empty
 * view. Null is refused with 0.
 * @return how many were found; a service whose provider is not in the table is reported and passed over.
 */
int get_provider_id_by_service_type(int8_t view_type, int16_t *out);

CHANNEL_END_DECLS

#endif
