// How each operation is called. What it then has to do stands in documented_steps.cpp.
#include "operations.h"

#include <channel/channel.h>
#include <unistd.h>

#include "faults/documented_steps.h"
#include "support/group_file_test.h"
#include "support/hierarchy_walk.h"
#include "support/log_capture.h"

namespace test_support {
namespace {

int number_of_services(const channel_list_st &list) {
  std::size_t number = 0;
  for (const network_ch_st *network : records_below<network_ch_st>(list.network_list)) {
    for (const tp_ch_st *transponder : transponders(*network)) {
      number += services(*transponder).size();
    }
  }
  return static_cast<int>(number);
}

constexpr int services_of_own_list = 8;

// A list of an earlier version beside the one in memory; how many services it has, -1 for none.
operation reading(const old_version &version) {
  return {version.reader,
          [version](const receiver &own) {
            const owned_list read = read_old(version, own.old_path(version.number));
            return read != nullptr ? number_of_services(*read) : -1;
          },
          [version](documented_run &run, const receiver &own) {
            return document_old_reading(run, own, version) ? services_of_own_list : -1;
          }};
}

// Releases the records, as hosts do before they load. A setting that only an initialisation takes back is left behind.
void release_records() {
  reset_channel_list();
  get_channel_list()->bouquet_id = 7;
}

// The list is emptied before anything is read.
operation repair(const old_version &version) {
  return {"repair_channel_" + std::to_string(version.number),
          [version](const receiver &own) {
            release_records();
            return repair_channel(version.number, own.old_path(version.number).c_str());
          },
          [version](documented_run &run, const receiver &own) {
            run.store = initialised_store();
            if (!document_old_reading(run, own, version)) {
              return -1;
            }
            run.is_done();
            return 0;
          }};
}

int load_quietly(const std::string &name, std::uint8_t sort_mode) {
  const fd_capture standard_output(STDOUT_FILENO);
  release_records();
  return load_channel(name.c_str(), sort_mode);
}

operation load() {
  return {"load_channel", [](const receiver & /*own*/) { return load_quietly(receiver::name_without_groups, 255); },
          [](documented_run &run, const receiver &own) {
            return document_load(run, own, receiver::name_without_groups, own.list_without_groups());
          }};
}

// A file that brings its groups, sorted.
operation sorted_load() {
  return {"load_channel_sorted",
          [](const receiver & /*own*/) { return load_quietly(receiver::own_name, SORT_CH_NAME); },
          [](documented_run &run, const receiver &own) {
            return document_load(run, own, receiver::own_name, own.own_list());
          }};
}

operation save() {
  return {"save_channel", [](const receiver & /*own*/) { return save_channel(receiver::saved_name.c_str()); },
          document_save, receiver::saved_name};
}

operation merge() {
  return {"check_load_channel", [](const receiver & /*own*/) { return check_load_channel(); }, document_merge};
}

operation group_load(const side_table &table) {
  return {std::string("load_group_list_") + table.name,
          [table](const receiver & /*own*/) { return load_group_list(static_cast<std::int8_t>(table.kind)); },
          [table](documented_run &run, const receiver &own) { return document_group_load(run, own, table); }};
}

operation group_save(const side_table &table) {
  return {std::string("save_group_list_") + table.name,
          [table](const receiver & /*own*/) { return save_group_list(static_cast<std::int8_t>(table.kind)); },
          [table](documented_run &run, const receiver &own) { return document_group_save(run, own, table); },
          table.saved_name};
}

// Never a failure, whatever becomes of the file.
operation group_replacement(const side_table &table) {
  return {std::string("set_group_list_") + table.name,
          [table](const receiver & /*own*/) {
            const std::vector<group_st> groups(table.capacity, group(7, "Seventh"));
            return set_group_list(static_cast<std::int8_t>(table.kind), groups.data(), 1);
          },
          [table](documented_run &run, const receiver &own) {
            const std::vector<group_st> groups(table.capacity, group(7, "Seventh"));
            put_table(run.store.list, table, file_of(1, groups));
            document_group_save(run, own, table);
            return 1;
          },
          table.saved_name};
}

std::vector<operation> make_operations() {
  std::vector<operation> made = {load(), sorted_load(), save(), merge()};
  for (const old_version &version : old_versions()) {
    made.push_back(reading(version));
    made.push_back(repair(version));
  }
  for (const side_table &table : {genre_table, country_table}) {
    made.push_back(group_load(table));
    made.push_back(group_save(table));
    made.push_back(group_replacement(table));
  }
  return made;
}

}  // namespace

const std::vector<operation> &operations() {
  static const std::vector<operation> made = make_operations();
  return made;
}

}  // namespace test_support
