// The list as a database would hold it: networks, transponders, services and view entries in tables of their own, an
// entry's service by its key, the indices that lookups need. And the little of SQLite that is used: an open database
// and its statements.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>

namespace bench::sqlite {

extern const char schema[];

struct closing {
  void operator()(sqlite3 *connection) const { sqlite3_close_v2(connection); }
  void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};

class database {
 public:
  // Opens or makes a file; a write is done when the system has it, as the library's is without its `sync`.
  explicit database(const std::string &path);
  void execute(const char *statements) const;
  [[nodiscard]] sqlite3 *connection() const { return connection_.get(); }
  // The number that a query gives.
  [[nodiscard]] std::int64_t number(const char *query) const;

 private:
  std::unique_ptr<sqlite3, closing> connection_;
};

// A prepared statement. Parameters and columns are taken one after another; a text lives until the statement has run.
class statement {
 public:
  statement(const database &target, const char *text);
  template <class... Values>
  void run(Values... values) {
    start(values...);
    finish();
  }
  template <class... Values>
  void start(Values... values) {
    int parameter = 0;
    (bind(++parameter, values), ...);
  }
  // False when there is no further row; the statement can be started again then.
  bool next();
  [[nodiscard]] std::int64_t number(int column) const { return sqlite3_column_int64(statement_.get(), column); }
  template <class Value>
  void take(int column, Value &value) const {
    value = static_cast<Value>(number(column));
  }
  // Copies a text into a field that is zero.
  template <std::size_t Size>
  void take_text(int column, char (&field)[Size]) const {
    copy_text(column, field, Size);
  }

 private:
  void bind(int parameter, std::int64_t value);
  void bind(int parameter, const char *value);
  void finish();
  void copy_text(int column, char *field, std::size_t size) const;

  std::unique_ptr<sqlite3_stmt, closing> statement_;
};

}  // namespace bench::sqlite
