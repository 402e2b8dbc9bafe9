/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/service.h"

#include <algorithm>

namespace velkor::server {
namespace {

constexpr std::int64_t application_id = 0x5A4F5853;  // "ZOXS"
constexpr std::int64_t layout_version = 1;

/** Rejects databases of other programs and of other versions of this one. */
Database open_database(const std::string &file) {
  Database database(file);
  if (database.number("SELECT count(*) FROM sqlite_schema") == 0) {
    database.execute(("PRAGMA application_id = " + std::to_string(application_id) +
                      "; PRAGMA user_version = " + std::to_string(layout_version))
                         .c_str());
  } else if (database.number("PRAGMA application_id") != application_id) {
    throw DatabaseError("it belongs to another program");
  } else if (database.number("PRAGMA user_version") != layout_version) {
    throw DatabaseError("it was created by another version of zox-server");
  }
  database.execute("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL");
  return database;
}

}  // namespace

Service::Service(const ServiceSettings &chosen)
    : settings(chosen), clock(chosen.pinned_time), database(open_database(chosen.database)),
      accounts(database), groups(database), postings(database),
      dumps(database, postings, chosen.postings_per_dump), forum(database), watchlists(database),
      mail(database), kudos(database), warnings(database), addresses(database), nonces(database) {}

std::int64_t Service::change_stamp() {
  return std::max(clock.now(), dumps.latest_stamp() + 1);
}

}  // namespace velkor::server
