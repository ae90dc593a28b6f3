// What operations cost at the least: the same bytes, entries or names handled with nothing else done. Each stands
// beside the operation that it is the floor of.
#pragma once

namespace bench::floors {

// Takes what the floors walk, copy and sort from the list as it stands.
void take_from_store();

// Copies the bytes of a file's header in memory.
void copy_header();

// Reads the channel file with one read for each record, through a buffer of 4 KiB, into records of the library's sizes.
void read_records();
void read_records_of(const char *path);
// Frees what read_records() allocated.
void free_records();

// Writes the bytes of the channel file with a single system call; with one buffered write for each record.
void write_at_once();
void write_records();

// Walks the numbers of the ALL view, standing side by side, to the n-th.
template <int Steps>
void walk_numbers();
// Walks the entries of the ALL view to the last number.
void walk_entries();
// Follows the links from the first network to the last, on to its last transponder and that one's last service.
void follow_links();

// Looks at one field of every service.
void walk_hierarchy();

// Sorts pointers to the names of the ALL view; sorts a copy of its entries by their numbers.
void shuffle_names();
void sort_names();
void shuffle_entries();
void sort_entries();

// Writes the pointer of every entry of every view; finds it by a walk over the hierarchy for each entry first. The
// second is not the least it costs but the plain way to do it.
void store_pointers();
void link_by_nested_walks();

// Moves the entries of the first network to the front of every view, one pass over each.
void restore_views();
void compact_views();

// A thousand calls of a function that does nothing.
void call_nothing();

}  // namespace bench::floors
