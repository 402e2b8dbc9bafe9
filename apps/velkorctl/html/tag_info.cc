/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/html/tag_info.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <climits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <libxml/HTMLparser.h>

#include "velkorctl/html/xml_owned.h"

namespace velkor::ctl {
namespace {

constexpr std::string_view link_prefix = "iets.html#link";
constexpr int html_options = HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                             HTML_PARSE_NONET | HTML_PARSE_NODEFDTD;

bool is_one_of(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::ranges::find(names, name) != names.end();
}

bool starts_with_ignoring_case(std::string_view text, std::string_view lower) {
  return text.size() >= lower.size() &&
         std::ranges::equal(text.substr(0, lower.size()), lower, [](char found, char wanted) {
           return std::tolower(static_cast<unsigned char>(found)) == wanted;
         });
}

/** Whether the host of the address has only characters that host names have. */
bool has_plain_host(std::string_view address) {
  const std::string_view rest = address.substr(address.find("//") + 2);
  const std::string_view host = rest.substr(0, rest.find_first_of("/?#"));
  return !host.empty() && std::ranges::all_of(host, [](char letter) {
    const auto byte = static_cast<unsigned char>(letter);
    return std::isalnum(byte) != 0 || byte >= 0x80 ||
           std::string_view(".-_:[]").find(letter) != std::string_view::npos;
  });
}

/** The address in a link of the library's form, or empty for any other link. */
std::string address_of(const xmlNode *anchor) {
  const xml::Chars href(xmlGetProp(anchor, xml::chars("href")));
  std::string_view address = view_of(href.get());
  if (address.substr(0, link_prefix.size()) != link_prefix)
    return {};
  address.remove_prefix(link_prefix.size());
  const bool is_web = starts_with_ignoring_case(address, "http://") ||
                      starts_with_ignoring_case(address, "https://");
  return is_web && has_plain_host(address) ? std::string(address) : std::string();
}

/** The node that the content of an element is copied to; null when nothing of it is copied. */
xmlNode *copy_element(xmlNode *element, xmlNode *target) {
  const std::string_view name = view_of(element->name);
  if (is_one_of(name, {"script", "style", "template", "noscript"}))
    return nullptr;
  if (is_one_of(name, {"table", "tr", "td", "b"}))
    return xmlNewChild(target, nullptr, element->name, nullptr);
  const std::string address = name == "a" ? address_of(element) : std::string();
  if (address.empty())
    return target;
  xmlNode *link = xmlNewChild(target, nullptr, element->name, nullptr);
  xmlNewProp(link, xml::chars("href"), xml::chars(address.c_str()));
  xmlNewProp(link, xml::chars("rel"), xml::chars("noopener noreferrer nofollow"));
  return link;
}

/** Copies the nodes from `first` on, in document order, as far as they are allowed. */
void copy_reduced(xmlNode *first, xmlNode *target) {
  std::vector<std::pair<xmlNode *, xmlNode *>> pending{{first, target}};
  while (!pending.empty()) {
    const auto [node, parent] = pending.back();
    pending.pop_back();
    if (node == nullptr)
      continue;
    pending.emplace_back(node->next, parent);
    if (node->type == XML_TEXT_NODE)
      xmlAddChild(parent, xmlNewText(node->content));
    if (node->type != XML_ELEMENT_NODE)
      continue;
    if (xmlNode *copy = copy_element(node, parent))
      pending.emplace_back(node->children, copy);
  }
}

}  // namespace

void reduce_tag_info(xmlNode *element) {
  const std::string text = content_of(element);
  while (element->children != nullptr) {
    xmlNode *child = element->children;
    xmlUnlinkNode(child);
    xmlFreeNode(child);
  }
  if (text.empty() || text.size() > INT_MAX)
    return;
  const xml::Document html(
      htmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", html_options));
  if (html)
    copy_reduced(html->children, element);
}

}  // namespace velkor::ctl
