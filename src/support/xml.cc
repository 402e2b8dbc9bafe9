/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/xml.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <utility>

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

/** A list of declarations longer than this is no real one; their models cost far more memory. */
constexpr std::size_t max_declarations_size = std::size_t{1} << 20;

/** What declaring an entity and each use cost: libxml2 measures the text before a use anew. */
constexpr std::size_t nodes_per_reference = 100;

/** The node behind `node` in the subtree of `top`, in the order of the document; null at its end.
 */
const xmlNode *following(const xmlNode *node, const xmlNode *top) noexcept {
  if (node->type == XML_ELEMENT_NODE && node->children != nullptr)
    return node->children;
  while (node != top && node->next == nullptr)
    node = node->parent;
  return node == top ? nullptr : node->next;
}

std::size_t count_attributes(const xmlNode &node) noexcept {
  std::size_t count = 0;
  if (node.type == XML_ELEMENT_NODE) {
    for (const xmlAttr *attribute = node.properties; attribute != nullptr;
         attribute = attribute->next)
      ++count;
  }
  return count;
}

/** How many nodes there are from `first` on, with all that they hold. */
std::size_t count_nodes(xmlNode *first) noexcept {
  std::size_t count = 0;
  for (const xmlNode *top : Siblings(first)) {
    const xmlNode *node = top;
    do {
      count += 1 + count_attributes(*node);
      node = following(node, top);
    } while (node != nullptr);
  }
  return count;
}

/** Builds the tree of one document and gives up when it grows beyond its bound. */
class TreeBuilder {
public:
  TreeBuilder(std::string_view text, std::size_t most_nodes, int more_options) noexcept
      : source_(text), nodes_left_(most_nodes), more_options_(more_options) {}

  /** The document, if it keeps within the bounds; it need not be well-formed. */
  Document build() noexcept {
    xmlSAXHandler handler = counting_handler();
    const Parser parser = source_.make_parser(handler);
    if (!parser)
      return nullptr;
    xmlCtxtUseOptions(parser.get(), parse_options | XML_PARSE_COMPACT | more_options_);
    parser->_private = this;
    xmlParseDocument(parser.get());
    Document document(std::exchange(parser->myDoc, nullptr));
    const bool usable = (parser->wellFormed != 0 || more_options_ != 0) && !exceeded_;
    return usable && !source_.held_back() ? std::move(document) : nullptr;
  }

private:
  static xmlSAXHandler counting_handler() noexcept {
    xmlSAXHandler handler = closed_handler();
    handler.startElementNs = start_element;
    handler.cdataBlock = cdata_block;
    handler.comment = comment;
    handler.processingInstruction = instruction;
    handler.getEntity = get_entity;
    return handler;
  }

  static void start_element(void *context, const xmlChar *name, const xmlChar *prefix,
                            const xmlChar *address, int address_count, const xmlChar **addresses,
                            int attribute_count, int default_count, const xmlChar **attributes) {
    if (spend(context, 1 + static_cast<std::size_t>(address_count) +
                           static_cast<std::size_t>(attribute_count)))
      xmlSAX2StartElementNs(context, name, prefix, address, address_count, addresses,
                            attribute_count, default_count, attributes);
  }

  /** libxml2 would copy all that stands before a section to join the two. */
  static void cdata_block(void *context, const xmlChar *text, int length) {
    const auto *parser = static_cast<xmlParserCtxt *>(context);
    if (!spend(context, 1))
      return;
    Node section(xmlNewCDataBlock(parser->myDoc, text, length));
    if (xmlAddChild(parser->node, section.get()) != nullptr)
      static_cast<void>(section.release());
  }

  static void comment(void *context, const xmlChar *text) {
    if (spend(context, 1))
      xmlSAX2Comment(context, text);
  }

  static void instruction(void *context, const xmlChar *target, const xmlChar *data) {
    if (spend(context, 1))
      xmlSAX2ProcessingInstruction(context, target, data);
  }

