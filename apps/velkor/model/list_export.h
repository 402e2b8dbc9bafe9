/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The rows that a list shows as a document. */
#ifndef VELKOR_APP_MODEL_LIST_EXPORT_H
#define VELKOR_APP_MODEL_LIST_EXPORT_H

#include <array>
#include <string>

#include "model/order.h"
#include "model/view_maker.h"

namespace velkor::app {

/** An object with the array "items": "id", "title", "category", "poster", "stamp" in seconds since
 * 1970, "rating" and "status" of each, in the order of the list. */
std::string list_as_json(const SpotView &view);

/** The words of an HTML page, in the user's language. */
struct PageWords {
  std::string title{};
  std::array<std::string, column_count> columns{};
  std::string time_format{};  // as g_date_time_format() takes it
};

/** A page with a table, in the order of the list. */
std::string list_as_html(const SpotView &view, const PageWords &words);

}  // namespace velkor::app

#endif
