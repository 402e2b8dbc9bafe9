/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_string.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <ctime>
#include <string>
#include <string_view>

#include "support/assertion.h"
#include "support/owned.h"

namespace velkor {
namespace {

constexpr std::array category_names{"Beeld", "Geluid", "Spelletjes", "Applicaties"};

/** The words of the states from ZOX_STATUS_UNKNOWN on. */
constexpr std::array status_words{"Onbekend",
                                  "",
                                  "Verwijderd",
                                  "Verwijderd",
                                  "Spot",
                                  "Ready",
                                  "Aangekondigd",
                                  "Bezig met uploaden",
                                  "Niet meer ondersteund"};

/** The number's place in `words`, or the empty text when it has none. */
template <std::size_t Size>
const char *word_at(const std::array<const char *, Size> &words, gint64 place) noexcept {
  return place >= 0 && place < gint64{Size} ? words[static_cast<std::size_t>(place)] : "";
}

constexpr std::string_view newsgroup_prefix = "alt.binaries";
constexpr const char *http_prefix = "http://";

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxString *zox_string_new(const char *text) {
  return text == nullptr ? nullptr : g_string_new(text);
}

const char *zox_string_value(const ZoxString *s) {
  return chars_or_null(s);
}

ZoxString *zox_string_integer(gint32 n) {
  // Ten characters are kept, so that a negative number of ten digits loses its last one.
  constexpr std::size_t limit = 10;
  const std::string digits = std::to_string(n);
  return g_string_new_len(digits.data(), static_cast<gssize>(std::min(digits.size(), limit)));
}

const char *zox_string_category(gint32 n) {
  return word_at(category_names, n);
}

const char *zox_string_status(gint32 n) {
  return word_at(status_words, gint64{n} - ZOX_STATUS_UNKNOWN);
}

char *zox_string_strip_newsgroup(const ZoxString *s) {
  const std::string_view name = s->str;
  if (!name.starts_with(newsgroup_prefix))
    return g_strdup(s->str);
  if (name.size() == newsgroup_prefix.size())
    return g_strdup("a.b");
  return g_strconcat("a.b.", s->str + newsgroup_prefix.size() + 1, nullptr);
}

char *zox_string_upcase(const char *text) {
  return g_ascii_strup(text, -1);
}

ZoxString *zox_string_add_http(const ZoxString *s) {
  if (s == nullptr || s->len == 0)
    return g_string_new("");
  const bool has_prefix = g_ascii_strncasecmp(s->str, http_prefix, std::strlen(http_prefix)) == 0;
  ZoxString *address = g_string_new(has_prefix ? "" : http_prefix);
  return g_string_append_len(address, s->str, static_cast<gssize>(s->len));
}

char *zox_string_date(gint64 seconds) {
  const std::time_t moment = seconds;
  std::tm local{};
  tzset();  // the time zone may have changed, and localtime_r() need not look
  if (localtime_r(&moment, &local) == nullptr) {
    g_warning("zox_string_date(): datum kan niet geparsed worden\n");
    return nullptr;
  }
  std::array<char, 32> date{};
  std::strftime(date.data(), date.size(), "%d-%m (%H:%M)", &local);
  return g_strdup(date.data());
}

ZoxString *zox_string_replace(const ZoxString *source, const char *search,
                              const char *replacement) {
  ZOX_ASSERT_AS(source != nullptr, "bron");
  ZOX_ASSERT(*search != '\0');
  const OwnedText upper_source(zox_string_upcase(source->str));
  const OwnedText upper_search(zox_string_upcase(search));
  const std::string_view text = upper_source.get();
  const std::string_view wanted = upper_search.get();
  ZoxString *result = g_string_sized_new(source->len);
  std::size_t position = 0;
  for (auto hit = text.find(wanted); hit != std::string_view::npos;
       hit = text.find(wanted, position)) {
    g_string_append_len(result, source->str + position, static_cast<gssize>(hit - position));
    g_string_append(result, replacement);
    position = hit + wanted.size();
  }
  return g_string_append(result, source->str + position);
}

}  // extern "C"
