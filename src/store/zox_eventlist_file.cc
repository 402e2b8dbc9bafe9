/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The event list's cache file. */
#include <velkor/zox_eventlist.h>

#include <string>
#include <utility>

#include <libxml/globals.h>
#include <libxml/xmlerror.h>

#include <velkor/zox_events_parse.h>
#include <velkor/zox_events_xml.h>
#include <velkor/zox_file.h>

#include "core/cache_reading.h"
#include "core/file_outcome.h"
#include "core/xml_file.h"
#include "posting/event_age.h"
#include "posting/event_fields.h"
#include "store/event_reader.h"
#include "store/event_walk.h"
#include "store/eventlist_store.h"
#include "support/clock.h"
#include "support/owned.h"
#include "support/rw_lock.h"
#include "support/text.h"
#include "support/xml.h"

namespace velkor {
namespace {

constexpr const char *cache_name = "velkor.posts";

/**
 * Writes a document of postings one element after the other, each of them gone as soon as it is
 * written. The bytes are those of a whole document saved with indentation.
 */
class EventsFile {
public:
  EventsFile() noexcept {
    xmlIndentTreeOutput = 1;
    write("<?xml version=\"1.0\"?>\n");
  }

  void add(const ZoxEvent &event) noexcept {
    const xml::Node element(zox_events_xml_add_basic(&event, document_.get()));
    if (!element)
      return;
    write(std::exchange(empty_, false) ? "<Events>\n  " : "  ");
    xmlNodeDumpOutput(file_.buffer(), document_.get(), element.get(), 1, 1, nullptr);
    write("\n");
  }

  bool commit(const char *caller) noexcept {
    write(empty_ ? "<Events/>\n" : "</Events>\n");
    return file_.commit(caller) != -1;
  }

private:
  void write(const char *text) noexcept { xmlOutputBufferWriteString(file_.buffer(), text); }

  XmlFile file_{cache_name, true};
  xml::Document document_{xmlNewDoc(xml::chars("1.0"))};
  bool empty_ = true;
};

/** Writes every posting but those that were deleted long ago; false when there is no table. */
bool write_postings(ZOXEventlist *list, EventsFile &file) noexcept {
  const ReadLock lock(list->lock);
  const gint64 now = current_time();
  for_each_held_event(list->tree, [&file, now](gpointer, const ZoxEvent &event) {
    if (!is_long_deleted(event, now))
      file.add(event);
  });
  return list->tree != nullptr;
}

/**
 * What is wrong with a text that the parser refused. The document that an empty list is saved as is
 * refused as well, and in order.
 */
std::string fault_of(const GString *text) noexcept {
  EventReader reader;
  xmlResetLastError();
  switch (reader.read(view_of(text))) {
  case EventReader::Outcome::NotWellFormed:
    return xml_fault();
  case EventReader::Outcome::WrongRoot:
    return root_fault(root_element);
  case EventReader::Outcome::NoChildren:
    return {};
  case EventReader::Outcome::Read:
    break;
  }
  return "the document is too large";
}

/** Reads the cache file into the empty table of the list. */
ZoxErrorCode read_postings(ZOXEventlist *list, char **retError) noexcept {
  const OwnedString text(zox_file_load(cache_name, 1));
  if (!text) {
    hand_over(retError, nullptr);
    return ZOX_RESULT_UNKNOWN_ERROR;
  }
  const ZoxErrorCode code = zox_events_parse(text.get(), &list->tree, nullptr, retError, 1);
  const bool parsed = code == ZOX_RESULT_SUCCESS;
  finish_reading(cache_name, true, parsed ? std::string() : fault_of(text.get()));
  return code;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_eventlist_load(ZOXEventlist *list, char **retError) {
  const WriteLock lock(list->lock);
  drop_tree(list);
  list->tree = new_event_table();
  set_filtered(list, nullptr);
  return read_postings(list, retError);
}

gint32 zox_eventlist_save(ZOXEventlist *list) {
  begin_file_operation();
  EventsFile file;
  return write_postings(list, file) && file.commit(__func__) ? 1 : 0;
}

}  // extern "C"
