/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "events/forum_copy.h"

#include <velkor/zox_events_forum.h>

#include "support/owned.h"
#include "support/slist.h"

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
