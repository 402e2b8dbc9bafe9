/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The readers of the replies that carry one posting. */
#include <velkor/zox_eventinfo.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_events_parse.h>

#include "services/owned_records.h"
#include "services/reply_document.h"
#include "support/assertion.h"

namespace velkor {
namespace {

constexpr DocumentRule findpost_rule{.root = "Post",
                                     .reader = "zox_eventinfo_parse_findpost",
                                     .complaint = {.logged = true},
                                     .childless_logged = false};
constexpr DocumentRule details_rule{.root = "PostInfo", .reader = "zox_eventinfo_parse"};

void read_tracks(xmlDoc *doc, const xmlNode *node, ZoxEvent *event) noexcept {
  if (event == nullptr) {
    g_warning("zox_eventinfo_parse(): event == NULL\n");
    return;
  }
  zox_splitted_list_free(&event->mp3Tracks);
  event->mp3Tracks = zox_events_parse_mp3_tracks(doc, node->children);
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxEvent *zox_eventinfo_parse_findpost(const ZoxString *buffer) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(buffer);
  const ReplyDocument document(buffer, findpost_rule);
  // A posting without elements is a posting all the same.
  if (document.fault() == DocumentFault::empty || document.fault() == DocumentFault::wrong_root)
    return nullptr;
  ZoxEvent *event = zox_events_parse_event(document.get(), document.first_child());
  if (event != nullptr)
    zox_category_update(event);
  return event;
}

ZoxEvent *zox_eventinfo_parse(const ZoxString *text) {
  ZOX_ASSERT_AS(text, "tekst");
  const ReplyDocument document(text, details_rule);
  if (document.fault() != DocumentFault::none)
    return nullptr;
  OwnedEvent event;
  for (xmlNode *node : document.children()) {
    if (xml::is_named(node, "Post"))
      event.reset(zox_events_parse_event(document.get(), node->children));
    else if (xml::is_named(node, "MP3"))
      read_tracks(document.get(), node, event.get());
  }
  return event.release();
}

}  // extern "C"
