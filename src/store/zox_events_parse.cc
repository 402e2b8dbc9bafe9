/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Taking over the postings of a whole document. */
#include <velkor/zox_events_parse.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>

#include "core/app_core.h"
#include "core/xml_diagnosis.h"
#include "filter/bad_words.h"
#include "posting/packed_event.h"
#include "store/event_reader.h"
#include "store/event_table.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

/** Where postings go: into a table, or to the front of a list. */
struct Target {
  GHashTable *table;
  GSList **list;

  void take(OwnedEventObject object) const noexcept {
    if (table != nullptr)
      put_object(table, std::move(object));
    else
      *list = g_slist_prepend(*list, object.release());
  }
};

/** Counts the new postings of one document in the category list. */
class CategoryCount {
public:
  void count(const ZoxEvent &event) noexcept {
    if (event.stamp < core->config->prevCheck)
      return;
    if (!std::exchange(begun_, true))
      zox_categories_reset_counters();
    zox_category_update(&event);
  }

private:
  bool begun_ = false;
};

bool is_deleted(const ZoxEvent &event) noexcept {
  return event.status == ZOX_STATUS_DELETED || event.status == ZOX_STATUS_REMOVED;
}

/** Tells what was odd about a posting; false when it cannot be used for that. */
bool tell(const EventRemark &remark, const ZoxEvent &event) noexcept {
  if (remark.oddity == ListOddity::AlreadyFilled) {
    g_warning("WARNING! event->%s was already filled!", remark.list);
    return true;
  }
  ZOX_ASSERT_IN(zox_events_parse_event, tolerant(), "tmp");
  g_warning("zox_events_parse(): posting %i: no text in the list of %s, passed over\n",
            event.postId, remark.list);
  return false;
}

/** Hands the postings of a usable document on, in its order. */
void take_over(EventReader &reader, const Target &target) noexcept {
  CategoryCount counters;
  auto remark = reader.remarks.cbegin();
  for (std::size_t number = 0; number < reader.postings.size(); ++number) {
    PackedEvent event = std::move(reader.postings[number]);
    bool usable = true;
    for (; remark != reader.remarks.cend() && remark->posting == number; ++remark)
      usable = tell(*remark, *event) && usable;
    if (!usable)
      continue;
    counters.count(*event);
    if (is_deleted(*event) || !has_bad_word(*event))
      target.take(new_object(std::move(event)));
  }
}

/** Reads `document`; on failure `message` tells why, if anything does. */
bool read_document(EventReader &reader, std::string_view document, OwnedText &message) noexcept {
  thread_local bool handler_installed = false;
  begin_diagnosis(handler_installed);
  if (document.size() > INT_MAX) {
    message.reset(g_strdup("zox_events_parse(): document of more than 2147483647 bytes"));
    return false;
  }
  switch (reader.read(document)) {
  case EventReader::Outcome::NotWellFormed:
    message = take_diagnosis();
    return false;
  case EventReader::Outcome::WrongRoot:
    message.reset(g_strdup("zox_events_parse(): document of the wrong type, root node != Events"));
    return false;
  case EventReader::Outcome::NoChildren:
    message.reset(g_strdup("zox_events_parse(): no children of root-node!"));
    return false;
  case EventReader::Outcome::Read:
    break;
  }
  return true;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_events_parse(const ZoxString *buffer, GHashTable **retTree, GSList **retList,
                              char **retError, gint32 quiet) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(buffer);
  if (retTree == nullptr && retList == nullptr)
    g_error("ret_tree == NULL && ret_list == NULL");
  if (retTree != nullptr && retList != nullptr)
    g_error("ret_tree != NULL && ret_list != NULL");
  if (retTree != nullptr)
    ZOX_ASSERT_AS(*retTree, "*ret_tree");

  OwnedText message;
  EventReader reader;
  const bool usable = read_document(reader, view_of(buffer), message);
  hand_over(retError, std::move(message));
  if (usable) {
    take_over(reader, {retTree == nullptr ? nullptr : *retTree, retList});
    return ZOX_RESULT_SUCCESS;
  }
  if (quiet == 0)
    std::printf("zox_events_parse(): buffer = \n%s\n", buffer->str);
  return ZOX_RESULT_NOT_PARSED;
}

}  // extern "C"
