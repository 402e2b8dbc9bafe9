/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/support/sqlite.h"

namespace velkor::server {
namespace {

int length_of(std::string_view text) {
  return static_cast<int>(text.size());
}

std::string bytes_of(const void *start, int length) {
  return start == nullptr
             ? std::string()
             : std::string(static_cast<const char *>(start), static_cast<std::size_t>(length));
}

}  // namespace

Statement::Statement(sqlite3 *database, std::string_view sql) {
  sqlite3_stmt *statement = nullptr;
  const int result = sqlite3_prepare_v2(database, sql.data(), length_of(sql), &statement, nullptr);
  handle_.reset(statement);
  if (result != SQLITE_OK)
    throw DatabaseError(sqlite3_errmsg(database));
}

Statement &Statement::append(std::string_view text) {
  // A null pointer would bind NULL instead of an empty text.
  const char *start = text.data() == nullptr ? "" : text.data();
  check(sqlite3_bind_text(handle_.get(), ++bound_, start, length_of(text), SQLITE_TRANSIENT));
  return *this;
}

Statement &Statement::append(Blob blob) {
  check(sqlite3_bind_blob(handle_.get(), ++bound_, blob.bytes.data(), length_of(blob.bytes),
                          SQLITE_TRANSIENT));
  return *this;
}

Statement &Statement::append_integer(std::int64_t number) {
  check(sqlite3_bind_int64(handle_.get(), ++bound_, number));
  return *this;
}

void Statement::reset() {
  sqlite3_reset(handle_.get());
  bound_ = 0;
}

bool Statement::step() {
  const int result = sqlite3_step(handle_.get());
  if (result != SQLITE_ROW && result != SQLITE_DONE)
    check(result);
  return result == SQLITE_ROW;
}

void Statement::run() {
  while (step()) {
  }
  sqlite3_reset(handle_.get());
}

std::int64_t Statement::integer(int column) const {
  return sqlite3_column_int64(handle_.get(), column);
}

std::string Statement::text(int column) const {
  const unsigned char *start = sqlite3_column_text(handle_.get(), column);
  return bytes_of(start, sqlite3_column_bytes(handle_.get(), column));
}

std::string Statement::blob(int column) const {
  const void *start = sqlite3_column_blob(handle_.get(), column);
  return bytes_of(start, sqlite3_column_bytes(handle_.get(), column));
}

void Statement::check(int result) const {
  if (result != SQLITE_OK)
    throw DatabaseError(sqlite3_errmsg(sqlite3_db_handle(handle_.get())));
}

Database::Database(const std::string &file) {
  sqlite3 *database = nullptr;
  const int result =
      sqlite3_open_v2(file.c_str(), &database,
                      SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
  handle_.reset(database);
  if (result != SQLITE_OK)
    throw DatabaseError(database == nullptr ? "out of memory" : sqlite3_errmsg(database));
  sqlite3_busy_timeout(database, 5000);
}

void Database::execute(const char *sql) {
  if (sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK)
    throw DatabaseError(sqlite3_errmsg(handle_.get()));
}

Transaction::Transaction(Database &database) : database_(database) {
  database_.execute("SAVEPOINT change");
}

Transaction::~Transaction() {
  if (committed_)
    return;
  try {
    database_.execute("ROLLBACK TO change; RELEASE change");
  } catch (const DatabaseError &) {
    // SQLite has already rolled back.
  }
}

void Transaction::commit() {
  database_.execute("RELEASE change");
  committed_ = true;
}

}  // namespace velkor::server
