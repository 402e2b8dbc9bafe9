/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_sort.h>

#include <array>
#include <ctime>
#include <optional>
#include <span>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_filter.h>
#include <velkor/zox_string.h>
#include <velkor/zox_watchlist.h>

#include "display/parts.h"
#include "filter/filter_record.h"
#include "posting/event_record.h"
#include "store/event_table.h"
#include "store/event_walk.h"
#include "support/assertion.h"
#include "support/rw_lock.h"

namespace velkor {
namespace {

/** What fits into a line of the head: anything longer is cut there. */
constexpr std::size_t head_line_limit = 8191;

constexpr std::array sort_modes{"Stamp", "Title", "Poster", "Rating"};

/** The opening lines of the main categories, with names of the page's own. */
constexpr std::array category_openings{
    "\t<CatEvents catName=\"Beeld\">\n",
    "\t<CatEvents catName=\"Geluid\">\n",
    "\t<CatEvents catName=\"Games\">\n",
    "\t<CatEvents catName=\"Apps\">\n",
};

constexpr gint32 every_category = -1;

/** The filter applied last; an empty one before any was. */
OwnedFilter active_filter() noexcept {
  OwnedFilter filter(zox_eventlist_get_filter(core->eventlist));
  return filter ? std::move(filter) : OwnedFilter(zox_filter_new_filter());
}

/** Whether printing this posting would hand one of its texts to a conversion. */
bool has_converted_text(const ZoxEvent &event) noexcept {
  return event.ann != nullptr || event.des != nullptr || event.sig != nullptr ||
         event.forum != nullptr;
}

/** The postings of a document: those of the list, or chosen ones. */
struct Postings {
  bool filtered;
  std::optional<std::span<const gint32>> ids;
};

/** One display document while it is being written. */
class Document {
public:
  Document(Postings postings, ZoxTextFunc textFunc) noexcept
      : postings_(postings), textFunc_(textFunc), filter_(active_filter()) {}

  ZoxString *write(gint64 now) noexcept;

private:
  void add_sort_instructions() noexcept;
  void add_head(gint64 now) noexcept;
  void add_category(gint32 category) noexcept;
  gint32 add_events(gint32 category, bool indent) noexcept;
  gint32 add_chosen_events(gint32 category, bool indent) noexcept;
  bool add_held_event(ZOXEventObject &object, gint32 category, bool indent,
                      gint32 position) noexcept;

