/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/posting_store.h"

namespace velkor::server {
namespace {

using Number = std::int64_t Posting::*;
using Text = std::string Posting::*;

/** All fields but the first, which is the key. */
std::span<const PostingField> plain_fields() {
  return posting_fields().subspan(1);
}

std::string definition() {
  std::string sql = "CREATE TABLE IF NOT EXISTS posting (\"PostID\" INTEGER PRIMARY KEY";
  for (const PostingField &field : plain_fields()) {
    const bool is_text = std::holds_alternative<Text>(field.member);
    sql += std::string(", \"") + field.name + (is_text ? "\" TEXT" : "\" INTEGER") + " NOT NULL";
  }
  return sql + ", waiting INTEGER NOT NULL);"
               "CREATE INDEX IF NOT EXISTS posting_waiting ON posting (\"Updated\", \"PostID\")"
               " WHERE waiting = 1;"
               "CREATE INDEX IF NOT EXISTS posting_poster ON posting (\"Poster\");"
               "CREATE INDEX IF NOT EXISTS posting_title ON posting (\"Title\")";
}

std::string column_list() {
  std::string columns = "\"PostID\"";
  for (const PostingField &field : plain_fields())
    columns += std::string(", \"") + field.name + "\"";
  return columns;
}

std::string insertion() {
  std::string sql = "INSERT INTO posting (" + column_list() + ", waiting) VALUES (NULL";
  for (std::size_t count = plain_fields().size(); count > 0; --count)
    sql += ", ?";
  return sql + ", 1)";
}

std::string replacement() {
  std::string sql = "UPDATE posting SET ";
  for (const PostingField &field : plain_fields())
    sql += std::string("\"") + field.name + "\" = ?, ";
  return sql + "waiting = max(waiting, ?) WHERE \"PostID\" = ?";
}

std::string selection(std::string_view condition) {
  return "SELECT " + column_list() + " FROM posting " + std::string(condition);
}

void bind_fields(Statement &statement, const Posting &posting) {
  statement.reset();
  for (const PostingField &field : plain_fields()) {
    if (const Text *text = std::get_if<Text>(&field.member))
      statement.append(posting.**text);
    else
      statement.append(posting.*std::get<Number>(field.member));
  }
}

Posting read_posting(const Statement &row) {
  Posting posting;
  int column = 0;
  for (const PostingField &field : posting_fields()) {
    if (const Text *text = std::get_if<Text>(&field.member))
      posting.**text = row.text(column);
    else
      posting.*std::get<Number>(field.member) = row.integer(column);
    ++column;
  }
  return posting;
}

/** Creates the table, which must exist before statements on it are prepared. */
Database &with_table(Database &database) {
  database.execute(definition().c_str());
  return database;
}

}  // namespace

PostingStore::PostingStore(Database &database)
    : database_(with_table(database)), insert_(database.prepare(insertion())) {}

std::int64_t PostingStore::add(const Posting &posting) {
  bind_fields(insert_, posting);
  insert_.run();
  return database_.last_id();
}

void PostingStore::replace(const Posting &posting, bool announce) {
  Statement statement = database_.prepare(replacement());
  bind_fields(statement, posting);
  statement.append(announce).append(posting.id).run();
}

std::optional<Posting> PostingStore::find(std::int64_t id) {
  Statement statement = database_.prepare(selection(R"(WHERE "PostID" = ?)"));
  if (!statement.bind(id).step())
    return std::nullopt;
  return read_posting(statement);
}

std::vector<Posting> PostingStore::by(const std::string &poster) {
  std::vector<Posting> postings;
  Statement statement =
      database_.prepare(selection(R"(WHERE "Poster" = ? ORDER BY "Stamp" DESC, "PostID" DESC)"));
  for (statement.bind(poster); statement.step();)
    postings.push_back(read_posting(statement));
  return postings;
}

std::int64_t PostingStore::count_by(const std::string &poster) {
  return database_.number(R"(SELECT count(*) FROM posting WHERE "Poster" = ?)", poster);
}

std::int64_t PostingStore::kudos_of(const std::string &poster) {
  return database_.number(R"(SELECT total("Kudos") FROM posting WHERE "Poster" = ?)", poster);
}

bool PostingStore::has_title_since(const std::string &title, std::int64_t stamp) {
  return database_.number(
             R"(SELECT EXISTS (SELECT 1 FROM posting WHERE "Title" = ? AND "Stamp" >= ?))", title,
             stamp) != 0;
}

std::vector<std::int64_t> PostingStore::live_ids() {
  std::vector<std::int64_t> ids;
  Statement statement =
      database_.prepare(R"(SELECT "PostID" FROM posting WHERE "Status" > ? ORDER BY "PostID")");
  for (statement.bind(std::int64_t{state_deleted}); statement.step();)
    ids.push_back(statement.integer(0));
  return ids;
}

std::int64_t PostingStore::count() {
  return database_.number("SELECT count(*) FROM posting");
}

std::int64_t PostingStore::highest_id() {
  return database_.number(R"(SELECT max("PostID") FROM posting)");
}

std::int64_t PostingStore::waiting() {
  return database_.number("SELECT count(*) FROM posting WHERE waiting = 1");
}

void PostingStore::each_waiting(const std::function<void(const Posting &)> &visit) {
  Statement statement =
      database_.prepare(selection(R"(WHERE waiting = 1 ORDER BY "Updated", "PostID")"));
  while (statement.step())
    visit(read_posting(statement));
}

void PostingStore::mark_published() {
  database_.execute("UPDATE posting SET waiting = 0 WHERE waiting = 1");
}

GroupStore::GroupStore(Database &database) : database_(database) {
  database_.execute("CREATE TABLE IF NOT EXISTS newsgroup (id INTEGER PRIMARY KEY,"
                    " name TEXT NOT NULL UNIQUE, stamp INTEGER NOT NULL)");
}

std::int64_t GroupStore::add(const std::string &name, std::int64_t stamp) {
  database_.run("INSERT OR IGNORE INTO newsgroup (name, stamp) VALUES (?, ?)", name, stamp);
  return database_.number("SELECT id FROM newsgroup WHERE name = ?", name);
}

std::vector<Group> GroupStore::newer_than(std::int64_t stamp) {
  std::vector<Group> groups;
  Statement statement =
      database_.prepare("SELECT id, name FROM newsgroup WHERE stamp > ? ORDER BY id");
  for (statement.bind(stamp); statement.step();)
    groups.push_back({statement.integer(0), statement.text(1)});
  return groups;
}

std::int64_t GroupStore::count() {
  return database_.number("SELECT count(*) FROM newsgroup");
}

}  // namespace velkor::server
