/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The "Mail" document, as the server sends it and as the mail file keeps it. */
#ifndef VELKOR_SERVICES_MAIL_DOCUMENT_H
#define VELKOR_SERVICES_MAIL_DOCUMENT_H

#include <velkor/zox_mail.h>

#include "support/owned.h"

namespace velkor {

/** The messages of a list with the list's cells. */
using OwnedMail = std::unique_ptr<GSList, ReleaseWith<zox_mail_free>>;

enum class MailCode : guint32 { unsent = 0, received = 1, sent = 2 };

struct MailReading {
  OwnedMail messages;
  /** Whether all that the text holds is in `messages`: it is a document and no message was bad. */
  bool complete;
};

MailReading read_mail(const ZoxString *text) noexcept;

/** The document that the mail file holds, without its last line end. */
OwnedString mail_document(const GSList *messages) noexcept;

}  // namespace velkor

#endif
