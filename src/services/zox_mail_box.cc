/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The messages of the core: the list, its records and the mail file. */
#include <algorithm>
#include <cstddef>
#include <limits>
#include <unordered_set>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_file.h>
#include <velkor/zox_string.h>

#include "core/app_core.h"
#include "core/cache_reading.h"
#include "core/changes.h"
#include "core/file_outcome.h"
#include "services/mail_document.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

constexpr const char *mail_file = "velkor.mail";

/** The result of a load that finds no file. */
gint32 make_missing_file() noexcept {
  if (read_only())
    return 0;
  const JoinedOutcome outcome;
  return zox_mail_save();
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

GSList *zox_mail_get(void) {
  ZOX_ASSERT(core);
  return core->mail;
}

guint32 zox_mail_get_num_messages(void) {
  return g_slist_length(zox_mail_get());
}

GSList *zox_mail_merge(GSList *first, GSList *second) {
  return g_slist_concat(g_slist_copy(first), g_slist_copy(second));
}

ZoxBericht *zox_mail_bericht_new(const char *from, const char *subject, const char *body,
                                 gint64 stamp) {
  if (from == nullptr || subject == nullptr || body == nullptr)
    return nullptr;
  auto *bericht = g_new0(ZoxBericht, 1);
  bericht->from = zox_string_new(from);
  bericht->subject = zox_string_new(subject);
  bericht->body = zox_string_new(body);
  bericht->stamp = stamp;
  return bericht;
}

void zox_mail_bericht_free(ZoxBericht *bericht) {
  ZOX_ASSERT(bericht);
  ZOX_ASSERT(bericht->from);
  ZOX_ASSERT(bericht->subject);
  ZOX_ASSERT(bericht->body);
  free_string(bericht->from);
  free_string(bericht->subject);
  free_string(bericht->body);
  g_free(bericht);
}

void zox_mail_free(GSList *list) {
  const OwnedCells cells(list);
  for (ZoxBericht *bericht : Items<ZoxBericht>(list)) {
    ZOX_ASSERT(bericht);
    zox_mail_bericht_free(bericht);
  }
}

gint32 zox_mail_load(void) {
  ZOX_ASSERT(core);
  const OwnedString text(zox_file_load(mail_file, 0));
  if (!text && file_outcome().status == ZOX_FILE_MISSING)
    return make_missing_file();
  if (!text) {
    // It is there but cannot be opened: nothing may replace it unseen.
    finish_reading(mail_file, false, {});
    return 0;
  }
  // The box may have grown beyond what one reply may hold.
  MailReading reading =
      read_mail(text.get(), {.most_nodes = std::numeric_limits<std::size_t>::max()});
  finish_reading(mail_file, false, reading.fault);
  if (reading.unusable && text->len > 0)
    reading.messages = rescue_mail(view_of(text.get()));
  const OwnedMail earlier(std::exchange(core->mail, reading.messages.release()));
  tell_change(ZOX_CHANGE_MAIL);
  return 0;
}

gint32 zox_mail_save(void) {
  ZOX_ASSERT(core);
  begin_file_operation();
  const OwnedString xmlData = mail_document(core->mail);
  tell_change(ZOX_CHANGE_MAIL);
  return zox_file_save(mail_file, xmlData.get(), 0);
}

gint32 zox_mail_delete(ZoxBericht *bericht) {
  const OwnedCells messages(g_slist_prepend(nullptr, bericht));
  return zox_mail_delete_messages(messages.get());
}

gint32 zox_mail_delete_messages(const GSList *messages) {
  ZOX_ASSERT_IN(zox_mail_delete, core, "core");
  ZOX_ASSERT_IN(zox_mail_delete, core->mail, "core->mail");
  const Items<ZoxBericht> given(messages);
  const std::unordered_set<ZoxBericht *> deleted(given.begin(), given.end());
  CellBuilder<ZoxBericht> kept;
  for (ZoxBericht *bericht : Items<ZoxBericht>(core->mail)) {
    if (!deleted.contains(bericht))
      kept.append(bericht);
  }
  OwnedCells other(std::exchange(core->mail, kept.release()));
  const gint32 result = zox_mail_save();
  if (result != 0)
    other.reset(std::exchange(core->mail, other.release()));
  else
    std::ranges::for_each(deleted, zox_mail_bericht_free);
  return result;
}

}  // extern "C"
