// What the channel list does, as plainly as it can be said: every operation of the interface under its own name, over
// vectors, without the library. Moves are told as shifts of slots, the way receivers make them, because what they leave
// behind a count can be seen. Operations that only a host can do have the names of host.h.
#pragma once

#include <initializer_list>
#include <vector>

#include "state.h"
#include "support/invariants.h"

namespace model_tests {

// The codes of the 26 views, and how many entries each can hold.
const std::vector<int> &view_codes();
int capacity_of(int code);

// Names by number, 0..499, for channels and groups. The first nine are alike or empty.
const char *name_number(int number);

// A view whose used entries the library has put into an order of its own among those that a sort allows.
struct sorted_view {
  int code;
  int sort_type;
};
constexpr int sort_by_bytes = -1;

class model : public state {
 public:
  model();

  // What the operations so far have left in force.
  test_support::promises kept;

  // Takes over the order of views sorted by the last operation; what is wrong with that order, or nothing.
  std::string accept_order(const state &found);

  // The store.
  int file_service(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
                   int service_type);
  int add_network(int net_index, int network_id);
  int release_service(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation);
  int release_transponder(int net_index, int network_id, int ts_id, int frequency, int polarisation);
  int release_network(int net_index, int network_id);
  int reset_channel_list();
  int save_and_load();

  // Removal.
  int vtype_remove_by_vindex(int vindex, int type);
  int vtype_remove_by_net_index(int net_index, int type);
  int vtype_remove_vch(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                       int polarisation, int type);
  int vtype_remove_virtual_channel_st(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                                      int polarisation, int type);
  int remove_invalid_virtual_channel();
  int remove_channel_st(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation);
  int remove_virtual_channel_st(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                                int polarisation);
  int remove_channel_info_by_net_index(int net_index);
  int remove_channel_info_by_frequency(int net_index, int frequency, int polarisation);

  // Views.
  int append(int type, int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
             int major, int tag);
  int insert(int type, int vindex, int net_index, int network_id, int ts_id, int frequency, int service_id,
             int polarisation, int major, int tag);
  int insert_user_vch_vindex(int all_index);
  int init_vindex(int type);
  int create_vindex_type(int type, int net_filter);
  int change_vindex_type(int type);
  int get_vch_index_by_ts_info(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                               int polarisation);
  int vtype_get_vch_index_by_ts_info(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                                     int polarisation, int type);

  // Flags, names and group ids.
  int set_channel_flag(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
                       int bits, int set);
  int set_channel_flag_by_bit(int bits);
  int clear_channel_flag_by_bit(int bits);
  int set_channel_flag_by_vindex(int vindex, int bits, int set);
  int get_channel_flag_by_vindex(int vindex);
  int vtype_set_channel_flag_by_vindex(int vindex, int bits, int set, int type);
  int vtype_get_channel_flag_by_vindex(int vindex, int type);
  int check_skip_channel_index(int vindex);
  int check_available_channel(int vindex);
  int get_dsmcc_channel();
  int rename_channel(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
                     int slot, int name, int length);
  int rename_at(int vindex, int slot, int name, int length, int type);
  int set_user_order(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
                     int key);
  int set_group_id(int kind, int type, int vindex, int id);

  // Sorting and moving.
  int sort_vch_type(int sort_type, int view_type);
  int sort_vindex_ex(int sort_type);
  int sort_vindex_by_number(int view_type);
  int sort_vindex();
  int sort_vindex_by_flag(int view_type, int sort_type);
  int move_one(int destination, int source) { return move(destination, {source}); }
  int move_two(int destination, int first, int second) { return move(destination, {first, second}); }
  int move_three(int destination, int first, int second, int third) {
    return move(destination, {first, second, third});
  }
  int move_none(int destination) { return move(destination, {}); }

  // Providers and service lists.
  int add_provider(int name);
  int remove_provider_index(int index);
  int remove_invalid_provider_info();
  int list_providers(int view_type);
  int create_service_by_group_list_id(int kind, int id, int source_type, int make_current);
  int remove_service_by_group_list_id(int kind, int id, int view_type);
  int add_fav_ch_group(int fav_id, int source_type, int kind, int kind_id);

  // Favourites.
  int add_fav_group(int name);
  int rename_fav_group(int id, int name, int length);
  int remove_fav_group(int id);
  int move_fav_ch_group(int destination, int source);
  int add_favourite(int id, int type, int vindex);
  int remove_fav_virtual_channel(int id, int index);
  int remove_fav_virtual_channel_by_ts_info(int tag, int id, int net_index, int frequency, int polarisation,
                                            int network_id, int ts_id, int service_id);
  int move_favourite(int group, int destination, int source) { return move_favourites(group, destination, {source}); }
  int move_two_favourites(int group, int destination, int first, int second) {
    return move_favourites(group, destination, {first, second});
  }

  // The history.
  int init_return_channel();
  int check_same_return_channel(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                                int polarisation);
  int add_return_channel(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                         int polarisation);
  int remove_return_channel(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                            int polarisation);

 private:
  view *find_view(int code);
  view &current() { return views.at(selected.current); }
  network *find_network(int net_index, int network_id);
  service *resolve(const identity &id, transponder **holder = nullptr);
  service *service_of(int serial);
  service *service_at(view *searched, int vindex);
  [[nodiscard]] bool counts_match() const;
  void forget(int serial);
  void forget_all(const transponder &released);
  void release(int serial);
  void sweep();
  void link();
  void show_tv_or_radio();
  void initialise();
  int flag_current(int bits, bool set);
  int rename(service *renamed, int slot, int name, int length, bool keeps_length);
  std::string order_complaint(const view &sorted, int sort_type);
  bool belongs(const entry &listed, int kind, int id);
  int move(int destination, const std::vector<int> &sources);
  int mirrored(const entry &moved);
  void move_several(int destination, const std::vector<int> &sources, int mirrored_destination);
  int move_favourites(int group, int destination, const std::vector<int> &sources);
  int favourite_index(int id) const;

  std::vector<sorted_view> sorted_;
  int last_serial_ = 0;
};

}  // namespace model_tests
