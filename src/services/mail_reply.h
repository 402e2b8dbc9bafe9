/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The reply with the waiting messages, which the server has no longer once it is sent. */
#ifndef VELKOR_SERVICES_MAIL_REPLY_H
#define VELKOR_SERVICES_MAIL_REPLY_H

#include <velkor/zox_types.h>

#include "services/mail_document.h"

namespace velkor {

/**
 * The messages of the reply. When a message of it cannot be read in full, the reply is first kept
 * in the cache directory, as "velkor.mail.antwoord-YYYYmmdd-HHMMSS" and for its owner alone, with a
 * warning that names the file.
 */
OwnedMail read_mail_reply(const ZoxString *reply) noexcept;

}  // namespace velkor

#endif
