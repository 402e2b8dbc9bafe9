/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The display document of a list: it is well-formed and holds each posting once. */
#include <algorithm>
#include <set>
#include <string>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events_sort.h>

#include "support/text.h"
#include "support/xml.h"
#include "tests/fuzz/postings.h"
#include "tests/fuzz/session.h"

namespace velkor::fuzz {
namespace {

std::string content_of(xmlNode *event, const char *name) {
  for (xmlNode *node : xml::Siblings(event->children)) {
    if (!xml::is_named_exactly(node, name))
      continue;
    const xml::Chars content(xmlNodeGetContent(node));
    return xml::chars(content.get());
  }
  return "missing";
}

/** The title as a document's reader gets it: line ends become line feeds. */
bool is_title(const std::string &shown, const GString *title) {
  const std::string expected(title == nullptr ? "(null)" : view_of(title));
  return expected.find('\r') != std::string::npos || shown == expected;
}

/** What the document shows, against the list. */
class Shown {
public:
  explicit Shown(const Postings &listed) : listed_(listed) {}

  void add_all(xmlNode *parent) {
    for (xmlNode *node : xml::Siblings(parent->children)) {
      if (xml::is_named_exactly(node, "CatEvents"))
        add_all(node);
      else if (xml::is_named_exactly(node, "Event"))
        add(node);
    }
  }
  [[nodiscard]] std::size_t count() const { return ids_.size(); }

private:
  void add(xmlNode *event) {
    const gint32 id = leading_integer(content_of(event, "PostID").c_str());
    const auto listed = listed_.find(id);
    require(listed != listed_.end(), "what is shown is in the list");
    require(ids_.insert(id).second, "a posting is shown once");
    require(is_title(content_of(event, "Title"), listed->second->title), "the title is shown");
  }

  const Postings &listed_;
  std::set<gint32> ids_;
};

std::size_t expected_count(const Postings &listed, bool per_category) {
  return static_cast<std::size_t>(std::ranges::count_if(listed, [&](const auto &entry) {
    return !per_category || (entry.second->cat >= 0 && entry.second->cat <= 3);
  }));
}

ZoxString *with_breaks(ZoxString *text) {
  return g_string_new((std::string(text->str) + "<BR />").c_str());
}

void check(const OwnedString &text) {
  const Postings listed = listed_postings();
  if (!std::ranges::all_of(listed, [](const auto &entry) { return prints_whole(*entry.second); }))
    return;
  const xml::Document document = xml::parse(view_of(text.get()));
  require(document != nullptr, "the document is well-formed");
  Shown shown(listed);
  shown.add_all(xmlDocGetRootElement(document.get()));
  const OwnedFilter filter(zox_eventlist_get_filter(core->eventlist));
  require(shown.count() == expected_count(listed, filter->perCategory != 0),
          "every posting is shown");
}

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  fuzz::Input input(data, size);
  const ZoxTextFunc convert = input.flag() ? fuzz::with_breaks : nullptr;
  fuzz::apply_view(input);
  const OwnedFilter view(zox_eventlist_get_filter(core->eventlist));
  fuzz::fill_list(input);
  zox_eventlist_apply_filter(core->eventlist, view.get());
  fuzz::check(OwnedString(zox_events_sort_total(convert)));
  return 0;
}
