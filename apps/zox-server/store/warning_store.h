/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What members reported to the moderators. */
#ifndef ZOX_SERVER_STORE_WARNING_STORE_H
#define ZOX_SERVER_STORE_WARNING_STORE_H

#include <optional>
#include <string>

#include "zox-server/support/sqlite.h"

namespace velkor::server {

class WarningStore {
public:
  explicit WarningStore(Database &database);

  /**
   * @param reaction 0 for a warning about the posting itself
   * @return the number of the warning; nothing when the member has warned of the same before
   */
  std::optional<std::int64_t> add(const std::string &member, std::int64_t posting,
                                  std::int64_t reaction, const std::string &reason);
  /** How many warnings there are about a posting and its reactions. */
  [[nodiscard]] std::int64_t count(std::int64_t posting);

private:
  Database &database_;
};

}  // namespace velkor::server

#endif
