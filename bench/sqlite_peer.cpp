// SQLite's part of the catalogue: loads, saves, merges and looks up the same list. What it is given ready: databases
// that are open, with warm caches and prepared statements, and the scan as a database too.
#include <channel/channel.h>

#include <array>
#include <filesystem>
#include <memory>
#include <vector>

#include "full_store.h"
#include "peers.h"
#include "sqlite_list.h"
#include "sqlite_merge.h"

namespace bench {
namespace {

using sqlite::database;
using sqlite::statement;

constexpr char list_database[] = "list.db";
constexpr char saved_database[] = "saved.db";
constexpr char scan_database[] = "scan.db";
constexpr char merged_database[] = "merged.db";

void make_database(const char *name) {
  const database target(scratch_path(name));
  target.execute(sqlite::schema);
  sqlite::writer(target).save(sqlite::list_in_store());
}

// The services of the scan, as a scan supplies them.
std::vector<channel_st> scan;

// Only its hierarchy counts: entries of services that the scan replaces resolve to nothing.
void make_scan_database() {
  {
    const muted_stdout muted;
    const silenced_log silenced;
    reset_channel_list();
    require(load_channel(scan_file, 255) == CHANNEL_LIST_VERSION, "loading the scan");
  }
  for (int view = VIEW_ALL; view <= VIEW_FAVOURITE_LAST; ++view) {
    if (get_virtual_channel_st(static_cast<std::int8_t>(view)) != nullptr) {
      init_vindex(static_cast<std::int8_t>(view));
    }
  }
  make_database(scan_database);
  for (const auto &service : sqlite::list_in_store().services) {
    scan.push_back(*service.record);
  }
  restore_full_store();
}

void check_load() {
  const database source(scratch_path(list_database));
  sqlite::loaded_list list;
  sqlite::reader(source).load(list);
  require(sqlite::is_store(list, sqlite::list_in_store()), "loading the database");
}

// Makes the databases in the first call; every operation that can be the first one calls it.
void need_databases() {
  static const bool are_made = [] {
    make_database(list_database);
    make_database(saved_database);
    make_scan_database();
    check_load();
    return true;
  }();
  require(are_made, "making the databases");
}

sqlite::loaded_list loaded;

void clear_loaded() {
  need_databases();
  loaded.clear();
}

void load() {
  static const database source(scratch_path(list_database));
  static sqlite::reader reader(source);
  reader.load(loaded);
  require(loaded.services.size() == static_cast<std::size_t>(services_in_store()) + 1, "loading from SQLite");
}

// The keys are at hand, as they are for a program that keeps its list in a database.
sqlite::keyed_list to_save;

void list_services() {
  need_databases();
  to_save = sqlite::list_in_store();
}

void save() {
  static const database target(scratch_path(saved_database));
  static sqlite::writer writer(target);
  writer.save(to_save);
  require(target.number("SELECT max(id) FROM service") == services_in_store(), "saving to SQLite");
}

// To be merged into: the list's database once more, and a first pass has filled the cache.
std::unique_ptr<sqlite::record_merger> record_merger;
std::unique_ptr<sqlite::set_merger> set_merger;

std::string restore_database() {
  need_databases();
  const std::string path = scratch_path(merged_database);
  record_merger.reset();
  set_merger.reset();
  std::filesystem::copy_file(scratch_path(list_database), path, std::filesystem::copy_options::overwrite_existing);
  return path;
}

void prepare_records() { record_merger = std::make_unique<sqlite::record_merger>(restore_database()); }

void prepare_sets() {
  set_merger = std::make_unique<sqlite::set_merger>(restore_database(), scratch_path(scan_database));
}

void merge_records() { require(record_merger->merge(scan) == 2 * replaced_services(), "merging with SQLite"); }

void merge_sets() { require(set_merger->merge() == 2 * replaced_services(), "merging with SQLite"); }

// The last number of the ALL view, alone and with others in one transaction. The index is named: without statistics
// SQLite may prefer to walk the whole view in its order.
class number_lookup {
 public:
  explicit number_lookup(const char *before)
      : source_((need_databases(), scratch_path(list_database))),
        position_(source_, "SELECT position FROM entry INDEXED BY entry_by_number WHERE view = ? AND major = ? ORDER "
                           "BY position LIMIT 1"),
        service_(source_,
                 "SELECT service.* FROM entry INDEXED BY entry_by_number JOIN service ON service.id = entry.service"
                 " WHERE view = ? AND major = ? ORDER BY position LIMIT 1") {
    source_.execute(before);
  }

  // As get_channel_index() answers it.
  void find_position() {
    find(position_);
    require(position_.number(0) == MAX_CHANNEL - 1 && !position_.next(), "finding a position");
  }

  // As get_channel_index() and get_channel() answer it.
  void find_service() {
    channel_st service = {};
    find(service_);
    sqlite::take_service(service_, service);
    require(service.service_id == MAX_CHANNEL && !service_.next(), "finding a service");
  }

 private:
  static void find(statement &query) {
    query.start(std::int64_t{VIEW_ALL}, std::int64_t{MAX_CHANNEL});
    require(query.next(), "finding a number");
  }

  database source_;
  statement position_;
  statement service_;
};

number_lookup &alone() {
  static number_lookup lookup("");
  return lookup;
}

number_lookup &in_transaction() {
  static number_lookup lookup("BEGIN");
  return lookup;
}

constexpr std::array catalogue = {
    operation{"sqlite:load", {}, clear_loaded, load, records, 0, true},
    operation{"sqlite:save", {}, list_services, save, records},
    operation{"sqlite:merge_services", {}, prepare_records, merge_records, records},
    operation{"sqlite:merge_databases", {}, prepare_sets, merge_sets, records},
    operation{"sqlite:position_of_number", {}, nullptr, [] { alone().find_position(); }, 1},
    operation{"sqlite:position_of_number_in_transaction", {}, nullptr, [] { in_transaction().find_position(); }, 1},
    operation{"sqlite:service_of_number", {}, nullptr, [] { alone().find_service(); }, 1},
    operation{"sqlite:service_of_number_in_transaction", {}, nullptr, [] { in_transaction().find_service(); }, 1},
};

}  // namespace

std::span<const operation> sqlite_operations() { return catalogue; }

}  // namespace bench
