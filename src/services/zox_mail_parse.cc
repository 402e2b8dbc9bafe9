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

/** A message without a code; null, with a warning, when it lacks a text. */
ZoxBericht *message_of(const ZoxBericht &parts) noexcept {
  ZoxBericht *bericht =
      zox_mail_bericht_new(chars_or_null(parts.from), chars_or_null(parts.subject),
                           chars_or_null(parts.body), parts.stamp);
  if (bericht == nullptr)
    g_warning("zox_mail_parse_bericht(): bericht zonder From, Subject of Body overgeslagen\n");
  return bericht;
}

/** The messages among siblings; whether all of them have their texts. */
bool read_messages(xmlDoc *document, const xml::Siblings &nodes, bool asserts,
                   ListBuilder<ZoxBericht, zox_mail_bericht_free> &messages) noexcept {
  bool complete = true;
  for (xmlNode *node : nodes) {
    const std::optional<ZoxMailCode> code = message_code(node);
    if (!code)
      continue;
    ZoxBericht *bericht = asserts ? zox_mail_parse_bericht(document, node->children)
                                  : message_of(BerichtParts(document, node->children).get());
    if (bericht == nullptr) {
      complete = false;
      continue;
    }
    bericht->code = *code;
    messages.append(bericht);
  }
  return complete;
}

/** The text without control characters, whatever the encoding that it declares. */
std::string without_controls(std::string_view text) noexcept {
  std::string kept(text);
  std::erase_if(kept, [](char byte) {
    return static_cast<unsigned char>(byte) < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
  });
  return kept;
}

}  // namespace

MailReading read_mail(const ZoxString *text, const MailRule &rule) noexcept {
  DocumentRule document_rule = mail_rule;
  document_rule.most_nodes = rule.most_nodes;
  const ReplyDocument document(text, document_rule);
  if (document.fault() != DocumentFault::none)
    return {nullptr, fault_of(document), document.fault() == DocumentFault::empty};
  ListBuilder<ZoxBericht, zox_mail_bericht_free> messages;
  const bool complete = read_messages(document.get(), document.children(), rule.asserts, messages);
  return {OwnedMail(messages.release()),
          complete ? std::string() : "a message lacks From, Subject or Body"};
}

OwnedMail rescue_mail(std::string_view text) noexcept {
  ListBuilder<ZoxBericht, zox_mail_bericht_free> messages;
  const auto take = [&messages](const xml::Document &document) {
    const xmlNode *root = xmlDocGetRootElement(document.get());
    if (root != nullptr)
      read_messages(document.get(), xml::Siblings(root->children), false, messages);
    return root != nullptr;
  };
  const std::string without = without_controls(text);
  if (take(xml::parse(without)))
    return OwnedMail(messages.release());
  const std::string storable = xml::storable(text);
  std::string_view rest = storable;
  std::size_t start = rest.find(message_start);
  for (int count = 0; start != std::string_view::npos && count < max_rescued; ++count) {
    rest.remove_prefix(start);
    start = rest.find(message_start, message_start.size());
    take(xml::recover("<Mail>" + std::string(rest.substr(0, start)) + "</Mail>"));
  }
  return OwnedMail(messages.release());
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
  return message_of(read);
}

}  // extern "C"
