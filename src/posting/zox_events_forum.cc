/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The forum of a posting as a record; what talks to the server stands elsewhere. */
#include <velkor/zox_events_forum.h>

#include <algorithm>

#include "posting/event_record.h"
#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

ZoxReactie *copy_reaction(const ZoxReactie &source) noexcept {
  ZoxReactie *copy = zox_events_forum_reactie_new();
  *copy = source;
  for (const auto member : {&ZoxReactie::author, &ZoxReactie::body, &ZoxReactie::avatar})
    copy->*member = copy_string(source.*member);
  return copy;
}

}  // namespace

ZoxForum *copy_forum(const ZoxForum *source) noexcept {
  if (source == nullptr)
    return nullptr;
  ZoxForum *copy = zox_events_forum_new();
  copy->stamp = source->stamp;
  ListBuilder<ZoxReactie, zox_events_forum_reactie_free> reactions;
  for (const ZoxReactie *reaction : Items<const ZoxReactie>(source->reactions))
    reactions.append(copy_reaction(*reaction));
  copy->reactions = reactions.release();
  return copy;
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxForum *zox_events_forum_new(void) {
  return g_new0(ZoxForum, 1);
}

void zox_events_forum_free(ZoxForum *forum) {
  ZOX_ASSERT(forum);
  for (ZoxReactie *reactie : Items<ZoxReactie>(forum->reactions))
    zox_events_forum_reactie_free(reactie);
  g_slist_free(forum->reactions);
  g_free(forum);
}

ZoxReactie *zox_events_forum_reactie_new(void) {
  return g_new0(ZoxReactie, 1);
}

void zox_events_forum_reactie_free(ZoxReactie *reactie) {
  ZOX_ASSERT(reactie);
  for (const auto member : {&ZoxReactie::author, &ZoxReactie::body, &ZoxReactie::avatar})
    replace_string(reactie->*member, nullptr);
  g_free(reactie);
}

guint32 zox_events_forum_get_highest_length(const ZoxReactie *reactie) {
  ZOX_ASSERT(reactie);
  return static_cast<guint32>(
      std::max(view_of(reactie->author).size(), view_of(reactie->body).size()));
}

}  // extern "C"
