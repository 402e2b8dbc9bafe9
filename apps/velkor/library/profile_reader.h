/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Asks the server for the profile of a user. Threads: any. */
#ifndef VELKOR_APP_LIBRARY_PROFILE_READER_H
#define VELKOR_APP_LIBRARY_PROFILE_READER_H

#include <string>

#include "model/profile.h"

namespace velkor::app {

struct ProfileReply {
  Profile profile{};
  std::string failure{};  // why there is none; empty on success
  bool unknown = false;   // the reason for a failure without a sentence: there is no such user
};

ProfileReply fetch_profile(const std::string &name);

}  // namespace velkor::app

#endif
