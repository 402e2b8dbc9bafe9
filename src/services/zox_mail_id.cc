/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Numbers for messages that outlive the list. */
#include <velkor/zox_mail.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>

#include <velkor/zox_app_core.h>

#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"
#include "support/xml.h"

namespace velkor {
namespace {

using OwnedChecksum = std::unique_ptr<GChecksum, ReleaseWith<g_checksum_free>>;

/** The text as it comes back from the mail file, whose reader turns every line end into one byte.
 */
std::string as_read_back(const GString *text) noexcept {
  std::string kept;
  const std::string stored = xml::storable(view_of(text));
  for (std::size_t place = 0; place < stored.size(); ++place) {
    const bool carriage_return = stored[place] == '\r';
    if (carriage_return && place + 1 < stored.size() && stored[place + 1] == '\n')
      continue;
    kept += carriage_return ? '\n' : stored[place];
  }
  return kept;
}

/** Adds a part so that no two sequences of parts are the same bytes. */
void add(GChecksum &checksum, const std::string &part) noexcept {
  const std::string framed = std::to_string(part.size()) + ":" + part;
  g_checksum_update(&checksum, reinterpret_cast<const guchar *>(framed.data()),
                    static_cast<gssize>(framed.size()));
}

/** The number that the first eight bytes of the digest are, the highest first. */
guint64 number_of(GChecksum &checksum) noexcept {
  std::array<guint8, 32> digest{};  // as long as one of SHA-256
  gsize size = digest.size();
  g_checksum_get_digest(&checksum, digest.data(), &size);
  guint64 number = 0;
  for (std::size_t place = 0; place < sizeof number; ++place)
    number = number << 8 | digest[place];
  return number;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

guint64 zox_mail_id(const ZoxBericht *bericht) {
  const OwnedChecksum checksum(g_checksum_new(G_CHECKSUM_SHA256));
  add(*checksum, std::to_string(bericht->code));
  for (const GString *text : {bericht->from, bericht->subject, bericht->body})
    add(*checksum, as_read_back(text));
  add(*checksum, std::to_string(static_cast<gint32>(bericht->stamp)));
  const guint64 number = number_of(*checksum);
  return number == 0 ? 1 : number;
}

ZoxBericht *zox_mail_find(guint64 id) {
  ZOX_ASSERT(core);
  for (ZoxBericht *bericht : Items<ZoxBericht>(core->mail)) {
    if (zox_mail_id(bericht) == id)
      return bericht;
  }
  return nullptr;
}

}  // extern "C"
