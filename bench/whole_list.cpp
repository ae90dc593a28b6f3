// The operations on the whole list. Their checks are cheap beside what they check.
#include "whole_list.h"

#include <channel/channel.h>

#include <algorithm>
#include <string>

#include "channel/persist/merge.h"
#include "channel/store/links.h"
#include "full_store.h"

namespace bench {
namespace {

constexpr std::uint8_t file_order = 255;

// The entries of the ALL view that the sweep has to leave, and the providers that the clean-up has to.
int entries_to_stay = 0;
constexpr int providers_with_services = MAX_PROVIDER - 1;

int all_count() { return *get_virtual_channel_vnumber(VIEW_ALL); }

}  // namespace

void release() { reset_channel_list(); }

void load() { require(load_channel(list_file, file_order) == CHANNEL_LIST_VERSION, "load_channel"); }

void load_and_reset() {
  load();
  release();
}

void save() { require(save_channel(saved_file) == 1, "save_channel"); }

void merge() {
  static const std::string path = scratch_path(scan_file);
  const silenced_log silenced;
  const int changed = channel::persist::merge_new_list(path.c_str());
  require(changed == 2 * replaced_services(), "merge_new_list");
}

void repair() {
  static const std::string path = scratch_path(version_8_file);
  require(repair_channel(8, path.c_str()) == 0, "repair_channel");
}

void link() { require(channel::link_rch_info() == 0, "link_rch_info"); }

void drop_network() {
  constexpr std::uint8_t second = 2;
  restore_full_store();
  const virtual_channel_st *all = get_virtual_channel_st(VIEW_ALL);
  const auto gone =
      std::count_if(all, all + all_count(), [](const virtual_channel_st &entry) { return entry.net_index == second; });
  entries_to_stay = all_count() - static_cast<int>(gone);
  release_network_ch_info(get_network_ch_info(second, second));
  require(gone > 0 && all_count() == entries_to_stay + static_cast<int>(gone), "release_network_ch_info");
}

void prune() {
  require(remove_invalid_virtual_channel() == 0 && all_count() == entries_to_stay, "remove_invalid_virtual_channel");
}

void bring_provider_back() {
  channel_list_st &list = *get_channel_list();
  list.provider_num = MAX_PROVIDER;
  list.provider[providers_with_services].id = providers_with_services;
}

void clean_providers() {
  require(remove_invalid_provider_info() == 0 && get_provider_number() == providers_with_services,
          "remove_invalid_provider_info");
}

void shuffle_view() {
  const auto shuffled = shuffled_entries();
  std::copy(shuffled.begin(), shuffled.end(), get_virtual_channel_st(VIEW_ALL));
}

template <int SortType>
void sort_all_view() {
  require(sort_vch_type(SortType, VIEW_ALL) == 0, "sort_vch_type");
}

template void sort_all_view<SORT_CH_NAME>();
template void sort_all_view<SORT_TRANSPONDER>();
template void sort_all_view<SORT_NUMBER>();
template void sort_all_view<SORT_SERVICE_ID>();

void sort_by_bytes() { require(sort_vindex_by_number(VIEW_ALL) == 0, "sort_vindex_by_number"); }

}  // namespace bench
