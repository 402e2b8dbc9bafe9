/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The "Mail" document, as the server sends it and as the mail file keeps it. */
#ifndef VELKOR_SERVICES_MAIL_DOCUMENT_H
#define VELKOR_SERVICES_MAIL_DOCUMENT_H

#include <string>

#include <velkor/zox_mail.h>

#include "support/owned.h"
#include "support/text_writer.h"

namespace velkor {

/** The messages of a list with the list's cells. */
using OwnedMail = std::unique_ptr<GSList, ReleaseWith<zox_mail_free>>;

struct MailReading {
  OwnedMail messages;
  /** Why not all that the text holds is in `messages`; empty when it is. */
  std::string fault;
};

MailReading read_mail(const ZoxString *text) noexcept;

/** The texts of one message; null stands for an empty one. */
struct MessageTexts {
  const GString *from;
  const GString *subject;
  const GString *body;
};

/**
 * Appends one message as an "Event" element, its texts unchanged in CDATA sections.
 * @param code   what kind of message it is
 * @param stamp  seconds since 1970
 */
void append_message(TextWriter &out, const MessageTexts &texts, guint32 code,
                    gint64 stamp) noexcept;

/**
 * The document that the mail file holds, without its last line end. What XML cannot hold is left
 * out of the texts.
 */
OwnedString mail_document(const GSList *messages) noexcept;

}  // namespace velkor

#endif
