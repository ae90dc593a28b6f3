// Everything that a host can see of the channel list, as vectors and maps of plain structs: the model changes one of
// these, and the library's own state is read into another, so that the two can be compared.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace model_tests {

struct identity {
  int net_index = 0;
  int network_id = 0;
  int ts_id = 0;
  std::uint32_t frequency = 0;
  int service_id = 0;
  int polarisation = 0;

  bool operator==(const identity &) const = default;
};

// A real channel. The serial number, which the host keeps in reserved bytes of the record, stands for its address.
struct service {
  int serial = 0;
  identity id;
  int service_type = 0;
  int flag = 0;
  int genre_id = 0;
  int provider_id = 0;
  int country_id = 0;
  int user_order_key = 0;
  std::array<std::string, 2> names;
  std::array<int, 2> name_lengths = {};

  bool operator==(const service &) const = default;
};

struct transponder {
  int ts_id = 0;
  std::uint32_t frequency = 0;
  int polarisation = 0;
  int count = 0;
  std::vector<service> services;

  bool operator==(const transponder &) const = default;
};

struct network {
  int net_index = 0;
  int network_id = 0;
  int count = 0;
  std::vector<transponder> transponders;

  bool operator==(const network &) const = default;
};

struct entry {
  int tag = 0;
  int favorite_id = 0;
  int major = 0;
  int minor = 0;
  identity id;
  int rch = 0;  // a serial number; 0 for null

  bool operator==(const entry &) const = default;
};

// The slots up to the count, and those behind it as far as any is not zero.
struct view {
  int count = 0;
  std::vector<entry> slots;

  bool operator==(const view &) const = default;
};

struct group {
  int id = 0;
  int name_length = 0;
  std::string name;

  bool operator==(const group &) const = default;
};

// As a view's slots.
struct group_table {
  int count = 0;
  std::vector<group> slots;

  bool operator==(const group_table &) const = default;
};

struct watched {
  int group = 0;
  int service_type = 0;
  int sub_group = 0;
  int vindex = 0;
  int tag = 0;
  int net_index = 0;
  entry vch;

  bool operator==(const watched &) const = default;
};

struct selection {
  int current = 0;   // the code of the view whose array is current
  int vch_type = 0;  // the code that the host reads back
  int ch_type = 0;
  int use_group_list = 0;
  int service_type = 1;
  int net_index = -1;
  int sub_group_id = -1;

  bool operator==(const selection &) const = default;
};

struct state {
  std::vector<network> networks;
  int network_count = 0;
  std::map<int, view> views;
  selection selected;
  group_table providers;
  group_table favourites;
  std::array<watched, 20> history;
  int history_count = 0;
};

// Takes zero slots behind the counts away, so that equal lists are equal states.
void normalise(state &normalised);

// Where two states differ, in words; empty when they are equal.
std::string difference(const state &expected, const state &found);

}  // namespace model_tests
