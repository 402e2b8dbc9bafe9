/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The kudos that members gave to postings. */
#ifndef ZOX_SERVER_STORE_KUDOS_STORE_H
#define ZOX_SERVER_STORE_KUDOS_STORE_H

#include <string>

#include "zox-server/support/sqlite.h"

namespace velkor::server {

class KudosStore {
public:
  explicit KudosStore(Database &database);

  /** @return whether this is the first time that the member gives to that posting */
  bool give(const std::string &member, std::int64_t posting, std::int64_t value);
  /** What the member gave to the posting. */
  [[nodiscard]] std::int64_t given(const std::string &member, std::int64_t posting);
  /** What the member gave to all postings together. */
  [[nodiscard]] std::int64_t given(const std::string &member);

private:
  Database &database_;
};

}  // namespace velkor::server

#endif
