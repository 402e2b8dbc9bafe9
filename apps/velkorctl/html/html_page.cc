/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/html/html_page.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <memory>

#include <glib.h>
#include <libxml/parser.h>
#include <libxslt/transform.h>
#include <libxslt/variables.h>
#include <libxslt/xsltutils.h>

#include "page_files.h"
#include "velkorctl/html/tag_info.h"
#include "velkorctl/html/xml_owned.h"

namespace velkor::ctl {
namespace {

constexpr int quiet = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;

struct ParsedDocument {
  XmlDocument document;
  bool recovered = false;
};

XmlDocument parse(std::string_view text, int options) {
  return XmlDocument(
      xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", quiet | options));
}

ParsedDocument parse_display_document(std::string_view text) {
  if (text.size() > INT_MAX)
    return {};
  if (XmlDocument strict = parse(text, 0))
    return {std::move(strict), false};
  return {parse(text, XML_PARSE_RECOVER), true};
}

std::vector<int> numbers_of_rows(xmlDoc *document) {
  std::vector<int> numbers;
  for (const xmlNode *event : select_nodes(document, "/Events/Event | /Events/CatEvents/Event")) {
    const xmlNode *child = xmlFirstElementChild(const_cast<xmlNode *>(event));
    const bool has_number = child != nullptr && view_of(child->name) == "PostID";
    numbers.push_back(has_number ? std::atoi(content_of(child).c_str()) : 0);
  }
  return numbers;
}

/** What the reader of the page must know about rows that may be missing or forged. */
std::string notice_for(bool recovered, std::vector<int> found, std::vector<int> expected) {
  std::ranges::sort(found);
  std::ranges::sort(expected);
  if (!recovered && found == expected)
    return {};
  std::vector<int> genuine;
  std::ranges::set_intersection(found, expected, std::back_inserter(genuine));
  return "Let op: een posting bevat tekst die deze lijst verstoort. " +
         std::to_string(genuine.size()) + " van de " + std::to_string(expected.size()) +
         " postings zijn teruggevonden; de lijst kan onvolledig zijn of vervalste regels bevatten.";
}

using Checksum = std::unique_ptr<GChecksum, ReleaseWith<g_checksum_free>>;

/** The source expression by which a policy allows exactly this inline text. */
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

/** The parameters of the style sheet, as libxslt takes them: name, value, ..., null. */
std::optional<std::string> transform(xmlDoc *document, const std::string &notice) {
  XmlDocument source = parse(page_xsl, 0);
  if (!source)
    return std::nullopt;
  const StyleSheet sheet(xsltParseStylesheetDoc(source.get()));
  if (!sheet)
    return std::nullopt;
  source.release();  // the style sheet owns it from here on

  const std::unique_ptr<xsltTransformContext, ReleaseWith<xsltFreeTransformContext>> context(
      xsltNewTransformContext(sheet.get(), document));
  const std::array<std::pair<const char *, std::string>, 4> values{
      {{"policy", policy()}, {"style", page_css}, {"script", page_js}, {"notice", notice}}};
  for (const auto &[name, value] : values)
    xsltQuoteOneUserParam(context.get(), xml_chars(name), xml_chars(value.c_str()));

  const XmlDocument page(
      xsltApplyStylesheetUser(sheet.get(), document, nullptr, nullptr, nullptr, context.get()));
  xmlChar *text = nullptr;
  int length = 0;
  if (!page || xsltSaveResultToString(&text, &length, page.get(), sheet.get()) != 0)
    return std::nullopt;
  const XmlText owned(text);
  return std::string(view_of(owned.get()));
}

}  // namespace

std::vector<xmlNode *> select_nodes(xmlDoc *document, const char *expression) {
  const XPathContext context(xmlXPathNewContext(document));
  const XPathResult result(xmlXPathEvalExpression(xml_chars(expression), context.get()));
  if (!result || result->nodesetval == nullptr)
    return {};
  const xmlNodeSet &set = *result->nodesetval;
  return {set.nodeTab, set.nodeTab + set.nodeNr};
}

std::optional<std::string> html_page(std::string_view document, std::vector<int> expected) {
  const ParsedDocument parsed = parse_display_document(document);
  if (!parsed.document || xmlDocGetRootElement(parsed.document.get()) == nullptr)
    return std::nullopt;
  for (xmlNode *info : select_nodes(parsed.document.get(), "//TagInfo"))
    reduce_tag_info(info);
  const std::string notice =
      notice_for(parsed.recovered, numbers_of_rows(parsed.document.get()), std::move(expected));
  return transform(parsed.document.get(), notice);
}

}  // namespace velkor::ctl
