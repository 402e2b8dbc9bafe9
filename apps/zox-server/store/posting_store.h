/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Postings and newsgroups. A new or changed posting waits to be published in a dump. */
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

  /** Adds a posting with a new id. @return the id */
  std::int64_t add(const Posting &posting);
  /** Replaces the posting with that id; with `announce` the next dump includes it. */
  void replace(const Posting &posting, bool announce = true);
  [[nodiscard]] std::optional<Posting> find(std::int64_t id);
  /** The postings by a poster, the latest first. */
  [[nodiscard]] std::vector<Posting> by(const std::string &poster);
  [[nodiscard]] std::int64_t count_by(const std::string &poster);
  /** The total kudos of all postings by a poster. */
  [[nodiscard]] std::int64_t kudos_of(const std::string &poster);
  /** Whether a posting with that title was made at or after `stamp`. */
  [[nodiscard]] bool has_title_since(const std::string &title, std::int64_t stamp);

  /** The ids of all postings that are neither deleted nor removed, in ascending order. */
  [[nodiscard]] std::vector<std::int64_t> live_ids();

  [[nodiscard]] std::int64_t count();
  [[nodiscard]] std::int64_t highest_id();
  [[nodiscard]] std::int64_t waiting();
  /** Calls `visit` for each waiting posting, the oldest change first. */
  void each_waiting(const std::function<void(const Posting &)> &visit);
  /** Ends the waiting of all postings. */
  void mark_published();

private:
  Database &database_;
  Statement insert_;
};

/** A newsgroup; postings refer to it by its number. */
struct Group {
  std::int64_t id;
  std::string name;
};

class GroupStore {
public:
  explicit GroupStore(Database &database);

  /** Adds a newsgroup, known since `stamp`, unless it exists. @return its number */
  std::int64_t add(const std::string &name, std::int64_t stamp);
  /** The newsgroups that became known after `stamp`, ordered by number. */
  [[nodiscard]] std::vector<Group> newer_than(std::int64_t stamp);
  [[nodiscard]] std::int64_t count();

private:
  Database &database_;
};

}  // namespace velkor::server

#endif
