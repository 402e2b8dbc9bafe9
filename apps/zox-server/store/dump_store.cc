/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/dump_store.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include <zlib.h>

#include "zox-server/support/gzip.h"

namespace velkor::server {
namespace {

std::string events_document(const std::vector<Posting> &postings) {
  XmlWriter xml("Events");
  for (const Posting &posting : postings) {
    xml.open_event(1);
    write_posting(xml, posting, false);
    xml.close();
  }
  return xml.finish();
}

/** Number, time and checksum, so that a name always means the same content. */
std::string name_of(std::int64_t number, std::int64_t stamp, std::string_view content) {
  const uLong sum = crc32_z(0, reinterpret_cast<const Bytef *>(content.data()), content.size());
  std::array<char, 64> name{};
  std::snprintf(name.data(), name.size(), "spots-%06lld-%lld-%08lx", static_cast<long long>(number),
                static_cast<long long>(stamp), sum);
  return name.data();
}

std::int64_t latest_change(const std::vector<Posting> &postings) {
  return std::ranges::max_element(postings, {}, &Posting::updated)->updated;
}

}  // namespace

DumpStore::DumpStore(Database &database, PostingStore &postings, std::int64_t postings_per_dump)
    : database_(database), postings_(postings), postings_per_dump_(postings_per_dump) {
  database_.execute("CREATE TABLE IF NOT EXISTS dump (number INTEGER PRIMARY KEY,"
                    " name TEXT NOT NULL UNIQUE, stamp INTEGER NOT NULL UNIQUE,"
                    " content BLOB NOT NULL)");
}

void DumpStore::publish() {
  Transaction transaction(database_);
  std::vector<Posting> batch;
  postings_.each_waiting([&](const Posting &posting) {
    batch.push_back(posting);
    if (std::ssize(batch) < postings_per_dump_)
      return;
    add(batch);
    batch.clear();
  });
  if (!batch.empty())
    add(batch);
  postings_.mark_published();
  transaction.commit();
}

void DumpStore::add(const std::vector<Posting> &postings) {
  const std::int64_t stamp = std::max(latest_change(postings), latest_stamp() + 1);
  const std::string document = events_document(postings);
  database_.run("INSERT INTO dump (name, stamp, content) VALUES (?, ?, ?)",
                name_of(count() + 1, stamp, document), stamp, Blob{gzip(document)});
}

std::vector<Dump> DumpStore::newer_than(std::int64_t stamp, std::int64_t limit) {
  std::vector<Dump> dumps;
  Statement statement =
      database_.prepare("SELECT name, stamp FROM dump WHERE stamp > ? ORDER BY stamp LIMIT ?");
  for (statement.bind(stamp, limit); statement.step();)
    dumps.push_back({statement.text(0), statement.integer(1)});
  return dumps;
}

std::int64_t DumpStore::latest_stamp() {
  return database_.number("SELECT max(stamp) FROM dump");
}

std::optional<std::string> DumpStore::content(const std::string &name) {
  Statement statement = database_.prepare("SELECT content FROM dump WHERE name = ?");
  if (!statement.bind(name).step())
    return std::nullopt;
  return statement.blob(0);
}

std::int64_t DumpStore::count() {
  return database_.number("SELECT count(*) FROM dump");
}

}  // namespace velkor::server
