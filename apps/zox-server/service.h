/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The service behind all endpoints: its settings, its clock and its stores. */
#ifndef ZOX_SERVER_SERVICE_H
#define ZOX_SERVER_SERVICE_H

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

#include "zox-server/http/auth_rules.h"
#include "zox-server/store/account_store.h"
#include "zox-server/store/dump_store.h"
#include "zox-server/store/feedback_store.h"
#include "zox-server/store/forum_store.h"
#include "zox-server/store/member_store.h"
#include "zox-server/store/nonce_store.h"
#include "zox-server/store/posting_store.h"
#include "zox-server/support/sqlite.h"

namespace velkor::server {

struct ServiceSettings {
  std::string database = ":memory:";
  std::optional<std::int64_t> pinned_time;
  const AuthRule *auth_rule = auth_rules().data();
  std::int64_t postings_per_dump = 1000;
  std::int64_t dumps_per_reply = 20;
  /** How long an address from which a member came cannot sign up another; 0 for no pause. */
  std::int64_t signup_pause_hours = 48;
};

/** The time of the service: that of the system, or pinned to a second so that tests control it. */
class Clock {
public:
  /** @param pinned the second since 1970 at which the clock stands still */
  explicit Clock(std::optional<std::int64_t> pinned) : pinned_(pinned) {}

  [[nodiscard]] std::int64_t now() const {
    return pinned_.value_or(std::int64_t{std::time(nullptr)}) + offset_;
  }
  void advance(std::int64_t seconds) { offset_ += seconds; }

private:
  std::optional<std::int64_t> pinned_;
  std::int64_t offset_ = 0;
};

struct Service {
  /** Opens the database. @throws DatabaseError when it was not created by this program */
  explicit Service(const ServiceSettings &chosen);

  /** A time for a change that even up-to-date clients have not seen yet. */
  [[nodiscard]] std::int64_t change_stamp();

  ServiceSettings settings;
  Clock clock;
  Database database;
  AccountStore accounts;
  GroupStore groups;
  PostingStore postings;
  DumpStore dumps;
  ForumStore forum;
  WatchlistStore watchlists;
  MailStore mail;
  KudosStore kudos;
  WarningStore warnings;
  AddressStore addresses;
  NonceStore nonces;
};

}  // namespace velkor::server

#endif
