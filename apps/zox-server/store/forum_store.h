/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The reactions under the postings. */
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
  /** Time of the last edit, 0 for none, negative once it is withdrawn. */
  std::int64_t edit = 0;
  /** The reaction that it answers, 0 for none. */
  std::int64_t reply = 0;
  /** Time of the last change of any kind; no two changes under a posting share one. */
  std::int64_t changed = 0;
};

class ForumStore {
public:
  explicit ForumStore(Database &database);

  /** Adds a reaction at `now` or a little later. @return its id */
  std::int64_t add(Reaction reaction, std::int64_t now);
  /** Adds a reaction of the past under a posting that has only older ones. */
  void add_old(const Reaction &reaction);
  /** @return whether there is such a reaction that is not withdrawn */
  bool edit(std::int64_t id, const std::string &body, std::int64_t now);
  bool withdraw(std::int64_t id, std::int64_t now);

  [[nodiscard]] std::optional<Reaction> find(std::int64_t id);
  /** The reactions that changed after `stamp`, in the order in which they were written. */
  [[nodiscard]] std::vector<Reaction> changed_after(std::int64_t posting, std::int64_t stamp);
  /** The time of the last change under the posting, 0 for none. */
  [[nodiscard]] std::int64_t stamp(std::int64_t posting);
  /** How many there are that are not withdrawn. */
  [[nodiscard]] std::int64_t count(std::int64_t posting);
  [[nodiscard]] std::int64_t count_by(const std::string &author);

private:
  bool change(std::int64_t id, const std::string &body, bool withdrawn, std::int64_t now);

  Database &database_;
  Statement insert_;
};

}  // namespace velkor::server

#endif
