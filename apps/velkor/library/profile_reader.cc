/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/profile_reader.h"

#include <utility>

#include <velkor/zox_codes.h>
#include <velkor/zox_profile.h>

#include "library/ask_server.h"
#include "model/shown_text.h"

namespace velkor::app {
namespace {

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

ProfileReply reply_of(const ZoxRequest &request) {
  if (zox_request_code(&request) == ZOX_RESULT_NO_PROFILE)
    return {.unknown = true};
  if (const CallResult result = result_of(request); result.failed())
    return {.failure = result.message};
  const ZoxProfile *profile = zox_request_user(&request);
  return profile == nullptr ? ProfileReply{.unknown = true}
                            : ProfileReply{.profile = profile_of(*profile)};
}

}  // namespace

SharedCancellation fetch_profile(Session &session, const std::string &name, ProfileFunction done) {
  const auto start = [name](const ZoxRequestOptions *options) {
    return zox_request_profile(name.c_str(), options);
  };
  return ask_server(session, start, reply_of, std::move(done));
}

}  // namespace velkor::app
