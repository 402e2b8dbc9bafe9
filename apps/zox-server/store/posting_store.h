/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** All postings. A new or changed one waits until a dump tells of it. */
#ifndef ZOX_SERVER_STORE_POSTING_STORE_H
#define ZOX_SERVER_STORE_POSTING_STORE_H

#include <functional>
#include <optional>
#include <vector>

#include "zox-server/store/posting.h"
#include "zox-server/support/sqlite.h"

namespace velkor::server {

class PostingStore {
public:
  explicit PostingStore(Database &database);

  /** Adds a posting under a new id. @return the id */
  std::int64_t add(const Posting &posting);
  /** Replaces the posting of that id; with `announce` the next dump tells of it. */
  void replace(const Posting &posting, bool announce = true);
  [[nodiscard]] std::optional<Posting> find(std::int64_t id);
  /** The postings of a poster, the latest first. */
  [[nodiscard]] std::vector<Posting> by(const std::string &poster);
  [[nodiscard]] std::int64_t count_by(const std::string &poster);
  /** The kudos of all postings of a poster. */
  [[nodiscard]] std::int64_t kudos_of(const std::string &poster);
  /** Whether a posting of that title was made at or after `stamp`. */
  [[nodiscard]] bool has_title_since(const std::string &title, std::int64_t stamp);

  /** The ids of all postings that are neither deleted nor removed, ascending. */
  [[nodiscard]] std::vector<std::int64_t> live_ids();

  [[nodiscard]] std::int64_t count();
  [[nodiscard]] std::int64_t highest_id();
  [[nodiscard]] std::int64_t waiting();
  /** Calls `visit` for each waiting posting, the oldest change first. */
  void each_waiting(const std::function<void(const Posting &)> &visit);
  void all_told();

private:
  Database &database_;
  Statement insert_;
};

}  // namespace velkor::server

#endif
