/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl list: the cached postings that a filter accepts. */
#include <algorithm>
#include <array>
#include <ctime>
#include <string>
#include <vector>

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

/** The number of the order in a filter; -1, which the document leaves out, when it has none. */
gint32 sort_mode(const std::string &field) noexcept {
  constexpr std::array<const char *, 4> fields{"date", "title", "poster", "rating"};
  const auto *found = std::ranges::find(fields, field);
  return found == fields.end() ? -1 : static_cast<gint32>(found - fields.begin());
}

/** The postings for a document, which names the order and has blocks as its filter says. */
std::vector<gint32> select_for_document(ZoxFilter &filter, const Context &context) {
  const Order order = order_of(context.arguments);
  filter.perCategory = context.arguments.has("--per-category") ? 1 : 0;
  filter.sortMode = sort_mode(order.sort.value_or("date"));
  filter.sortAscending = order.sort.has_value() != order.reverse ? 1 : 0;
  return select_postings(filter, order);
}

OwnedString display_document(const std::vector<gint32> &ids) {
  return OwnedString(zox_events_sort_ids(ids.data(), static_cast<guint32>(ids.size()), nullptr));
}

void print_xml(ZoxFilter &filter, const Context &context) {
  context.out.write_document(view_of(display_document(select_for_document(filter, context)).get()));
}

/** The elements of the postings in a display document, each printed alone. */
std::vector<std::string> shown_elements(const std::vector<gint32> &ids, bool per_category) {
  std::vector<std::string> elements;
  const QuietLog quiet;  // printing the document has given the warnings
  for (const gint32 id : ids) {
    const OwnedEvent posting = find_posting(id);
    if (!posting || (per_category && (posting->cat < 0 || posting->cat > 3)))
      continue;
    const OwnedString text(zox_events_sort_print(posting.get(), per_category ? 1 : 0, 0, nullptr));
    elements.emplace_back(view_of(text.get()));
  }
  return elements;
}

/** A page for a browser. */
void print_html(ZoxFilter &filter, const Context &context) {
  const std::vector<gint32> ids = select_for_document(filter, context);
  const OwnedString document = display_document(ids);
  const auto page =
      html_page(view_of(document.get()), shown_elements(ids, filter.perCategory != 0));
  if (!page)
    throw Failure(Exit::failed, "the page cannot be made of these postings");
  context.out.write_document(*page);
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  const OwnedFilter filter = filter_of(context.arguments, std::time(nullptr));
  const Format format = format_of(context.arguments);
  if (format == Format::xml)
    print_xml(*filter, context);
  else if (format == Format::html)
    print_html(*filter, context);
  else
    print_postings(select_postings(*filter, order_of(context.arguments)), context);
  return Exit::ok;
}

}  // namespace

Command list_command() {
  std::vector<Option> options = filter_options();
  options.push_back({"--per-category", "", "With xml or html, print a block per main category"});
  return with_output(
      {"list", "Print the cached postings that the options select", {}, options, run},
      posting_records(), {"xml", "html"});
}

}  // namespace velkor::ctl
