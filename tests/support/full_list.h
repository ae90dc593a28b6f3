// Services and view entries by hand, and the largest list there can be. Free of the test framework, so that programs
// other than the tests build the same list.
#pragma once

#include <channel/channel.h>

#include <string>

namespace test_support {

// A service by its fields; what a test does not name does not matter to it.
struct service_data {
  std::uint8_t net_index = 1;
  std::uint16_t network_id = 1;
  std::uint16_t ts_id = 100;
  std::int64_t frequency = 11'000'000;
  std::uint16_t service_id = 1;
  std::uint8_t polarisation = 0;
  std::uint8_t service_type = SERVICE_TYPE_TV;
  std::uint8_t source_type = 1;
  std::string name = "Service";
  std::uint8_t flag = 0;
};

// An allocated, unfiled service: free() it or file it.
channel_st *make_service(const service_data &data);

// Files a new service in the store.
channel_st *file_service(const service_data &data);

void set_name(channel_st &service, const std::string &name);

// A view entry of a filed service, its rch set.
virtual_channel_st entry_of(channel_st &service, std::int16_t major, std::int16_t minor = 0, std::int8_t tag = 0);

// Appends an entry as a host does: by writing the array and the count.
virtual_channel_st &append_entry(std::int8_t view_type, const virtual_channel_st &entry);

// The largest list: 5,000 services on 500 transponders in 2 networks (services alternately TV and radio as far as those
// views hold them: the first 4,000 TV, the others radio), every view, favourite group and group table full.
void fill_everything();

// The same with another number of services: ten on a transponder, half of the transponders in either network. Of more
// than 5,000 the views show every second, third and so on, so that both networks are shown; they are full when the
// number divides. The favourite groups are always full.
void fill_list(int services);

}  // namespace test_support
