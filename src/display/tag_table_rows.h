/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The rows of the HTML table of a posting's tags. */
#ifndef VELKOR_DISPLAY_TAG_TABLE_ROWS_H
#define VELKOR_DISPLAY_TAG_TABLE_ROWS_H

#include <string>
#include <string_view>

#include "support/text_writer.h"

namespace velkor {

namespace tag_row {
inline constexpr std::string_view label = "<TR><TD><B>";
inline constexpr std::string_view unlabelled = "<TR><TD></TD><TD>";
inline constexpr std::string_view value = " :</B></TD><TD>";
inline constexpr std::string_view end = "</TD></TR>";
}  // namespace tag_row

/** A row with a label. */
inline std::string tag_table_row(std::string_view name, std::string_view content) noexcept {
  return std::string(tag_row::label)
      .append(name)
      .append(tag_row::value)
      .append(content)
      .append(tag_row::end);
}

/** A row that goes on with the label above. */
inline std::string tag_table_continuation(std::string_view content) noexcept {
  return std::string(tag_row::unlabelled).append(content).append(tag_row::end);
}

/** A row with a label, written at once. */
inline void add_tag_table_row(TextWriter &out, std::string_view name,
                              std::string_view content) noexcept {
  out.add_all(tag_row::label, name, tag_row::value, content, tag_row::end);
}

}  // namespace velkor

#endif