  const Postings postings_;
  const ZoxTextFunc textFunc_;
  const OwnedFilter filter_;
  DisplayLookups lookups_;
  TextWriter out_;
  LineWriter lines_{out_};
};

ZoxString *Document::write(gint64 now) noexcept {
  out_.add("<Events>\n");
  if (filter_->perCategory != 0) {
    add_head(now);
    for (gint32 category = 0; category < gint32{category_openings.size()}; ++category)
      add_category(category);
  } else {
    add_sort_instructions();
    add_head(now);
    add_events(every_category, false);
  }
  out_.add("</Events>\n");
  return out_.release();
}

void Document::add_sort_instructions() noexcept {
  const OwnedString sortTags(zox_events_sort_apply_filter(filter_.get()));
  ZOX_ASSERT_IN(zox_events_sort, sortTags, "sortTags");
  out_.add(sortTags->str);
}

void Document::add_head(gint64 now) noexcept {
  lines_.number_line({"AantalEvents", 1},
                     static_cast<gint32>(postings_.ids
                                             ? postings_.ids->size()
                                             : zox_eventlist_get_count(core->eventlist, 1)));
  const OwnedText date(zox_string_date(now));
  lines_.cdata_line({"DateTimeGenerated", 1}, date ? date.get() : "(null)");
  lines_.number_line({"PrevCheck", 1}, static_cast<gint32>(core->config->prevCheck));
  const OwnedString data(zox_watchlist_print());
  ZOX_ASSERT_IN(zox_events_sort, data, "data");
  out_.add(data->str);
  const std::size_t script = out_.size();
  add_page_script(out_);
  out_.cut(script, head_line_limit);
}

void Document::add_category(gint32 category) noexcept {
  out_.add(category_openings[static_cast<std::size_t>(category)]);
  add_sort_instructions();
  const gint32 count = add_events(category, true);
  lines_.number_line({"AantalEvents"}, count);
  out_.add("\t</CatEvents>\n");
}

/** In the order of the choice; tells how many there were. */
gint32 Document::add_chosen_events(gint32 category, bool indent) noexcept {
  ZOXEventlist &list = *core->eventlist;
  const ReadLock lock(list.lock);
  if (list.tree == nullptr)
    return 0;
  gint32 count = 0;
  for (const gint32 id : *postings_.ids) {
    ZOXEventObject *object = find_object(list.tree, id);
    if (object != nullptr && add_held_event(*object, category, indent, count))
      ++count;
  }
  return count;
}

/** The postings of a category, by default in the list's walking order; tells how many there were.
 */
gint32 Document::add_events(gint32 category, bool indent) noexcept {
  if (postings_.ids)
    return add_chosen_events(category, indent);
  ZOXEventlist &list = *core->eventlist;
  const ReadLock lock(list.lock);
  GHashTable *table = postings_.filtered ? list.filtered : list.tree;
  if (table == nullptr)
    return 0;
  gint32 count = 0;
  for_each_object(table, [&](gpointer, ZOXEventObject *object) {
    if (add_held_event(*object, category, indent, count))
      ++count;
  });
  return count;
}

/**
 * Prints a posting where it is held, since a copy of each would take as long again. Only the
 * front end's conversion, which may do what it likes with its texts, works on a copy, with the
 * posting's lock released.
 */
bool Document::add_held_event(ZOXEventObject &object, gint32 category, bool indent,
                              gint32 position) noexcept {
  const ElementSettings settings{indent, position, textFunc_};
  OwnedEvent copy;
  {
    const ReadLock lock(object.lock);
    const ZoxEvent &event = *object.event;
    if (category != every_category && category != event.cat)
      return false;
    if (textFunc_ == nullptr || !has_converted_text(event)) {
      add_event(out_, event, settings, lookups_);
      return true;
    }
    copy.reset(zox_event_duplicate(&event));
  }
  add_event(out_, *copy, settings, lookups_);
  return true;
}

}  // namespace

ZoxString *events_document(bool filtered, ZoxTextFunc textFunc, gint64 now) noexcept {
  ZOX_ASSERT_IN(zox_events_sort, core, "core");
  ZOX_ASSERT_IN(zox_events_sort, core->config, "core->config");
  return Document({filtered, std::nullopt}, textFunc).write(now);
}

ZoxString *chosen_events_document(std::span<const gint32> ids, ZoxTextFunc textFunc,
                                  gint64 now) noexcept {
  ZOX_ASSERT_IN(zox_events_sort_ids, core, "core");
  ZOX_ASSERT_IN(zox_events_sort_ids, core->config, "core->config");
  return Document({false, ids}, textFunc).write(now);
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxString *zox_events_sort_filtered(ZoxTextFunc textFunc) {
  return zox_events_sort(1, textFunc);
}

ZoxString *zox_events_sort_total(ZoxTextFunc textFunc) {
  return zox_events_sort(0, textFunc);
}

ZoxString *zox_events_sort(gint32 filtered, ZoxTextFunc textFunc) {
  return events_document(filtered == 1, textFunc, std::time(nullptr));
}

ZoxString *zox_events_sort_ids(const gint32 *ids, guint32 count, ZoxTextFunc textFunc) {
  return chosen_events_document({ids, count}, textFunc, std::time(nullptr));
}

ZoxString *zox_events_sort_apply_filter(const ZoxFilter *filter) {
  ZOX_ASSERT(filter);
  TextWriter out;
  LineWriter lines(out);
  const auto mode = static_cast<std::size_t>(filter->sortMode);
  if (mode < sort_modes.size())
    lines.word_line({"SortMode", 1}, sort_modes[mode]);
  else
    g_warning("zox_events_sort_apply_filter(): Onbekend sorteerveld %i\n", filter->sortMode);
  lines.word_line({"SortRichting", 1}, filter->sortAscending != 0 ? "ascending" : "descending");
  return out.release();
}

}  // extern "C"
