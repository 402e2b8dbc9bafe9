/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/own_spots.h"

#include <utility>

#include <velkor/zox_myzox.h>
#include <velkor/zox_string.h>

#include "library/ask_server.h"
#include "library/category_words.h"
#include "model/shown_text.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor::app {
namespace {

OwnSpot own_spot_of(const ZoxMyzoxPost &post) {
  return {.id = post.postId,
          .title = shown_line(view_of(post.title)),
          .status = zox_string_status(static_cast<gint32>(post.status)),
          .category = category_words(static_cast<std::int32_t>(post.cat), post.sCat),
          .stamp = post.stamp,
          .kudos = post.kudos,
          .reactions = post.forum,
          .can_edit = post.canEdit != 0};
}

OwnSpotsReply reply_of(const ZoxRequest &request) {
  if (const CallResult result = result_of(request); result.failed())
    return {.failure = result.message};
  return {.spots = own_spots_of(zox_request_own_list(&request))};
}

}  // namespace

std::vector<OwnSpot> own_spots_of(const GSList *overview) {
  std::vector<OwnSpot> spots;
  for (const ZoxMyzoxPost *post : Items<const ZoxMyzoxPost>(overview))
    spots.push_back(own_spot_of(*post));
  return newest_first(std::move(spots));
}

SharedCancellation fetch_own_spots(Session &session, OwnSpotsFunction done) {
  return ask_server(session, zox_request_own_postings, reply_of, std::move(done));
}

SharedCancellation refresh_own_spot(Session &session, std::int32_t id, FailureFunction done) {
  const auto start = [id](const ZoxRequestOptions *options) {
    return zox_request_own_refresh(id, options);
  };
  const auto answer = [](const ZoxRequest &request) { return result_of(request).message; };
  return ask_server(session, start, answer, std::move(done));
}

}  // namespace velkor::app
