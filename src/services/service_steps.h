/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Services in two steps, for who asks on one thread and takes over on another: what asks the server
 * may run on any thread, what takes over what it sent runs on the core's.
 */
#ifndef VELKOR_SERVICES_SERVICE_STEPS_H
#define VELKOR_SERVICES_SERVICE_STEPS_H

#include <vector>

#include <velkor/zox_mail.h>
#include <velkor/zox_types.h>

#include "services/mail_document.h"
#include "support/owned.h"

namespace velkor {

/* The two steps of zox_mail_fetch(). Messages are not null when the first succeeded. */
ZoxErrorCode request_mail(OwnedMail &messages, char **message) noexcept;
void take_mail(OwnedMail messages) noexcept;

/* Those of zox_mail_post(). */
ZoxErrorCode send_mail(const ZoxBericht &bericht, char **message) noexcept;
/** Makes a message that the server took one of the box, which owns it from now on. */
void keep_sent(ZoxBericht *bericht) noexcept;

/* Those of zox_group_fetch(). */
ZoxErrorCode request_groups(OwnedString &reply) noexcept;
ZoxErrorCode take_groups(const ZoxString *reply) noexcept;

/** The watchlist as the server takes it; null when it is empty. For the core's thread. */
OwnedString watchlist_to_send() noexcept;
ZoxErrorCode send_watchlist(const ZoxString *data, char **serverText) noexcept;

/* The two steps of zox_watchlist_download(). The first brings what the event list does not know. */
ZoxErrorCode request_watchlist(std::vector<gint32> &postIds, char **serverText) noexcept;
/** @return how many postings joined the watchlist */
gint32 take_watchlist(const std::vector<gint32> &postIds) noexcept;

}  // namespace velkor

#endif