  /** The parser copies the nodes of an entity wherever it is used. */
  static xmlEntity *get_entity(void *context, const xmlChar *name) {
    xmlEntity *entity = xmlSAX2GetEntity(context, name);
    if (entity == nullptr || entity->etype == XML_INTERNAL_PREDEFINED_ENTITY)
      return entity;
    return spend(context, nodes_per_reference + count_nodes(entity->children)) ? entity : nullptr;
  }

  /** Counts nodes; false, and the end of the parse, when they are too many. */
  static bool spend(void *context, std::size_t nodes) noexcept {
    auto *parser = static_cast<xmlParserCtxt *>(context);
    auto &self = *static_cast<TreeBuilder *>(parser->_private);
    if (nodes <= self.nodes_left_ && !self.exceeded_) {
      self.nodes_left_ -= nodes;
      return true;
    }
    if (!std::exchange(self.exceeded_, true))
      xmlGenericError(xmlGenericErrorContext, "Document of too many nodes\n");
    xmlStopParser(parser);
    return false;
  }

  Source source_;
  std::size_t nodes_left_;
  int more_options_;
  bool exceeded_ = false;
};

Document build_tree(std::string_view text, std::size_t most_nodes, int more_options) noexcept {
  initialize();
  xmlResetLastError();
  if (text.empty() || text.size() > INT_MAX)
    return nullptr;
  return TreeBuilder(text, most_nodes, more_options).build();
}

/** libxml2 reads back sections of less than ten million bytes. */
constexpr std::size_t max_section_size = 8'000'000;

/** How much of the text goes into a section: up to the mark that ends one, in whole characters. */
std::size_t section_size(std::string_view text) noexcept {
  const std::size_t mark = text.substr(0, max_section_size).find("]]>");
  if (mark != std::string_view::npos)
    return mark + 2;
  if (text.size() <= max_section_size)
    return text.size();
  const auto continues = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
  };
  constexpr std::size_t longest_character = 4;
  std::size_t size = max_section_size;
  while (size > max_section_size - longest_character && continues(text[size]))
    --size;
  return size;
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

Parser Source::make_parser(xmlSAXHandler &handler) noexcept {
  Parser parser(
      xmlCreateIOParserCtxt(&handler, nullptr, read, nullptr, this, XML_CHAR_ENCODING_NONE));
  if (parser)
    xmlCtxtUseOptions(parser.get(), parse_options);
  parser_ = parser.get();
  return parser;
}

int Source::read(void *source, char *buffer, int length) noexcept {
  auto &self = *static_cast<Source *>(source);
  if (const char *excess = self.excess()) {
    if (!std::exchange(self.held_back_, true) && self.diagnosis_ == Diagnosis::told)
      xmlGenericError(xmlGenericErrorContext, "Document of too many %s\n", excess);
    return 0;
  }
  const std::size_t bytes = std::min(self.rest_.size(), static_cast<std::size_t>(length));
  std::memcpy(buffer, self.rest_.data(), bytes);
  self.rest_.remove_prefix(bytes);
  self.delivered_ += bytes;
  return static_cast<int>(bytes);
}

const char *Source::excess() const noexcept {
  if (parser_ == nullptr || rest_.empty())
    return nullptr;
  if (xmlDictSize(parser_->dict) > max_names)
    return "names";
  return parser_->inSubset != 0 && delivered_ > max_declarations_size ? "declarations" : nullptr;
}

Document parse(std::string_view text, std::size_t most_nodes) noexcept {
  return build_tree(text, most_nodes, 0);
}

Document recover(std::string_view text) noexcept {
  return build_tree(text, max_nodes, XML_PARSE_RECOVER);
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
  for (std::size_t size = section_size(text); size < text.size(); size = section_size(text)) {
    section.append(text.substr(0, size)).append(end).append(begin);
    text.remove_prefix(size);
  }
  return section.append(text).append(end);
}

Document new_document(const char *root) noexcept {
  initialize();
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
