/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The parts of the display document, each written straight into the growing text. */
#ifndef VELKOR_DISPLAY_PARTS_H
#define VELKOR_DISPLAY_PARTS_H

#include <span>
#include <string_view>

#include <velkor/zox_events_sort.h>

#include "display/lookups.h"
#include "support/text_writer.h"

namespace velkor {

/** What holds for one posting's element beside the posting. */
struct ElementSettings {
  bool indent;
  gint32 position;
  ZoxTextFunc textFunc;
};

/** The element "Event" of one posting. */
void add_event(TextWriter &out, const ZoxEvent &event, const ElementSettings &settings,
               DisplayLookups &lookups) noexcept;

/** The HTML table of a posting's tags; `address` is its link as zox_string_add_http() gives it. */
void add_tag_table(TextWriter &out, const ZoxEvent &event, std::string_view address,
                   DisplayLookups &lookups) noexcept;

/** The script that the page needs, with the names of its images in the data directory. */
void add_page_script(TextWriter &out) noexcept;

/** The whole document as generated at the time `now`. */
ZoxString *events_document(bool filtered, ZoxTextFunc textFunc, gint64 now) noexcept;
/** The document of chosen postings, in the order of `ids`. */
ZoxString *chosen_events_document(std::span<const gint32> ids, ZoxTextFunc textFunc,
                                  gint64 now) noexcept;

}  // namespace velkor

#endif
