/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The dumps: compressed Events documents with a limited number of postings each. A dump never
 * changes; later changes go into the next one.
 */
#ifndef ZOX_SERVER_STORE_DUMP_STORE_H
#define ZOX_SERVER_STORE_DUMP_STORE_H

#include <optional>
#include <string>
#include <vector>

#include "zox-server/store/posting_store.h"
#include "zox-server/support/sqlite.h"

namespace velkor::server {

struct Dump {
  std::string name;
  /** Later than the stamp of every earlier dump, and not before any change in this one. */
  std::int64_t stamp;
};

class DumpStore {
public:
  DumpStore(Database &database, PostingStore &postings, std::int64_t postings_per_dump);

  /** Publishes the waiting postings in new dumps. */
  void publish();
  /** At most `limit` dumps newer than `stamp`, the oldest first. */
  [[nodiscard]] std::vector<Dump> newer_than(std::int64_t stamp, std::int64_t limit);
  /** The stamp of the latest dump, 0 when there is none. */
  [[nodiscard]] std::int64_t latest_stamp();
  /** The compressed content; nothing when no dump has that name. */
  [[nodiscard]] std::optional<std::string> content(const std::string &name);
  [[nodiscard]] std::int64_t count();

private:
  void add(const std::vector<Posting> &postings);

  Database &database_;
  PostingStore &postings_;
  std::int64_t postings_per_dump_;
};

}  // namespace velkor::server

#endif
