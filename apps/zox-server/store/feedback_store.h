/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What members think of postings: kudos, and warnings to the moderators. */
#ifndef ZOX_SERVER_STORE_FEEDBACK_STORE_H
#define ZOX_SERVER_STORE_FEEDBACK_STORE_H

#include <cstdint>
#include <optional>
#include <string>

#include "zox-server/support/sqlite.h"

namespace velkor::server {

class KudosStore {
public:
  explicit KudosStore(Database &database);

  /** @return false when the member has already given kudos to that posting */
  bool give(const std::string &member, std::int64_t posting, std::int64_t value);
  /** The kudos that the member gave to the posting. */
  [[nodiscard]] std::int64_t given(const std::string &member, std::int64_t posting);
  /** The kudos that the member gave to all postings. */
  [[nodiscard]] std::int64_t given(const std::string &member);

private:
  Database &database_;
};

class WarningStore {
public:
  explicit WarningStore(Database &database);

  /**
   * @param reaction 0 for a warning about the posting itself
   * @return the number of the warning; nothing when the member has already reported the same
   */
  std::optional<std::int64_t> add(const std::string &member, std::int64_t posting,
                                  std::int64_t reaction, const std::string &reason);
  /** The number of warnings about a posting and its reactions. */
  [[nodiscard]] std::int64_t count(std::int64_t posting);

private:
  Database &database_;
};

}  // namespace velkor::server

#endif
