/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The event list's cache file. */
#include <velkor/zox_eventlist.h>

#include <cerrno>
#include <optional>
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
#include "core/changes.h"
#include "core/file_outcome.h"
#include "posting/event_fields.h"
#include "store/event_intake.h"
#include "store/event_reader.h"
#include "store/eventlist_store.h"
#include "store/known_posts.h"
#include "store/posts_loader.h"
#include "store/posts_saver.h"
#include "store/save_plan.h"
#include "support/owned.h"
#include "support/rw_lock.h"
#include "support/text.h"
#include "support/xml.h"

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
  case EventReader::Outcome::Read:
    break;
  }
  return {};
}

/** Reads the cache file in one go into the empty table. */
ZoxErrorCode read_whole(GHashTable *table, char **retError) noexcept {
  const OwnedString text(zox_file_load(cache_name, 1));
  if (!text) {
    hand_over(retError, nullptr);
    return ZOX_RESULT_UNKNOWN_ERROR;
  }
  const ZoxErrorCode code = zox_events_parse(text.get(), &table, nullptr, retError, 1);
  const bool parsed = code == ZOX_RESULT_SUCCESS;
  finish_reading(cache_name, true, parsed ? std::string() : fault_of(text.get()));
  return code;
}

void fill(GHashTable *table, std::vector<SectionContent> contents) noexcept {
  EventIntake intake(table, nullptr);
  for (SectionContent &content : contents)
    intake.take(std::move(content.objects), content.remarks);
}

/**
 * Takes the postings from the list itself, as far as the file, which is the one known, holds just
 * them. They end up as if they had been read: without details.
 * @return false when the file has to be read after all
 */
bool take_known(ZOXEventlist *list, GHashTable *table, const PlacedReader &file,
                const KnownPosts &known) noexcept {
  ListSnapshot snapshot(list);
  if (!snapshot.has_table())
    return false;
  auto contents = reread_sections(file, known, snapshot.entries());
  if (!contents)
    return false;
  fill(table, *std::move(contents));
  return true;
}

/** Reads the sections of the file into the empty table. */
bool load_sections(GHashTable *table, PostsFile &posts, const PlacedReader &file,
                   const std::string &path) noexcept {
  auto read = read_sections(file, path);
  if (!read)
    return false;
  if (read->known)
    posts.remember(*std::move(read->known));
  fill(table, std::move(read->contents));
  return true;
}

/** How the file compares with what is known of it. */
enum class FileState {
  unknown,      // nothing is known of it, or it is another file by now
  as_known,     // to the last byte
  out_of_reach  // the one known, but it cannot be read, or shows other bytes
};

FileState compare(const PlacedReader &file, const KnownPosts *known) noexcept {
  const std::optional<FileIdentity> identity = file.identity();
  if (known == nullptr || (identity && *identity != known->identity))
    return FileState::unknown;
  return is_unchanged(file, *known) ? FileState::as_known : FileState::out_of_reach;
}

/** What becomes of a list whose file is out of reach. */
enum class OutOfReach { read_anew, keep_list };

ZoxErrorCode keep_list(const std::string &path) noexcept {
  set_file_outcome(failed_outcome(ZOX_FILE_UNREADABLE, path, EIO));
  note_cache_status(ZOX_FILE_UNREADABLE);
  g_warning("zox_eventlist_load(): %s kan nu niet worden gelezen; de postings blijven zoals ze "
            "zijn\n",
            path.c_str());
  return ZOX_RESULT_UNKNOWN_ERROR;
}

/** Fills the empty table with what the file holds, read as far as need be; false leaves it empty.
 */
bool load_by_sections(ZOXEventlist *list, GHashTable *table, PostsFile &posts,
                      const std::string &path, FileState state, const PlacedReader &file) noexcept {
  // An earlier version's plain file comes first.
  const bool plain = access(cache_path(cache_name, false).c_str(), F_OK) == 0;
  if (!plain && state == FileState::as_known && take_known(list, table, file, *posts.known(path)))
    return true;
  posts.forget();
  return !plain && load_sections(table, posts, file, path);
}

/** Gives the list what was read; only for this moment, readers have to wait. */
void exchange_postings(ZOXEventlist *list, EventTable table) noexcept {
  EventTable earlier;
  {
    const WriteLock lock(list->lock);
    set_filtered(list, nullptr);
    earlier = replace_tree(list, std::move(table));
  }
  drop_tree(std::move(earlier));
  tell_change(ZOX_CHANGE_LIST);
}

ZoxErrorCode read_all(ZOXEventlist *list, GHashTable *table, PostsFile &posts,
                      const std::string &path, FileState state, const PlacedReader &file,
                      char **retError) noexcept {
  if (!load_by_sections(list, table, posts, path, state, file))
    return read_whole(table, retError);
  hand_over(retError, nullptr);
  set_file_outcome({ZOX_FILE_FINE, 0, path});
  finish_reading(cache_name, true, {});
  return ZOX_RESULT_SUCCESS;
}

ZoxErrorCode load(ZOXEventlist *list, OutOfReach reach, char **retError) noexcept {
  PostsFile posts;
  const std::string path = cache_path(cache_name, true);
  note_changes(list);
  const PlacedReader file(path);
  const FileState state = compare(file, posts.known(path));
  begin_file_operation();
  if (state == FileState::out_of_reach && reach == OutOfReach::keep_list) {
    forget_changes(list);
    return keep_list(path);
  }
  EventTable table(new_event_table());
  const ZoxErrorCode code = read_all(list, table.get(), posts, path, state, file, retError);
  exchange_postings(list, std::move(table));
  note_cache_status(file_outcome().status);
  return code;
}

}  // namespace

ZoxErrorCode reload(ZOXEventlist *list) noexcept {
  return load(list, OutOfReach::keep_list, nullptr);
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_eventlist_load(ZOXEventlist *list, char **retError) {
  return load(list, OutOfReach::read_anew, retError);
}

gint32 zox_eventlist_save(ZOXEventlist *list) {
  PostsFile posts;
  begin_file_operation();
  xml::initialize();
  // libxml2 no longer writes this file; the settings that saving leaves behind stay the same.
  xmlSetCompressMode(Z_BEST_COMPRESSION);
  xmlIndentTreeOutput = 1;
  ListSnapshot snapshot(list);
  if (!snapshot.has_table())
    return 0;
  const bool saved = save_posts(posts, cache_path(cache_name, true), snapshot, __func__);
  note_cache_status(file_outcome().status);
  return saved ? 1 : 0;
}

}  // extern "C"
