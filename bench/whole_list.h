// The operations on the whole list, each checked while it is measured. What is brought about before an operation stands
// beside it.
#pragma once

namespace bench {

void release();
void load();
// As a host does between two lists.
void load_and_reset();
void save();

// Merges the scan. The views are full when the new services come, and an ERROR line for each would be measured: the log
// is off.
void merge();
void repair();
void link();

// Takes the second network out of the hierarchy; its entries stay. And the sweep of these.
void drop_network();
void prune();

// Brings back the one provider without services, which the clean-up removes.
void bring_provider_back();
void clean_providers();

void shuffle_view();
template <int SortType>
void sort_all_view();
void sort_by_bytes();

}  // namespace bench
