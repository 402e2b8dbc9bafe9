/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/xml.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <mutex>

#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>

#include "support/text.h"

namespace velkor::xml {
namespace {

void declare_internal_entity(void *context, const xmlChar *name, int type, const xmlChar *publicId,
                             const xmlChar *systemId, xmlChar *content) {
  if (type == XML_INTERNAL_GENERAL_ENTITY || type == XML_INTERNAL_PARAMETER_ENTITY)
    xmlSAX2EntityDecl(context, name, type, publicId, systemId, content);
}

xmlParserInputPtr resolve_nothing(void *, const xmlChar *, const xmlChar *) {
  return nullptr;
}

void ignore_external_subset(void *, const xmlChar *, const xmlChar *, const xmlChar *) {}

/** Whether `byte` may stand in a document: no control character. */
bool is_printable(char byte) noexcept {
  return static_cast<unsigned char>(byte) >= 0x20 || byte == '\t' || byte == '\n' || byte == '\r';
}

bool is_ascii(char byte) noexcept {
  return static_cast<unsigned char>(byte) < 0x80;
}

/** Whether XML can hold the character in any form. */
bool is_xml_character(gunichar character) noexcept {
  if (character < 0x80)
    return is_printable(static_cast<char>(character));
  return character != 0xfffe && character != 0xffff;
}

}  // namespace

void initialize() noexcept {
  static std::once_flag once;
  std::call_once(once, xmlInitParser);
}

xmlSAXHandler closed_handler() noexcept {
  initialize();
  xmlSAXHandler handler{};
  xmlSAXVersion(&handler, 2);
  handler.entityDecl = declare_internal_entity;
  handler.resolveEntity = resolve_nothing;
  handler.externalSubset = ignore_external_subset;
  return handler;
}

Document parse(std::string_view text) noexcept {
  if (text.empty() || text.size() > INT_MAX)
    return nullptr;
  initialize();
  const Parser parser(xmlCreateMemoryParserCtxt(text.data(), static_cast<int>(text.size())));
  if (!parser)
    return nullptr;
  *parser->sax = closed_handler();
  xmlCtxtUseOptions(parser.get(), parse_options);
  xmlParseDocument(parser.get());
  Document document(parser->myDoc);
  parser->myDoc = nullptr;
  return parser->wellFormed != 0 ? std::move(document) : nullptr;
}

bool is_named(const xmlNode *node, std::string_view name) noexcept {
  return node->type == XML_ELEMENT_NODE && equal_ignoring_case(name_of(node), name);
}

bool is_named_exactly(const xmlNode *node, std::string_view name) noexcept {
  return node->type == XML_ELEMENT_NODE && name_of(node) == name;
}

xmlNode *root_named(const Document &document, const char *expected, const char *reader,
                    const Complaint &complaint) noexcept {
  xmlNode *root = xmlDocGetRootElement(document.get());
  if (root != nullptr && is_named(root, expected))
    return root;
  const OwnedText text(
      root == nullptr
          ? g_strdup_printf("%s(): empty document!\n", reader)
          : g_strdup_printf("%s(): document of the wrong type, root node != %s", reader,
                            complaint.other_root != nullptr ? complaint.other_root : expected));
  if (complaint.logged)
    g_warning("%s", text.get());
  else
    std::fputs(text.get(), stderr);
  return nullptr;
}

bool is_storable(std::string_view text) noexcept {
  if (!std::ranges::all_of(text, is_printable))
    return false;
  if (std::ranges::all_of(text, is_ascii))
    return true;
  // U+FFFE and U+FFFF are the only code points that pass the check of UTF-8 and are no characters.
  return g_utf8_validate_len(text.data(), text.size(), nullptr) &&
         text.find("\xEF\xBF\xBE") == std::string_view::npos &&
         text.find("\xEF\xBF\xBF") == std::string_view::npos;
}

std::string storable(std::string_view text) noexcept {
  if (is_storable(text))
    return std::string(text);
  const OwnedText valid = valid_utf8(text);
  std::string kept;
  kept.reserve(text.size());
  for (const char *place = valid.get(); *place != '\0';) {
    const char *next = g_utf8_next_char(place);
    if (is_xml_character(g_utf8_get_char(place)))
      kept.append(place, next);
    place = next;
  }
  return kept;
}

std::string cdata(std::string_view text) noexcept {
  constexpr std::string_view begin = "<![CDATA[";
  constexpr std::string_view end = "]]>";
  std::string section(begin);
  section.reserve(begin.size() + text.size() + end.size());
  for (std::size_t mark = text.find(end); mark != std::string_view::npos; mark = text.find(end)) {
    section.append(text.substr(0, mark + 2)).append(end).append(begin);
    text.remove_prefix(mark + 2);
  }
  return section.append(text).append(end);
}

Document new_document(const char *root) noexcept {
  Document document(xmlNewDoc(chars("1.0")));
  xmlDocSetRootElement(document.get(),
                       xmlNewDocNode(document.get(), nullptr, chars(root), nullptr));
  return document;
}

xmlNode *add_element(xmlNode *parent, const char *name) noexcept {
  return xmlNewChild(parent, nullptr, chars(name), nullptr);
}

void add_text(xmlNode *parent, const char *name, const char *text) noexcept {
  xmlNewTextChild(parent, nullptr, chars(name), chars(text));
}

void add_number(xmlNode *parent, const char *name, gint32 number) noexcept {
  add_text(parent, name, decimal(number).c_str());
}

void add_cdata(xmlNode *parent, const char *name, std::string_view text) noexcept {
  const auto *content = reinterpret_cast<const xmlChar *>(text.data());
  xmlAddChild(add_element(parent, name),
              xmlNewCDataBlock(parent->doc, content, static_cast<int>(text.size())));
}

}  // namespace velkor::xml
