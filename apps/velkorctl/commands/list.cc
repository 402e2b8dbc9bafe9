/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl list: the cached postings that a filter accepts. */
#include <ctime>
#include <limits>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events_sort.h>

#include "support/text.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/filter_options.h"
#include "velkorctl/html/html_page.h"
#include "velkorctl/messages.h"
#include "velkorctl/postings.h"

namespace velkor::ctl {
namespace {

void apply_limit(std::vector<gint32> &ids, const Arguments &arguments) {
  const auto given = arguments.value("--limit");
  if (!given)
    return;
  const auto limit = static_cast<std::size_t>(
      number_in_range(*given, 1, std::numeric_limits<gint32>::max(), "--limit"));
  if (ids.size() > limit)
    ids.resize(limit);
}

/** The display document of the postings that the filter accepts. */
OwnedString display_document(ZoxFilter &filter, const Context &context) {
  if (context.arguments.has("--limit"))
    throw usage_error("--limit cannot be combined with --format xml or html");
  filter.perCategory = context.arguments.has("--per-category") ? 1 : 0;
  zox_eventlist_apply_filter(core->eventlist, &filter);
  return OwnedString(zox_events_sort_filtered(nullptr));
}

void print_xml(ZoxFilter &filter, const Context &context) {
  context.out.write_document(view_of(display_document(filter, context).get()));
}

/** The elements of the postings in a display document, each printed alone. */
struct Elements {
  bool per_category;
  std::vector<std::string> texts;
};

gint print_alone(gpointer /*key*/, ZoxEvent *posting, gpointer data) noexcept {
  auto &into = *static_cast<Elements *>(data);
  if (into.per_category && (posting->cat < 0 || posting->cat > 3))
    return 0;
  const OwnedString text(zox_events_sort_print(posting, into.per_category ? 1 : 0, 0, nullptr));
  into.texts.emplace_back(view_of(text.get()));
  return 0;
}

std::vector<std::string> shown_elements(bool per_category) {
  Elements elements{per_category, {}};
  const QuietLog quiet;  // printing the document has given the warnings
  zox_eventlist_foreach(core->eventlist, 1, 1, print_alone, &elements);
  return elements.texts;
}

/** A page for a browser, sorted as the display document asks for. */
void print_html(ZoxFilter &filter, const Context &context) {
  const OwnedString document = display_document(filter, context);
  const auto page = html_page(view_of(document.get()), shown_elements(filter.perCategory != 0));
  if (!page)
    throw Failure(Exit::failed, "the page cannot be made of these postings");
  context.out.write_document(*page);
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  const OwnedFilter filter = filter_of(context.arguments, std::time(nullptr));
  const auto format = context.arguments.value("--format");
  if (format == "xml" || format == "html") {
    (format == "xml" ? print_xml : print_html)(*filter, context);
    return Exit::ok;
  }
  std::vector<gint32> ids = select_postings(*filter);
  apply_limit(ids, context.arguments);
  print_postings(ids, context);
  return Exit::ok;
}

}  // namespace

Command list_command() {
  std::vector<Option> options = filter_options();
  options.push_back({"-l,--limit", "N", "Print at most N postings"});
  options.push_back(format_option(
      "Output format: table (default), json, xml (the display document) or html (a page of it)",
      {"table", "json", "xml", "html"}));
  options.push_back({"--per-category", "", "With xml or html, print a block per main category"});
  options.push_back(no_header_option());
  return {"list", "Print the cached postings that the options select", {}, options, run};
}

}  // namespace velkor::ctl
