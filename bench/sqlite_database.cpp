// The schema, and the calls of SQLite; a call that fails stops the program.
#include "sqlite_database.h"

#include <algorithm>
#include <cstring>

#include "full_store.h"

namespace bench::sqlite {

// Frequencies of one transponder differ by less than the tolerance: they are part of no unique key.
const char schema[] = R"(
CREATE TABLE network(
  id INTEGER PRIMARY KEY, net_index INT, network_id INT, name TEXT, UNIQUE(net_index, network_id));
CREATE TABLE transponder(
  id INTEGER PRIMARY KEY, network INT REFERENCES network, ts_id INT, frequency INT, polarisation INT);
CREATE INDEX transponder_of_network ON transponder(network, polarisation, frequency);
CREATE TABLE service(
  id INTEGER PRIMARY KEY, transponder INT REFERENCES transponder, service_id INT, name TEXT, other_name TEXT,
  genre INT, provider INT, service_type INT, source_type INT, pmt_pid INT, pcr_pid INT, video_tag INT, video_pid INT,
  video_ecm_pid INT, audio_tag INT, audio_pid INT, flag INT, user_order_key INT, UNIQUE(transponder, service_id));
CREATE TABLE entry(
  view INT, position INT, tag INT, favourite INT, major INT, minor INT, service INT REFERENCES service,
  PRIMARY KEY(view, position)) WITHOUT ROWID;
CREATE INDEX entry_by_number ON entry(view, major, position);
CREATE INDEX entry_of_service ON entry(service);
CREATE TABLE groups(kind INT, position INT, id INT, name TEXT, PRIMARY KEY(kind, position)) WITHOUT ROWID;
)";

namespace {

sqlite3 *open(const std::string &path) {
  sqlite3 *connection = nullptr;
  require(sqlite3_open(path.c_str(), &connection) == SQLITE_OK, "sqlite3_open");
  return connection;
}

sqlite3_stmt *prepare(sqlite3 *connection, const char *text) {
  sqlite3_stmt *prepared = nullptr;
  require(sqlite3_prepare_v3(connection, text, -1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr) == SQLITE_OK, text);
  return prepared;
}

}  // namespace

database::database(const std::string &path) : connection_(open(path)) {
  execute("PRAGMA synchronous = OFF; PRAGMA cache_size = -16000; PRAGMA temp_store = MEMORY;");
}

void database::execute(const char *statements) const {
  require(sqlite3_exec(connection(), statements, nullptr, nullptr, nullptr) == SQLITE_OK, statements);
}

std::int64_t database::number(const char *query) const {
  statement asked(*this, query);
  require(asked.next(), query);
  const std::int64_t answer = asked.number(0);
  require(!asked.next(), query);
  return answer;
}

statement::statement(const database &target, const char *text) : statement_(prepare(target.connection(), text)) {}

bool statement::next() {
  const int result = sqlite3_step(statement_.get());
  if (result == SQLITE_ROW) {
    return true;
  }
  require(result == SQLITE_DONE && sqlite3_reset(statement_.get()) == SQLITE_OK, "sqlite3_step");
  return false;
}

void statement::bind(int parameter, std::int64_t value) {
  require(sqlite3_bind_int64(statement_.get(), parameter, value) == SQLITE_OK, "sqlite3_bind_int64");
}

void statement::bind(int parameter, const char *value) {
  require(sqlite3_bind_text(statement_.get(), parameter, value, -1, SQLITE_STATIC) == SQLITE_OK, "sqlite3_bind_text");
}

void statement::finish() {
  while (next()) {
  }
}

void statement::copy_text(int column, char *field, std::size_t size) const {
  const auto bytes = static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column));
  if (bytes > 0) {
    std::memcpy(field, sqlite3_column_blob(statement_.get(), column), std::min(bytes, size));
  }
}

}  // namespace bench::sqlite
