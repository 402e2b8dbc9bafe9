/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The reader of the "Mail" document. */
#include <array>
#include <optional>
#include <string>

#include "core/app_core.h"
#include "core/cache_reading.h"
#include "core/record_fields.h"
#include "core/reply_document.h"
#include "services/mail_document.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

// The message about a wrong root names another element than the one expected; it is kept.
constexpr DocumentRule mail_rule{
    .root = "Mail", .reader = "zox_mail_parse", .complaint = {.other_root = "Events"}};

constexpr auto bericht_fields = std::to_array<Field<ZoxBericht>>({
    {"From", &ZoxBericht::from},
    {"Subject", &ZoxBericht::subject},
    {"Body", &ZoxBericht::body},
    {"Stamp", &ZoxBericht::stamp},
});

/** A message while it is read: unlike a finished one it may lack texts. */
class BerichtParts {
public:
  BerichtParts(xmlDoc *doc, xmlNode *first) noexcept {
    for (xmlNode *node : xml::Siblings(first)) {
      if (const Field<ZoxBericht> *field = field_for<ZoxBericht>(node, bericht_fields))
        read(doc, node, *field);
    }
  }
  ~BerichtParts() { release_fields<ZoxBericht>(bericht_fields, parts_); }
  BerichtParts(const BerichtParts &) = delete;
  BerichtParts &operator=(const BerichtParts &) = delete;

  [[nodiscard]] const ZoxBericht &get() const noexcept { return parts_; }

private:
  void read(xmlDoc *doc, xmlNode *node, const Field<ZoxBericht> &field) noexcept {
    // An element that is there but empty is an empty text, so that such a message can be kept.
    const auto *text = std::get_if<GString * ZoxBericht::*>(&field.member);
    if (!read_field(doc, node, field, parts_) && text != nullptr)
      parts_.**text = g_string_new(nullptr);
  }

  ZoxBericht parts_{};
};

/** The code of an "Event" that holds a message; none for any other. */
std::optional<ZoxMailCode> message_code(const xmlNode *node) noexcept {
  if (!xml::is_named_exactly(node, "Event"))
    return std::nullopt;
  const xml::Chars attribute(xmlGetProp(node, xml::chars("Code")));
  if (!attribute)
    return std::nullopt;
  const std::string_view code = xml::chars(attribute.get());
  if (code == "1")
    return ZOX_MAIL_RECEIVED;
  return code == "2" ? std::optional(ZOX_MAIL_SENT) : std::nullopt;
}

/** What is wrong with a document that has no messages; a root without children is in order. */
std::string fault_of(const ReplyDocument &document) noexcept {
  switch (document.fault()) {
  case DocumentFault::empty:
    return xml_fault();
  case DocumentFault::wrong_root:
    return root_fault(mail_rule.root);
  case DocumentFault::none:
  case DocumentFault::no_children:
    break;
  }
  return {};
}

}  // namespace

MailReading read_mail(const ZoxString *text) noexcept {
  const ReplyDocument document(text, mail_rule);
  if (document.fault() != DocumentFault::none)
    return {nullptr, fault_of(document)};
  ListBuilder<ZoxBericht, zox_mail_bericht_free> messages;
  std::string fault;
  for (xmlNode *node : document.children()) {
    const std::optional<ZoxMailCode> code = message_code(node);
    if (!code)
      continue;
    ZoxBericht *bericht = zox_mail_parse_bericht(document.get(), node->children);
    if (bericht == nullptr) {
      fault = "a message lacks From, Subject or Body";
      continue;
    }
    bericht->code = *code;
    messages.append(bericht);
  }
  return {OwnedMail(messages.release()), fault};
}

}  // namespace velkor

using namespace velkor;

extern "C" {

GSList *zox_mail_parse(const ZoxString *buffer) {
  ZOX_ASSERT(buffer);
  return read_mail(buffer).messages.release();
}

ZoxBericht *zox_mail_parse_bericht(xmlDocPtr doc, xmlNodePtr firstChild) {
  const BerichtParts parts(doc, firstChild);
  const ZoxBericht &read = parts.get();
  ZOX_ASSERT_AS(read.from != nullptr || tolerant(), "from");
  ZOX_ASSERT_AS(read.subject != nullptr || tolerant(), "subject");
  ZOX_ASSERT_AS(read.body != nullptr || tolerant(), "body");
  ZoxBericht *bericht = zox_mail_bericht_new(chars_or_null(read.from), chars_or_null(read.subject),
                                             chars_or_null(read.body), read.stamp);
  if (bericht == nullptr)
    g_warning("zox_mail_parse_bericht(): bericht zonder From, Subject of Body overgeslagen\n");
  return bericht;
}

}  // extern "C"
