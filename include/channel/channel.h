/**
 * @file
 * The channel-list database of a digital television receiver: this header includes the whole interface.
 */
#ifndef CHANNEL_CHANNEL_H
#define CHANNEL_CHANNEL_H

/**
 * @page rules Rules of every call
 *
 * What holds for every function, stated once. A function's own comment says what differs.
 *
 * @section rules_list One list
 *
 * All state is the one process-wide record that get_channel_list() returns, the records that hang from it, the work
 * view, the history of watched channels, the limited switch and the target directory. No handle is passed. Call
 * load_channel() or init_channel_list() before anything else.
 *
 * @section rules_ownership Ownership
 *
 * The list owns every network, transponder and real channel. Pointers that functions return point into it and are never
 * freed, but for what alloc_channel_info() and alloc_tp_ch_info() give until it is filed, and the lists of
 * v7_load_channel(), v8_load_channel() and v9_load_channel(), which are the caller's. Do not keep pointers to records
 * across removals, merges, loads and resets. Pointers to entries and groups name places, which show something else
 * after moves and sorts as well. Records come from `calloc` and go back with `free`, so a host may `calloc` a
 * channel_st itself and hand it to add_rch_info(); a record that is refused there stays the host's to free.
 *
 * @section rules_in_place Reading and writing in place
 *
 * Records are plain memory. A host may write fields and append entries itself; it keeps counts within the arrays.
 * Nothing is indexed behind its back.
 *
 * @section rules_threads Threads
 *
 * None. The host serialises its calls; no function may run while another one does.
 *
 * @section rules_results Results
 *
 * 0 for success and -1 for failure unless a function says otherwise; a view index, or -1; a pointer, or null; 1 or 0
 * for yes or no. There are no exceptions.
 *
 * @section rules_arguments Bad arguments
 *
 * A null pointer, a position outside an array, an unknown code or a full array is refused: the result and the lines are
 * those that the function names. Most refusals write an ERROR line; an unknown view code a WARNING, twice where array
 * and count are looked up; some lookups and ids nothing (get_rch_ch_info_by_tp_ch(), get_group_id(),
 * remove_fav_group()). Some answer success (init_vindex(), set_group_list(), sort_vch_type()). No memory outside a
 * record or an array is read or written, and a refused call leaves the list as it is, but for repair_channel(), which
 * empties it first; a load that fails leaves an initialised list. Text without a terminator ends where its field ends.
 *
 * @section rules_logs Log lines
 *
 * Lines go to standard error, in green, when entry 7 of verbosity_map (base/verbosity.h) is at least the line's level:
 * 0 errors ("ERROR: function:line ..."), 1 warnings ("WARNING: ..."), 2 traces, 3 details ("ChannelAPI ..."), 5 misses
 * of single lookups. Entries 1, 5 and 106 gate a few lines that belong to other modules: set all four to -1 for
 * silence. Under "Log lines" a function says what it writes, each level with what it tells; the lines of other
 * functions of the interface that do part of its work are included. The guide @ref md_docs_guides_logging shows how to
 * read them.
 *
 * @section rules_memory Memory
 *
 * When memory runs out, one ERROR line is written and the process stops; no function returns a null record for that
 * reason. Only a block for a list beside the one in memory is told as a file that cannot be opened: v7_load_channel(),
 * v8_load_channel() and v9_load_channel() then give null, and check_load_channel() 0. Views, groups and favourites live
 * in fixed arrays, and no lookup and no zapping call allocates.
 *
 * @section rules_frequency Frequencies and polarisation
 *
 * Frequencies are in whatever unit the channel search stores. Two frequencies are the same when they differ by less
 * than 2,500 of that unit: 2,499 apart match, 2,500 apart do not. Polarisation 0 is horizontal, any other value
 * vertical; values are compared exactly.
 *
 * @section rules_identity A channel's identity
 *
 * The six values net_index (0..255), network_id, ts_id (0..65535 each), frequency (32 bits), service_id (0..65535) and
 * polarisation (0 horizontal, otherwise vertical). Original network id, transport stream id and service id are those of
 * ETSI EN 300 468 and ISO/IEC 13818-1. net_index names the source of the signal and is the host's to give.
 *
 * A network is found by net_index and network_id. A transponder is found in it by frequency and polarisation when a
 * frequency is given, and by ts_id when the frequency is 0. A channel is found there by service_id. Entries of views
 * have a tag beside their identity; where a function takes one it is compared with virtual_channel_st::vch_tag.
 *
 * @section rules_views Views
 *
 * View codes are VIEW_ALL, VIEW_TV, VIEW_RADIO, VIEW_USER, VIEW_WORK, VIEW_PROMOTION and VIEW_FAVOURITE plus 0..19. One
 * view is current; functions without a view argument work on it. A host may point channel_list_st::cur_vch and
 * cur_vnumber to an array and a count of its own, which then is the current view with as many entries as it counts, up
 * to 32,767, until a view is made current; so long the array is read, and written by moves and releases.
 *
 * An entry caches a pointer to its real channel, virtual_channel_st::rch. When a channel is freed, its entries in every
 * view, the work view, the current view and the history lose it at once: such an entry is one without a real channel
 * until load_channel(), check_load_channel() or a reader of earlier versions links the list again. It is listed by no
 * group, sorts like its neighbours, and goes in a move of several entries (move_channel(), move_fav_channel()).
 *
 * A count outside its array, which only a host can write, is read as the nearest one inside, but by
 * get_fav_vch_number(), get_fav_vch_by_group_name(), get_fav_group_number() and get_provider_number(), which give it as
 * it stands.
 */

#include <channel/dumps.h>
#include <channel/favourites.h>
#include <channel/files.h>
#include <channel/flags.h>
#include <channel/groups.h>
#include <channel/lookups.h>
#include <channel/moving.h>
#include <channel/providers.h>
#include <channel/records.h>
#include <channel/removal.h>
#include <channel/return_channels.h>
#include <channel/service_lists.h>
#include <channel/sorting.h>
#include <channel/store.h>
#include <channel/transport.h>
#include <channel/views.h>

#endif
