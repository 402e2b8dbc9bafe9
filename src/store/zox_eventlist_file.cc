/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The event list's cache file. */
#include <velkor/zox_eventlist.h>

#include <string>
#include <utility>
#include <vector>

#include <libxml/globals.h>
#include <libxml/xmlerror.h>
#include <unistd.h>
#include <zlib.h>

#include <velkor/zox_events_parse.h>
#include <velkor/zox_file.h>

#include "core/cache_directory.h"
#include "core/cache_reading.h"
#include "core/file_outcome.h"
#include "posting/event_fields.h"
#include "store/event_intake.h"
#include "store/event_reader.h"
#include "store/eventlist_store.h"
#include "store/known_posts.h"
#include "store/posts_loader.h"
#include "store/posts_saver.h"
#include "support/owned.h"
#include "support/rw_lock.h"
#include "support/text.h"

namespace velkor {
namespace {

constexpr const char *cache_name = "velkor.posts";

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

/** Reads the cache file in one go into the empty table of the list. */
ZoxErrorCode read_whole(ZOXEventlist *list, char **retError) noexcept {
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

/** Replaces the postings of the list by those of the file's sections. */
void take_over(ZOXEventlist *list, std::vector<SectionContent> contents) noexcept {
  EventIntake intake(list->tree, nullptr);
  for (SectionContent &content : contents)
    intake.take(std::move(content.objects), content.remarks);
}

/**
 * Takes the postings from the list itself, as far as the file still is the one known and holds just
 * them. They end up as if they had been read: new objects without details.
 * @return false when the file has to be read; the list is empty then if it was given up
 */
bool reload_known(ZOXEventlist *list, const PostsFile &posts, const std::string &path) noexcept {
  const KnownPosts *known = posts.known(path);
  const PlacedReader file(path);
  if (list->tree == nullptr || known == nullptr || !is_unchanged(file, *known))
    return false;
  auto contents =
      reread_sections(file, *known, EventTable(std::exchange(list->tree, new_event_table())));
  if (contents)
    take_over(list, *std::move(contents));
  return contents.has_value();
}

/** Reads the sections of the file into the empty table of the list. */
bool load_sections(ZOXEventlist *list, PostsFile &posts, const std::string &path) noexcept {
  auto read = read_sections(path);
  if (!read)
    return false;
  if (read->known)
    posts.remember(*std::move(read->known));
  take_over(list, std::move(read->contents));
  return true;
}

/** Reads the file by its sections, which is possible unless an earlier version left a plain one. */
bool load_by_sections(ZOXEventlist *list, PostsFile &posts) noexcept {
  const std::string path = cache_path(cache_name, true);
  const bool plain = access(cache_path(cache_name, false).c_str(), F_OK) == 0;
  const bool reloaded = !plain && reload_known(list, posts, path);
  if (!reloaded) {
    posts.forget();
    drop_tree(list);
    list->tree = new_event_table();
    if (plain || !load_sections(list, posts, path))
      return false;
  }
  set_file_outcome({ZOX_FILE_FINE, 0, path});
  finish_reading(cache_name, true, {});
  return true;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_eventlist_load(ZOXEventlist *list, char **retError) {
  PostsFile posts;
  const WriteLock lock(list->lock);
  set_filtered(list, nullptr);
  begin_file_operation();
  if (!load_by_sections(list, posts))
    return read_whole(list, retError);
  hand_over(retError, nullptr);
  return ZOX_RESULT_SUCCESS;
}

gint32 zox_eventlist_save(ZOXEventlist *list) {
  PostsFile posts;
  begin_file_operation();
  // libxml2 no longer writes this file; the settings that saving leaves behind stay the same.
  xmlSetCompressMode(Z_BEST_COMPRESSION);
  xmlIndentTreeOutput = 1;
  ListSnapshot snapshot(list);
  if (!snapshot.has_table())
    return 0;
  return save_posts(posts, cache_path(cache_name, true), snapshot, __func__) ? 1 : 0;
}

}  // extern "C"
