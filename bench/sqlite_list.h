// The list between the store, the database and memory: what is saved, and what a load makes of it.
#pragma once

#include <channel/records.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <vector>

#include "sqlite_database.h"

namespace bench::sqlite {

// The store's records with the keys that they have in the database: places in these arrays, from 1.
struct keyed_list {
  struct keyed_entry {
    int view;
    int position;
    const virtual_channel_st *entry;
    std::int64_t service;
  };
  template <class Record>
  struct keyed {
    const Record *record;
    std::int64_t parent;
  };

  std::vector<const network_ch_st *> networks;
  std::vector<keyed<tp_ch_st>> transponders;
  std::vector<keyed<channel_st>> services;
  std::vector<keyed_entry> entries;
};

keyed_list list_in_store();

// Writes the whole list, what was there before goes.
class writer {
 public:
  explicit writer(const database &target);
  void save(const keyed_list &list);

 private:
  void save_hierarchy(const keyed_list &list);
  void save_groups();

  statement begin_, clear_[5], network_, transponder_, service_, entry_, group_, commit_;
};

struct freeing {
  void operator()(void *memory) const { std::free(memory); }
};

// What a load makes: the records, each by its key and linked as in the store, the views and the group tables.
struct loaded_list {
  template <class Record>
  using by_key = std::vector<std::unique_ptr<Record, freeing>>;

  list_head network_list;
  by_key<network_ch_st> networks;
  by_key<tp_ch_st> transponders;
  // The network of each transponder, by the transponder's key: services take its ids over.
  std::vector<const network_ch_st *> network_of;
  by_key<channel_st> services;
  std::array<std::vector<virtual_channel_st>, VIEW_FAVOURITE_LAST + 1> views;
  std::array<std::vector<group_st>, 4> groups;

  void clear();
};

class reader {
 public:
  explicit reader(const database &source);
  void load(loaded_list &list);

 private:
  void load_networks(loaded_list &list);
  void load_transponders(loaded_list &list);
  void load_services(loaded_list &list);
  void load_entries(loaded_list &list);
  void load_groups(loaded_list &list);

  statement begin_, networks_, transponders_, services_, entries_, groups_, commit_;
};

// A service's columns but its place, to and from a row of the table. Key 0 becomes the next free one if the statement
// lets it.
void insert_service(statement &insert, std::int64_t key, std::int64_t transponder, const channel_st &service);
void take_service(const statement &row, channel_st &service);

// Whether a load made of the database what the store holds, record by record.
bool is_store(const loaded_list &list, const keyed_list &store);

}  // namespace bench::sqlite
