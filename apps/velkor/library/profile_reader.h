/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Asks the server for the profile of a user. Threads: the main one. */
#ifndef VELKOR_APP_LIBRARY_PROFILE_READER_H
#define VELKOR_APP_LIBRARY_PROFILE_READER_H

#include <functional>
#include <string>

#include "library/session.h"
#include "model/profile.h"

namespace velkor::app {

struct ProfileReply {
  Profile profile{};
  std::string failure{};  // why there is none; empty on success
  bool unknown = false;   // the reason for a failure without a sentence: there is no such user
};

using ProfileFunction = std::function<void(const ProfileReply &)>;

SharedCancellation fetch_profile(Session &session, const std::string &name, ProfileFunction done);

}  // namespace velkor::app

#endif
