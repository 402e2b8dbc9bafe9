/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The page that the command makes of the display document: whatever texts hold, nothing of them
 * becomes active, and the page of harmless texts shows every posting without a notice. */
#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

#include <libxml/HTMLparser.h>
#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events_sort.h>

#include "support/text.h"
#include "support/xml.h"
#include "tests/fuzz/postings.h"
#include "tests/fuzz/session.h"
#include "velkorctl/html/html_page.h"

namespace velkor::fuzz {
namespace {

using Words = std::set<std::string, std::less<>>;

const Words &known_elements() {
  static const Words words{"html", "head",   "meta",    "title",   "style", "script", "body",
                           "h1",   "header", "p",       "main",    "ol",    "li",     "h3",
                           "span", "b",      "section", "details", "table", "tr",     "td",
                           "h2",   "a",      "summary", "br",      "tbody", "div"};
  return words;
}

const Words &known_attributes() {
  static const Words words{"lang",          "charset",    "http-equiv", "content",
                           "name",          "class",      "role",       "data-id",
                           "href",          "rel",        "data-stamp", "data-rating",
                           "data-category", "data-state", "aria-label"};
  return words;
}

/** What the elements of a page tell about it. */
class Page {
public:
  explicit Page(const std::string &text)
      : document_(htmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8",
                                 HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                                     HTML_PARSE_NONET)) {
    std::vector<xmlNode *> pending{xmlDocGetRootElement(document_.get())};
    while (!pending.empty()) {
      xmlNode *node = pending.back();
      pending.pop_back();
      for (; node != nullptr; node = node->next) {
        if (node->type != XML_ELEMENT_NODE)
          continue;
        add(node);
        pending.push_back(node->children);
      }
    }
  }

  [[nodiscard]] int scripts() const { return scripts_; }
  [[nodiscard]] int styles() const { return styles_; }
  [[nodiscard]] bool has_notice() const { return has_notice_; }
  [[nodiscard]] const std::multiset<std::string> &rows() const { return rows_; }

private:
  void add(xmlNode *element) {
    const std::string_view name = xml::name_of(element);
    require(known_elements().contains(name), "the page has the elements of its style sheet only");
    scripts_ += name == "script" ? 1 : 0;
    styles_ += name == "style" ? 1 : 0;
    for (xmlAttr *attribute = element->properties; attribute != nullptr;
         attribute = attribute->next)
      add_attribute(element, xml::chars(attribute->name));
  }

  void add_attribute(xmlNode *element, std::string_view name) {
    require(known_attributes().contains(name), "the page has harmless attributes only");
    const xml::Chars value(xmlGetProp(element, xml::chars(std::string(name).c_str())));
    const std::string_view text = xml::chars(value.get());
    if (name == "data-id")
      rows_.emplace(text);
    if (name == "href")
      require(g_ascii_strncasecmp(text.data(), "http://", 7) == 0 ||
                  g_ascii_strncasecmp(text.data(), "https://", 8) == 0,
              "a link leads to the web");
    has_notice_ = has_notice_ || (name == "role" && text == "alert");
  }

  xml::Document document_;
  int scripts_ = 0;
  int styles_ = 0;
  bool has_notice_ = false;
  std::multiset<std::string> rows_;
};

void require_inert(const Page &page) {
  require(page.scripts() == 1 && page.styles() == 1, "the page has its own script and style only");
}

struct Shown {
  bool per_category;
  bool whole;
  std::vector<std::string> elements;
  std::multiset<std::string> ids;
};

/** As the command does for each posting that it shows. */
gint add_shown(gpointer /*key*/, ZoxEvent *posting, gpointer data) {
  auto &shown = *static_cast<Shown *>(data);
  shown.whole = shown.whole && prints_whole(*posting);
  if (shown.per_category && (posting->cat < 0 || posting->cat > 3))
    return 0;
  const OwnedString element(zox_events_sort_print(posting, shown.per_category ? 1 : 0, 0, nullptr));
  shown.elements.emplace_back(view_of(element.get()));
  shown.ids.insert(std::to_string(posting->postId));
  return 0;
}

/** The page of the list. */
void check_list(Input &input) {
  apply_view(input);
  const OwnedFilter view(zox_eventlist_get_filter(core->eventlist));
  fill_list(input);
  zox_eventlist_apply_filter(core->eventlist, view.get());
  const OwnedString document(zox_events_sort_total(nullptr));
  Shown shown{view->perCategory != 0, true, {}, {}};
  zox_eventlist_foreach(core->eventlist, 0, 1, add_shown, &shown);

  const auto text = ctl::html_page(view_of(document.get()), shown.elements);
  require(text || !shown.whole, "harmless texts make a page");
  if (!text)
    return;
  const Page page(*text);
  require_inert(page);
  if (shown.whole)
    require(!page.has_notice() && page.rows() == shown.ids, "every posting is shown as it is");
}

/** The page of any document at all. */
void check_document(Input &input) {
  if (const auto text = ctl::html_page(input.rest(), {}))
    if (text->find("Content-Security-Policy") != std::string::npos)
      require_inert(Page(*text));
}

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  fuzz::Input input(data, size);
  if (input.flag())
    fuzz::check_document(input);
  else
    fuzz::check_list(input);
  return 0;
}
