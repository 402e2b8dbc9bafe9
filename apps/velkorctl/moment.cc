/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/moment.h"

#include <array>
#include <ctime>
#include <memory>
#include <utility>

#include "support/numbers.h"
#include "support/owned.h"
#include "velkorctl/arguments.h"

namespace velkor::ctl {
namespace {

using OwnedDateTime = std::unique_ptr<GDateTime, ReleaseWith<g_date_time_unref>>;

std::optional<std::int64_t> parse_age(const std::string &text, std::int64_t now) {
  static constexpr std::array<std::pair<char, std::int64_t>, 4> units{
      {{'m', 60}, {'h', 3600}, {'d', 86400}, {'w', 7 * 86400}}};
  constexpr std::int64_t max_number = 1'000'000;
  const auto number = whole_number(std::string_view(text).substr(0, text.size() - 1));
  for (const auto &[letter, seconds] : units)
    if (text.back() == letter && number && *number >= 0 && *number <= max_number)
      return now - *number * seconds;
  return std::nullopt;
}

std::optional<std::int64_t> unix_time(OwnedDateTime time, bool whole_day, DayEdge edge) {
  if (time && whole_day && edge == DayEdge::last_second) {
    const OwnedDateTime next(g_date_time_add_days(time.get(), 1));
    return g_date_time_to_unix(next.get()) - 1;
  }
  return time ? std::optional(g_date_time_to_unix(time.get())) : std::nullopt;
}

std::optional<std::int64_t> parse_day_name(const std::string &text, std::int64_t now,
                                           DayEdge edge) {
  if (text != "today" && text != "yesterday")
    return std::nullopt;
  const OwnedDateTime moment(g_date_time_new_from_unix_local(now));
  const OwnedDateTime day(g_date_time_add_days(moment.get(), text == "today" ? 0 : -1));
  int year = 0;
  int month = 0;
  int number = 0;
  g_date_time_get_ymd(day.get(), &year, &month, &number);
  return unix_time(OwnedDateTime(g_date_time_new_local(year, month, number, 0, 0, 0)), true, edge);
}

std::optional<std::int64_t> parse_date(const std::string &text, DayEdge edge) {
  static constexpr std::array forms{"%Y-%m-%d", "%Y-%m-%d %H:%M", "%Y-%m-%dT%H:%M",
                                    "%Y-%m-%d %H:%M:%S", "%Y-%m-%dT%H:%M:%S"};
  for (const char *form : forms) {
    std::tm time{};
    const char *end = strptime(text.c_str(), form, &time);
    if (end != nullptr && *end == '\0')
      return unix_time(
          OwnedDateTime(g_date_time_new_local(time.tm_year + 1900, time.tm_mon + 1, time.tm_mday,
                                              time.tm_hour, time.tm_min, time.tm_sec)),
          form == forms.front(), edge);
  }
  return std::nullopt;
}

std::string local_time(std::int64_t seconds, const char *form) {
  const OwnedDateTime time(g_date_time_new_from_unix_local(seconds));
  return time ? OwnedText(g_date_time_format(time.get(), form)).get() : "";
}

}  // namespace

std::optional<std::int64_t> parse_moment(const std::string &text, std::int64_t now, DayEdge edge) {
  if (text.empty())
    return std::nullopt;
  if (text.front() == '@')
    return whole_number(std::string_view(text).substr(1));
  if (const auto day = parse_day_name(text, now, edge))
    return day;
  if (const auto age = parse_age(text, now))
    return age;
  return parse_date(text, edge);
}

std::string show_moment(std::int64_t seconds) {
  return local_time(seconds, "%Y-%m-%d %H:%M");
}

std::string iso_moment(std::int64_t seconds) {
  return local_time(seconds, "%Y-%m-%dT%H:%M:%S%:z");
}

}  // namespace velkor::ctl
