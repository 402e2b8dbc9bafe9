/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The reactions to postings. */
#ifndef ZOX_SERVER_STORE_FORUM_STORE_H
#define ZOX_SERVER_STORE_FORUM_STORE_H

#include <optional>
#include <string>
#include <vector>

#include "zox-server/support/sqlite.h"

namespace velkor::server {

struct Reaction {
  std::int64_t id = 0;
  std::int64_t posting = 0;
  std::string author;
  std::string body;
  std::int64_t stamp = 0;
  /** Time of the last edit, 0 for none, negative once the reaction is withdrawn. */
  std::int64_t edit = 0;
  /** The reaction that this one replies to, 0 for none. */
  std::int64_t reply = 0;
  /** Time of the last change of any kind, unique among the reactions to a posting. */
  std::int64_t changed = 0;
};

class ForumStore {
public:
  explicit ForumStore(Database &database);

  /** Adds a reaction made at `now`, or later to keep the time unique. @return its id */
  std::int64_t add(Reaction reaction, std::int64_t now);
  /** Adds a reaction with its own `stamp`, which must be later than those of its posting. */
  void add_old(const Reaction &reaction);
  /** @return false when there is no such reaction or it was withdrawn */
  bool edit(std::int64_t id, const std::string &body, std::int64_t now);
  bool withdraw(std::int64_t id, std::int64_t now);

  [[nodiscard]] std::optional<Reaction> find(std::int64_t id);
  /** The reactions that changed after `stamp`, ordered by id. */
  [[nodiscard]] std::vector<Reaction> changed_after(std::int64_t posting, std::int64_t stamp);
  /** The time of the last change to the reactions of a posting, 0 for none. */
  [[nodiscard]] std::int64_t stamp(std::int64_t posting);
  /** The number of reactions that are not withdrawn. */
  [[nodiscard]] std::int64_t count(std::int64_t posting);
  [[nodiscard]] std::int64_t count_by(const std::string &author);

private:
  bool change(std::int64_t id, const std::string &body, bool withdrawn, std::int64_t now);

  Database &database_;
  Statement insert_;
};

}  // namespace velkor::server

#endif
