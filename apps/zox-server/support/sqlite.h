/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** RAII wrappers of SQLite; every failure throws DatabaseError. */
#ifndef ZOX_SERVER_SUPPORT_SQLITE_H
#define ZOX_SERVER_SUPPORT_SQLITE_H

#include <concepts>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include <sqlite3.h>

#include "support/owned.h"

namespace velkor::server {

class DatabaseError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/** Bytes that are stored as a blob rather than as text. */
struct Blob {
  std::string_view bytes;
};

/** A prepared statement; placeholders are bound in order. */
class Statement {
public:
  Statement(sqlite3 *database, std::string_view sql);

  /** Resets the statement and binds all placeholders. */
  template <typename... Values>
  Statement &bind(const Values &...values) {
    reset();
    (append(values), ...);
    return *this;
  }
  /** Binds the next placeholder, for use in a loop. */
  Statement &append(std::string_view text);
  Statement &append(Blob blob);
  template <std::integral Number>
  Statement &append(Number number) {
    return append_integer(static_cast<std::int64_t>(number));
  }
  void reset();

  /** @return whether there is a row to read */
  bool step();
  /** Executes the statement to its end. */
  void run();

  [[nodiscard]] std::int64_t integer(int column) const;
  [[nodiscard]] std::string text(int column) const;
  [[nodiscard]] std::string blob(int column) const;

private:
  Statement &append_integer(std::int64_t number);
  void check(int result) const;

  std::unique_ptr<sqlite3_stmt, ReleaseWith<sqlite3_finalize>> handle_;
  int bound_ = 0;
};

/** A connection to a database, for one thread only. */
class Database {
public:
  /** Opens `file`, creating it when needed; ":memory:" keeps everything in memory. */
  explicit Database(const std::string &file);

  [[nodiscard]] Statement prepare(std::string_view sql) { return {handle_.get(), sql}; }
  /** Executes statements without placeholders. */
  void execute(const char *sql);

  template <typename... Values>
  void run(std::string_view sql, const Values &...values) {
    prepare(sql).bind(values...).run();
  }
  /** The first column of the first row, 0 without a row. */
  template <typename... Values>
  [[nodiscard]] std::int64_t number(std::string_view sql, const Values &...values) {
    Statement statement = prepare(sql);
    return statement.bind(values...).step() ? statement.integer(0) : 0;
  }
  [[nodiscard]] std::int64_t last_id() const { return sqlite3_last_insert_rowid(handle_.get()); }
  /** How many rows the last statement changed. */
  [[nodiscard]] std::int64_t changes() const { return sqlite3_changes64(handle_.get()); }

private:
  std::unique_ptr<sqlite3, ReleaseWith<sqlite3_close_v2>> handle_;
};

/** Rolls back in its destructor unless commit() was called. May be nested. */
class Transaction {
public:
  explicit Transaction(Database &database);
  ~Transaction();
  Transaction(const Transaction &) = delete;
  Transaction &operator=(const Transaction &) = delete;
  void commit();

private:
  Database &database_;
  bool committed_ = false;
};

}  // namespace velkor::server

#endif
