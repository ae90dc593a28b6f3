// The two ways to merge. Caches are full and statements prepared before a merge begins.
#include "sqlite_merge.h"

#include "full_store.h"
#include "sqlite_list.h"

namespace bench::sqlite {
namespace {

// A first pass over everything fills the cache.
const database &with_full_cache(const database &list) {
  require(list.number("SELECT count(name) FROM main.service") == services_in_store(), "opening the list");
  require(list.number("SELECT count(tag + major) FROM main.entry") > services_in_store(), "opening the list");
  return list;
}

const database &with_present(const database &list) {
  list.execute("CREATE TEMP TABLE present(id INTEGER PRIMARY KEY)");
  return with_full_cache(list);
}

const database &with_scan(const database &list, const std::string &scan) {
  list.execute(("ATTACH '" + scan + "' AS scan").c_str());
  list.execute("CREATE TEMP TABLE pair(scanned INTEGER PRIMARY KEY, listed INT UNIQUE);"
               "CREATE TEMP TABLE gone(id INTEGER PRIMARY KEY)");
  require(list.number("SELECT count(name) FROM scan.service") == services_in_store(), "opening the scan");
  return with_full_cache(list);
}

int changes(const database &changed) { return sqlite3_changes(changed.connection()); }

// Transponder and service of an identity; the tolerance of frequencies as the list has it.
constexpr char find_service[] = R"(
SELECT t.id, s.id
  FROM network n JOIN transponder t ON t.network = n.id AND t.polarisation = ?3
                                   AND t.frequency BETWEEN ?4 - 2499 AND ?4 + 2499
  LEFT JOIN service s ON s.transponder = t.id AND s.service_id = ?5
  WHERE n.net_index = ?1 AND n.network_id = ?2)";

constexpr char insert_new[] = "INSERT INTO service VALUES(nullif(?,0),?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)";

constexpr char pair_transponders[] = R"(
INSERT INTO pair SELECT s.id, l.id
  FROM scan.transponder s JOIN scan.network sn ON sn.id = s.network
  JOIN main.network ln ON ln.net_index = sn.net_index AND ln.network_id = sn.network_id
  JOIN main.transponder l ON l.network = ln.id AND l.polarisation = s.polarisation
                         AND l.frequency BETWEEN s.frequency - 2499 AND s.frequency + 2499)";

constexpr char file_new[] = R"(
INSERT INTO main.service
  SELECT NULL, pair.listed, s.service_id, s.name, s.other_name, s.genre, s.provider, s.service_type, s.source_type,
         s.pmt_pid, s.pcr_pid, s.video_tag, s.video_pid, s.video_ecm_pid, s.audio_tag, s.audio_pid, s.flag,
         s.user_order_key
  FROM scan.service s JOIN pair ON pair.scanned = s.transponder
  WHERE NOT EXISTS (SELECT 1 FROM main.service l WHERE l.transponder = pair.listed AND l.service_id = s.service_id))";

constexpr char note_gone[] = R"(
INSERT INTO gone SELECT l.id FROM main.service l LEFT JOIN pair ON pair.listed = l.transponder
  WHERE NOT EXISTS (SELECT 1 FROM scan.service s
                    WHERE s.transponder = pair.scanned AND s.service_id = l.service_id))";

}  // namespace

record_merger::record_merger(const std::string &list)
    : list_(list), begin_(with_present(list_), "BEGIN"), find_(list_, find_service), insert_(list_, insert_new),
      note_(list_, "INSERT INTO present VALUES(?)"),
      delete_entries_(list_, "DELETE FROM entry WHERE service IN (SELECT id FROM service WHERE id NOT IN present)"),
      delete_services_(list_, "DELETE FROM service WHERE id NOT IN present"), forget_(list_, "DELETE FROM present"),
      commit_(list_, "COMMIT") {}

std::int64_t record_merger::file(const channel_st &service) {
  find_.start(service.net_index, service.network_id, service.polarisation, service.frequency, service.service_id);
  require(find_.next(), "finding a transponder");
  const std::int64_t transponder = find_.number(0);
  const std::int64_t key = find_.number(1);
  require(!find_.next(), "finding one transponder");
  if (key != 0) {
    return key;
  }
  insert_service(insert_, 0, transponder, service);
  ++filed_;
  return sqlite3_last_insert_rowid(list_.connection());
}

int record_merger::merge(const std::vector<channel_st> &scan) {
  filed_ = 0;
  begin_.run();
  for (const channel_st &service : scan) {
    note_.run(file(service));
  }
  delete_entries_.run();
  delete_services_.run();
  const int deleted = changes(list_);
  forget_.run();
  commit_.run();
  return filed_ + deleted;
}

set_merger::set_merger(const std::string &list, const std::string &scan)
    : list_(list), begin_(with_scan(list_, scan), "BEGIN"), pair_(list_, pair_transponders), file_new_(list_, file_new),
      note_gone_(list_, note_gone), delete_entries_(list_, "DELETE FROM main.entry WHERE service IN gone"),
      delete_services_(list_, "DELETE FROM main.service WHERE id IN gone"), forget_pairs_(list_, "DELETE FROM pair"),
      forget_gone_(list_, "DELETE FROM gone"), commit_(list_, "COMMIT") {}

int set_merger::merge() {
  begin_.run();
  pair_.run();
  file_new_.run();
  const int filed = changes(list_);
  note_gone_.run();
  delete_entries_.run();
  delete_services_.run();
  const int deleted = changes(list_);
  forget_pairs_.run();
  forget_gone_.run();
  commit_.run();
  return filed + deleted;
}

}  // namespace bench::sqlite
