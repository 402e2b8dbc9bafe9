/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/translation.h"

#include <cstddef>
#include <memory>
#include <string>

#include <langinfo.h>

#include "support/owned.h"

namespace velkor::app {
namespace {

using OwnedDateTime = std::unique_ptr<GDateTime, ReleaseWith<g_date_time_unref>>;

}  // namespace

Glib::ustring number_text(std::int64_t number) {
  constexpr std::size_t digits = 3;
  const std::string separator = nl_langinfo(THOUSEP);
  std::string text = std::to_string(number);
  const std::size_t sign = number < 0 ? 1 : 0;
  for (std::size_t place = text.size(); place > sign + digits;)
    text.insert(place -= digits, separator);
  return text;
}

Glib::ustring moment_text(std::int64_t seconds) {
  const OwnedDateTime time(g_date_time_new_from_unix_local(seconds));
  // Translators: a date and time as g_date_time_format() takes it, short enough for a column.
  const OwnedText text(time ? g_date_time_format(time.get(), _("%Y-%m-%d %H:%M")) : nullptr);
  return text ? text.get() : "";
}

Glib::ustring counted(const char *one, const char *many, std::int64_t number) {
  const char *form = ngettext(one, many, static_cast<unsigned long>(number));
  return Glib::ustring::compose(form, number_text(number));
}

}  // namespace velkor::app
