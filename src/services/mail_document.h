/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The "Mail" document, as the server sends it and as the mail file keeps it. */
#ifndef VELKOR_SERVICES_MAIL_DOCUMENT_H
#define VELKOR_SERVICES_MAIL_DOCUMENT_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <velkor/zox_mail.h>

#include "support/owned.h"
#include "support/text_writer.h"
#include "support/xml.h"

namespace velkor {

/** The messages of a list with the list's cells. */
using OwnedMail = std::unique_ptr<GSList, ReleaseWith<zox_mail_free>>;

/** No reply holds so many messages; a box may, but then its file has a backup. */
inline constexpr int max_rescued = 50'000;

/** Where a message begins in a text that is no document. */
inline constexpr std::string_view message_start = "<Event";

struct MailReading {
  OwnedMail messages;
  /** Why not all that the text holds is in `messages`; empty when it is. */
  std::string fault;
  /** Whether the text could not be read as a document at all. */
  bool unusable = false;
};

struct MailRule {
  /** Whether a message that lacks a text fails the assertions of zox_mail_parse_bericht(). */
  bool asserts = true;
  /** How many nodes beside texts the document may have. */
  std::size_t most_nodes = xml::max_nodes;
};

MailReading read_mail(const ZoxString *text, const MailRule &rule = {}) noexcept;

/**
 * Reads a text that read_mail() finds unusable: each message by itself, so that what is wrong with
 * one costs no other, and as far as it can be read. What has not all its texts is left out, and so
 * is everything behind the first `max_rescued` messages.
 */
OwnedMail rescue_mail(std::string_view text) noexcept;

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
