/**
 * @file
 * The channel-list database of a digital television receiver.
 *
 * This header includes the whole interface. What holds for every function, stated once:
 *
 * - **One list.** All state is the one process-wide record that get_channel_list() returns, the records that hang from
 *   it, the work view, the history of watched channels, the limited switch and the target directory. No handle is
 *   passed. Call load_channel() or init_channel_list() before anything else.
 * - **Ownership.** The list owns every network, transponder and real channel. Pointers that functions return point into
 *   it: never free them, and do not keep them across a call that removes, loads, resets or sorts. Records come from
 *   `calloc` and go back with `free`, so a host may `calloc` a channel_st itself and hand it to add_rch_info(); a
 * record that is refused there stays the host's to free.
 * - **Reading and writing in place.** Records are plain memory. A host may write fields and append entries itself; it
 *   keeps counts within the arrays. Nothing is indexed behind its back.
 * - **Threads.** None. The host serialises its calls; no function may run while another one does.
 * - **Results.** 0 for success and -1 for failure unless a function says otherwise; a view index, or -1; a pointer, or
 *   null; 1 or 0 for yes or no. There are no exceptions.
 * - **Logging.** Lines go to standard error, in green, when entry 7 of verbosity_map (base/verbosity.h) is at least the
 *   line's level: 0 errors ("ERROR: function:line ..."), 1 warnings, 2 traces, 3 details, 5 misses of single lookups.
 * - **Bad arguments.** A null pointer, a position outside an array, an unknown code or a full array is refused with an
 *   ERROR line and the function's failure result. Nothing is lost, and no memory outside a record or an array is read
 *   or written. Text without a terminator ends where its field ends.
 * - **Memory.** When memory runs out, one ERROR line is written and the process stops; no function returns a null
 *   record for that reason. Views, groups and favourites live in fixed arrays and never allocate.
 * - **Frequencies.** In whatever unit the channel search stores. Two frequencies are the same when they differ by less
 *   than 2,500 of that unit.
 * - **A channel's identity** is the six values net_index (0..255), network_id, ts_id (0..65535 each), frequency
 *   (32 bits), service_id (0..65535) and polarisation (0 horizontal, otherwise vertical). Original network id,
 * transport stream id and service id are those of ETSI EN 300 468.
 */
#ifndef CHANNEL_CHANNEL_H
#define CHANNEL_CHANNEL_H

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
