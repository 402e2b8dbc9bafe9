/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The service behind all endpoints: its settings, its time and its stores. */
#ifndef ZOX_SERVER_SERVICE_H
#define ZOX_SERVER_SERVICE_H

#include <cstdint>
#include <optional>
#include <string>

#include "zox-server/http/auth_rules.h"
#include "zox-server/store/account_store.h"
#include "zox-server/store/address_store.h"
#include "zox-server/store/dump_store.h"
#include "zox-server/store/forum_store.h"
#include "zox-server/store/group_store.h"
#include "zox-server/store/kudos_store.h"
#include "zox-server/store/mail_store.h"
#include "zox-server/store/posting_store.h"
#include "zox-server/store/warning_store.h"
#include "zox-server/store/watchlist_store.h"
#include "zox-server/support/clock.h"
#include "zox-server/support/sqlite.h"

namespace velkor::server {

struct ServiceSettings {
  std::string database = ":memory:";
  std::optional<std::int64_t> pinned_time;
  const AuthRule *auth_rule = auth_rules().data();
  std::int64_t postings_per_dump = 1000;
  std::int64_t dumps_per_reply = 20;
  /** For how long nobody can sign up from an address where a member was; 0 for no time at all. */
  std::int64_t signup_pause_hours = 48;
};

struct Service {
  /** Opens the database. @throws DatabaseError when it is not one of this program's */
  explicit Service(const ServiceSettings &settings);

  /** The time of a change that clients who are up to date have not seen yet. */
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
};

}  // namespace velkor::server

#endif
