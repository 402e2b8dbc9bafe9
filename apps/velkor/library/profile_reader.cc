/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/profile_reader.h"

#include <memory>

#include <velkor/zox_codes.h>
#include <velkor/zox_profile.h>

#include "library/call.h"
#include "model/shown_text.h"

namespace velkor::app {
namespace {

using OwnedProfile = std::unique_ptr<ZoxProfile, ReleaseWith<zox_profile_free>>;

std::string line_of(const char *text) {
  return shown_line(text == nullptr ? "" : text);
}

Profile profile_of(const ZoxProfile &profile) {
  return {.name = line_of(profile.name),
          .stamp = profile.stamp,
          .posts = profile.posts,
          .spots = profile.spots,
          .kudos = profile.kudos,
          .kudos_given = profile.kudosGiven,
          .kudos_received = profile.kudosReceived,
          .rank = profile.rank,
          .info = shown_lines(profile.info == nullptr ? "" : profile.info),
          .site = line_of(profile.site),
          .email = line_of(profile.email),
          .messenger = line_of(profile.im),
          .provider = line_of(profile.isp),
          .news_server = line_of(profile.newsServer),
          .hobby = line_of(profile.hobby)};
}

}  // namespace

ProfileReply fetch_profile(const std::string &name) {
  ZoxProfile *place = nullptr;
  const CallResult result = call(zox_profile_get, name.c_str(), &place);
  const OwnedProfile profile(place);
  if (result.code == ZOX_RESULT_NO_PROFILE || (!result.failed() && !profile))
    return {.unknown = true};
  if (result.failed())
    return {.failure = result.message};
  return {.profile = profile_of(*profile)};
}

}  // namespace velkor::app
