// What a host does besides single calls of the interface: it fills in records, writes views and keeps addresses. Every
// argument is a number, so that a call can be printed, read back and pasted into a test. Functions that are given an
// identity find the record by it; -1 tells that there is none.
#pragma once

#include <cstdint>

namespace model_tests::host {

// Files from here on get the serial numbers 1, 2, 3, ... and go to a directory, which ends with "/".
void start(const char *directory);

// 1 when filed, 0 when the service was there already.
int file_service(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
                 int service_type);
int add_network(int net_index, int network_id);
int release_service(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation);
int release_transponder(int net_index, int network_id, int ts_id, int frequency, int polarisation);
int release_network(int net_index, int network_id);

// The result of the load; 0, and nothing done, while a count is not the length of its list.
int save_and_load();

int append(int type, int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
           int major, int tag);
int insert(int type, int vindex, int net_index, int network_id, int ts_id, int frequency, int service_id,
           int polarisation, int major, int tag);

int rename_channel(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation, int slot,
                   int name, int length);
int rename_at(int vindex, int slot, int name, int length, int type);
int set_user_order(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation, int key);
int set_group_id(int kind, int type, int vindex, int id);

int move_one(int destination, int source);
int move_two(int destination, int first, int second);
int move_three(int destination, int first, int second, int third);
int move_none(int destination);

int add_provider(int name);
// The ids found, folded into one number.
int list_providers(int view_type);

int add_fav_group(int name);
int rename_fav_group(int id, int name, int length);
int add_favourite(int id, int type, int vindex);
int move_favourite(int group, int destination, int source);
int move_two_favourites(int group, int destination, int first, int second);

}  // namespace model_tests::host
