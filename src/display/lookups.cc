/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "display/lookups.h"

#include <ctime>
#include <utility>

#include <velkor/zox_groups.h>
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>

#include "display/tag_table_rows.h"
#include "support/owned.h"

namespace velkor {
namespace {

ShownNewsgroup shown_newsgroup(const ZoxGroup *group) noexcept {
  if (group == nullptr)
    return {};
  if (group->groupName == nullptr)
    return {.known = true, .name = std::nullopt};
  return {.known = true, .name = OwnedText(zox_string_strip_newsgroup(group->groupName)).get()};
}

ShownTag shown_tag(const ZoxString &code, gint32 category) noexcept {
  const ZoxTag *tag = zox_tag_find(&code, category);
  if (tag == nullptr)
    return {.row = tag_table_row("Onbekende tag", code.str), .continuation = {}, .group = nullptr};
  const char *group = tag->group->name->str;
  return {.row = tag_table_row(group, tag->name->str),
          .continuation = tag_table_continuation(tag->name->str),
          .group = group};
}

void put_two_digits(char *place, int number) noexcept {
  place[0] = static_cast<char>('0' + number / 10);
  place[1] = static_cast<char>('0' + number % 10);
}

}  // namespace

const ShownNewsgroup &DisplayLookups::newsgroup(guint32 id) noexcept {
  auto place = newsgroups_.find(id);
  if (place == newsgroups_.end())
    place = newsgroups_.emplace(id, shown_newsgroup(groups_.find(id))).first;
  return place->second;
}

const ShownTag &DisplayLookups::tag(const ZoxString &code, gint32 category) noexcept {
  const std::string_view text = code.str;
  if (text.size() <= sizeof(guint32)) {
    guint32 letters = 0;
    text.copy(reinterpret_cast<char *>(&letters), sizeof letters);
    const guint64 key = guint64{letters} << 32U | static_cast<guint32>(category);
    RecentTag &recent = recent_tags_[key * 0x9E3779B97F4A7C15U >> 56U];
    if (recent.tag != nullptr && recent.key == key)
      return *recent.tag;
    auto place = short_tags_.find(key);
    if (place == short_tags_.end())
      place = short_tags_.emplace(key, shown_tag(code, category)).first;
    recent = {key, &place->second};
    return place->second;
  }
  const std::string key = std::to_string(category).append(text);
  auto place = long_tags_.find(key);
  if (place == long_tags_.end())
    place = long_tags_.emplace(key, shown_tag(code, category)).first;
  return place->second;
}

std::string_view DisplayLookups::date(gint64 seconds) noexcept {
  if (!std::exchange(zone_read_, true))
    tzset();  // which looks into a file: not for every posting
  const std::time_t moment = seconds;
  std::tm local{};
  if (localtime_r(&moment, &local) == nullptr) {
    const OwnedText none(zox_string_date(seconds));  // warns
    return {};
  }
  put_two_digits(date_.data(), local.tm_mday);
  date_[2] = '-';
  put_two_digits(&date_[3], local.tm_mon + 1);
  date_[5] = ' ';
  date_[6] = '(';
  put_two_digits(&date_[7], local.tm_hour);
  date_[9] = ':';
  put_two_digits(&date_[10], local.tm_min);
  date_[12] = ')';
  return {date_.data(), date_.size()};
}

}  // namespace velkor
