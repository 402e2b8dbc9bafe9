/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/html/html_page.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <memory>

#include <glib.h>
#include <libxml/parser.h>
#include <libxslt/transform.h>
#include <libxslt/variables.h>
#include <libxslt/xsltutils.h>

#include <velkor/zox_category.h>
#include <velkor/zox_string.h>

#include "page_files.h"
#include "support/numbers.h"
#include "support/owned.h"
#include "velkorctl/html/tag_info.h"
#include "velkorctl/html/xml_owned.h"

namespace velkor::ctl {
namespace {

constexpr int quiet = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;

constexpr const char *row_paths = "/Events/Event | /Events/CatEvents/Event";

struct ParsedDocument {
  xml::Document document;
  bool recovered = false;
};

xml::Document parse(std::string_view text, int options) {
  return xml::Document(
      xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", quiet | options));
}

ParsedDocument parse_display_document(std::string_view text) {
  if (text.size() > INT_MAX)
    return {};
  if (xml::Document strict = parse(text, 0))
    return {std::move(strict), false};
  return {parse(text, XML_PARSE_RECOVER), true};
}

std::vector<xmlNode *> select_nodes(xmlDoc *document, const char *expression) {
  const XPathContext context(xmlXPathNewContext(document));
  const XPathResult result(xmlXPathEvalExpression(xml::chars(expression), context.get()));
  if (!result || result->nodesetval == nullptr)
    return {};
  const xmlNodeSet &set = *result->nodesetval;
  return {set.nodeTab, set.nodeTab + set.nodeNr};
}

/** All of a row but its position, which depends on the whole document. */
std::string content_of_row(xmlNode *event) {
  const XmlBuffer buffer(xmlBufferCreate());
  for (xmlNode *child = xmlFirstElementChild(event); child != nullptr;
       child = xmlNextElementSibling(child))
    if (view_of(child->name) != "Pos")
      xmlNodeDump(buffer.get(), event->doc, child, 0, 0);
  return std::string(view_of(xmlBufferContent(buffer.get())));
}

std::vector<std::string> rows_of(xmlDoc *document) {
  std::vector<std::string> rows;
  for (xmlNode *event : select_nodes(document, row_paths))
    rows.push_back(content_of_row(event));
  std::ranges::sort(rows);
  return rows;
}

/**
 * The rows that the postings must have. A posting that is not well-formed when printed alone has
 * none, since its texts reach into other postings.
 */
std::vector<std::string> expected_rows(const std::vector<std::string> &postings) {
  std::vector<std::string> rows;
  for (const std::string &posting : postings)
    if (const xml::Document alone = parse(posting, 0))
      rows.push_back(content_of_row(xmlDocGetRootElement(alone.get())));
  std::ranges::sort(rows);
  return rows;
}

/** The warning about rows that may be missing or forged; empty when all is well. */
std::string notice_for(const ParsedDocument &parsed, const std::vector<std::string> &postings) {
  const std::vector<std::string> found = rows_of(parsed.document.get());
  const std::vector<std::string> expected = expected_rows(postings);
  if (!parsed.recovered && found == expected && expected.size() == postings.size())
    return {};
  std::vector<std::string> genuine;
  std::ranges::set_intersection(found, expected, std::back_inserter(genuine));
  return "Let op: een posting bevat tekst die deze lijst verstoort. " +
         std::to_string(genuine.size()) + " van de " + std::to_string(postings.size()) +
         " postings zijn teruggevonden; de lijst kan onvolledig zijn of vervalste regels bevatten.";
}

using OwnedDateTime = std::unique_ptr<GDateTime, ReleaseWith<g_date_time_unref>>;

/** How many rows a browser lays out at a time. */
constexpr int rows_of_part = 50;

/** Moves the rows of `list` into elements of their own, each with some of them. */
void divide_rows(xmlNode *list) {
  xmlNode *part = nullptr;
  int rows = 0;
  for (xmlNode *event = xmlFirstElementChild(list); event != nullptr;) {
    xmlNode *next = xmlNextElementSibling(event);
    if (view_of(event->name) == "Part") {  // from a text that disturbs the document
      xmlUnlinkNode(event);
      xmlFreeNode(event);
    } else if (view_of(event->name) == "Event") {
      if (part == nullptr || rows == rows_of_part) {
        part = xmlAddPrevSibling(event,
                                 xmlNewDocNode(list->doc, nullptr, xml::chars("Part"), nullptr));
        rows = 0;
      }
      xmlUnlinkNode(event);
      xmlAddChild(part, event);
      ++rows;
    }
    event = next;
  }
}

std::int64_t number_in(xmlNode *event, std::string_view name) {
  for (xmlNode *child = xmlFirstElementChild(event); child != nullptr;
       child = xmlNextElementSibling(child))
    if (view_of(child->name) == name)
      return leading_number(content_of(child));
  return -1;
}

std::string category_of(xmlNode *event) {
  const auto category = static_cast<gint32>(number_in(event, "Cat"));
  const std::string sub =
      zox_category_get_scat_name(category, static_cast<guint32>(number_in(event, "SCat")));
  return zox_string_category(category) + (sub.empty() ? "" : "/" + sub);
}

/** The date with its year, which the document lacks. */
std::string moment_of(xmlNode *event) {
  const OwnedDateTime moment(g_date_time_new_from_unix_local(number_in(event, "Stamp")));
  const OwnedText text(moment ? g_date_time_format(moment.get(), "%d-%m-%Y %H:%M") : nullptr);
  return text ? text.get() : "";
}

/** Adds to a row what is shown of it in words. */
void describe_row(xmlNode *event) {
  const auto state = static_cast<gint32>(number_in(event, "Status"));
  const std::array<std::pair<const char *, std::string>, 3> words{
      {{"moment", moment_of(event)},
       {"category", category_of(event)},
       {"state", zox_string_status(state)}}};
  for (const auto &[name, value] : words)
    xmlSetProp(event, xml::chars(name), xml::chars(value.c_str()));
}

using Checksum = std::unique_ptr<GChecksum, ReleaseWith<g_checksum_free>>;

/** The source expression with which a policy allows exactly this inline text. */
std::string hash_source(std::string_view text) {
  const Checksum sum(g_checksum_new(G_CHECKSUM_SHA256));
  g_checksum_update(sum.get(), reinterpret_cast<const guchar *>(text.data()),
                    static_cast<gssize>(text.size()));
  std::array<guint8, 32> digest{};
  gsize length = digest.size();
  g_checksum_get_digest(sum.get(), digest.data(), &length);
  const OwnedText encoded(g_base64_encode(digest.data(), digest.size()));
  return std::string("'sha256-") + encoded.get() + "'";
}

std::string policy() {
  return "default-src 'none'; base-uri 'none'; form-action 'none'; style-src " +
         hash_source(page_css) + "; script-src " + hash_source(page_js);
}

/** Applies the style sheet. */
std::optional<std::string> transform(xmlDoc *document, const std::string &notice) {
  xml::Document source = parse(page_xsl, 0);
  if (!source)
    return std::nullopt;
  const StyleSheet sheet(xsltParseStylesheetDoc(source.get()));
  if (!sheet)
    return std::nullopt;
  static_cast<void>(source.release());  // the style sheet owns it now

  const std::unique_ptr<xsltTransformContext, ReleaseWith<xsltFreeTransformContext>> context(
      xsltNewTransformContext(sheet.get(), document));
  const std::array<std::pair<const char *, std::string>, 4> values{
      {{"policy", policy()},
       {"style", std::string(page_css)},
       {"script", std::string(page_js)},
       {"notice", notice}}};
  for (const auto &[name, value] : values)
    xsltQuoteOneUserParam(context.get(), xml::chars(name), xml::chars(value.c_str()));

  const xml::Document page(
      xsltApplyStylesheetUser(sheet.get(), document, nullptr, nullptr, nullptr, context.get()));
  xmlChar *text = nullptr;
  int length = 0;
  if (!page || xsltSaveResultToString(&text, &length, page.get(), sheet.get()) != 0)
    return std::nullopt;
  const xml::Chars owned(text);
  return std::string(view_of(owned.get()));
}

}  // namespace

std::optional<std::string> html_page(std::string_view document,
                                     const std::vector<std::string> &postings) {
  const ParsedDocument parsed = parse_display_document(document);
  if (!parsed.document || xmlDocGetRootElement(parsed.document.get()) == nullptr)
    return std::nullopt;
  const std::string notice = notice_for(parsed, postings);
  // Reducing an element frees the elements in it, so those must not be selected too.
  for (xmlNode *info : select_nodes(parsed.document.get(), "//TagInfo[not(ancestor::TagInfo)]"))
    reduce_tag_info(info);
  for (xmlNode *event : select_nodes(parsed.document.get(), row_paths))
    describe_row(event);
  for (xmlNode *list : select_nodes(parsed.document.get(), "/Events | /Events/CatEvents"))
    divide_rows(list);
  return transform(parsed.document.get(), notice);
}

}  // namespace velkor::ctl
