/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reading a whole document of postings. */
#include <velkor/zox_events_parse.h>

#include <cstddef>
#include <cstdio>
#include <utility>
#include <vector>

#include <velkor/zox_app_core.h>

#include "core/job.h"
#include "core/xml_diagnosis.h"
#include "posting/packed_event.h"
#include "store/event_intake.h"
#include "store/event_reader.h"
#include "support/assertion.h"
#include "support/text.h"

namespace velkor {
namespace {

/** A dump holds some thousands: a server that sends more than this is broken or hostile. */
constexpr std::size_t max_postings_of_dump = 1'000'000;

/** The objects in which the list holds the postings. */
std::vector<OwnedEventObject> objects_of(std::vector<PackedEvent> events) noexcept {
  std::vector<OwnedEventObject> objects;
  objects.reserve(events.size());
  for (PackedEvent &event : events)
    objects.push_back(new_object(std::move(event)));
  return objects;
}

/** Reads `document`; on failure `message` tells why, if anything does. */
bool read_document(EventReader &reader, std::string_view document, OwnedText &message) noexcept {
  thread_local bool handler_installed = false;
  begin_diagnosis(handler_installed);
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
  if (retList != nullptr) {
    reader.limit_postings(max_postings_of_dump);
    reader.stop_with_job();
  }
  const bool usable = read_document(reader, view_of(buffer), message);
  hand_over(retError, std::move(message));
  if (usable) {
    EventIntake(retTree == nullptr ? nullptr : *retTree, retList)
        .take(objects_of(std::move(reader.postings)), reader.remarks);
    return ZOX_RESULT_SUCCESS;
  }
  if (quiet == 0 && !is_cancelled())
    std::printf("zox_events_parse(): buffer = \n%s\n", buffer->str);
  return ZOX_RESULT_NOT_PARSED;
}

}  // extern "C"
