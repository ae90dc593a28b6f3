// Call by call and line by line, independent of the library's code: nothing here looks at what the library does.
#include "documented_steps.h"

#include <channel/channel.h>

#include <algorithm>

namespace test_support {
namespace {

bytes table_in(const bytes &list, const side_table &table) {
  const array_place &place = group_place(table.kind);
  return list.substr(place.count, 2) + list.substr(place.array, table.size());
}

std::string short_part(const side_table &table, const std::string &path, std::size_t size) {
  return std::string("ERROR: load_group_list:# Fail to read the ") + table.name + " to '" + path + "' size " +
         std::to_string(size) + " \n";
}

void document_both_group_loads(documented_run &run, const receiver &own) {
  document_group_load(run, own, genre_table);
  document_group_load(run, own, country_table);
}

// The words of a reader that hands out a list of its own.
struct detached_words {
  std::string reader;
  std::string list_name;
};

// True when the whole file is read; whatever fails, nothing is kept and one line is said.
bool document_reading(documented_run &run, const detached_words &words, const std::string &path,
                      const std::vector<record_place> &records) {
  const std::string line = "ERROR: " + words.reader + ":# Fail to ";
  if (!run.open_to_read(path)) {
    run.say(line + "open '" + path + "'\n");
    return false;
  }
  for (const record_place &record : records) {
    if (!run.read(record.size)) {
      const std::string size =
          record.kind == record_kind::list ? " size " + std::to_string(record.size) + " " : std::string();
      const std::string what = "the " + words.list_name + (record.kind == record_kind::transponder ? "->to " : " to ");
      run.say(line + "read " + (record.kind == record_kind::service ? "" : what) + "'" + path + "'" + size + "\n");
      run.close();
      return false;
    }
  }
  run.close();
  return true;
}

constexpr int added_and_deleted = 3;

}  // namespace

void put_table(bytes &list, const side_table &table, const bytes &contents) {
  const array_place &place = group_place(table.kind);
  list.replace(place.count, 2, contents, 0, 2);
  list.replace(place.array, table.size(), contents, 2);
}

// Both reads are made whatever becomes of the first; the table is taken whole or emptied.
int document_group_load(documented_run &run, const receiver &own, const side_table &table) {
  const std::string path = own.path(table.file_name());
  if (!run.open_to_read(path)) {
    run.say("ERROR: load_group_list:# Fail to open '" + table.file_name() + "'\n");
    return 0;
  }
  bool is_whole = true;
  for (const std::size_t size : {std::size_t{2}, table.size()}) {
    if (!run.read(size)) {
      run.say(short_part(table, path, size));
      is_whole = false;
    }
  }
  run.close();
  put_table(run.store.list, table, is_whole ? read_file(path) : bytes(2 + table.size(), '\0'));
  return is_whole ? 0 : -1;
}

// A failed write does not keep the rest from being written.
int document_group_save(documented_run &run, const receiver &own, const side_table &table) {
  const std::string path = own.path(table.saved_name);
  if (!run.open_to_write(path)) {
    run.say("ERROR: save_group_list:# Fail to open '" + path + "'\n");
    return 0;
  }
  const bytes contents = table_in(run.store.list, table);
  const bool steps[] = {run.write(contents.substr(0, 2)), run.write(contents.substr(2)), run.close()};
  run.sync();
  for (const bool went_well : steps) {
    if (!went_well) {
      run.say("ERROR: save_group_list:# Fail to write the genre list to '" + path + "'\n");
    }
  }
  return std::ranges::count(steps, false) == 0 ? 1 : 0;
}

// A failed load leaves an initialised list; empty group tables are filled from their files either way.
int document_load(documented_run &run, const receiver &own, const std::string &name, const channel_file &file) {
  const std::string line = "ERROR: load_channel_internal:# Fail to ";
  const std::string path = own.path(name);
  const auto give_up = [&](int result) {
    run.store = initialised_store();
    document_both_group_loads(run, own);
    return result;
  };
  if (!run.open_to_read(path)) {
    run.say(line + "open '" + path + "'\n");
    return give_up(1);
  }
  for (const record_place &record : file.records) {
    if (!run.read(record.size)) {
      const std::string size = record.kind == record_kind::list ? " size 460032 " : "";
      run.say(line + "read " + (record.kind == record_kind::service ? "" : "the channel_list to ") + "'" + path + "'" +
              size + "\n");
      run.close();
      return give_up(-1);
    }
  }
  run.is_done();
  if (get(file.data, group_place(GROUP_GENRE).count, 2) == 0) {
    run.store.list = file.data;
    document_both_group_loads(run, own);
  }
  run.close();
  return CHANNEL_LIST_VERSION;
}

// Any failed write ends the save at once; behind an open file there is always a sync.
int document_save(documented_run &run, const receiver &own) {
  const std::string path = own.path(receiver::saved_name);
  const std::string line = "ERROR: save_channel_internal:# Fail to ";
  if (!run.open_to_write(path)) {
    run.say(line + "open '" + path + "'\n");
    return 0;
  }
  static constexpr const char *names[] = {"channel_list", "tp_ch_info", "tp_ch_info", "rch_info"};
  const char *failed = nullptr;
  for (const record_place &record : own.own_list().records) {
    if (failed == nullptr && !run.write(own.own_list().data.substr(record.offset, record.size))) {
      failed = names[static_cast<std::size_t>(record.kind)];
    }
  }
  failed = failed == nullptr && !run.flush() ? names[0] : failed;
  const bool closed = run.close();
  run.sync();
  failed = failed == nullptr && !closed ? names[0] : failed;
  if (failed != nullptr) {
    run.say(line + "write the " + failed + " to '" + path + "'\n");
  }
  return failed == nullptr ? 1 : 0;
}

int document_merge(documented_run &run, const receiver &own) {
  if (!document_reading(run, {"new_load_channel", "new_channel_list"}, receiver::place_of_new_lists,
                        own.new_list().records)) {
    return 0;
  }
  run.is_done();
  return added_and_deleted;
}

bool document_old_reading(documented_run &run, const receiver &own, const old_version &version) {
  return document_reading(run, {version.reader, "old_channel_list"}, own.old_path(version.number),
                          in_version(version, own.own_list()).records);
}

}  // namespace test_support
