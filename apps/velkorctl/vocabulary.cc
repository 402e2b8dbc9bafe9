/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/vocabulary.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>

#include <velkor/zox_category.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>

#include "support/owned.h"
#include "support/slist.h"
#include "velkorctl/failure.h"

namespace velkor::ctl {
namespace {

constexpr gint32 categories = 4;
constexpr guint32 most_sub_categories = 10;
constexpr gint32 lowest_state = -5;
constexpr gint32 highest_state = 3;

std::optional<std::int64_t> number_of(const std::string &text) noexcept {
  std::int64_t number = 0;
  const char *end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, number);
  return !text.empty() && error == std::errc() && stopped == end ? std::optional(number)
                                                                 : std::nullopt;
}

void add_name(std::string &names, const std::string &name) {
  names += (names.empty() ? "" : ", ") + name;
}

Failure unknown(const std::string &what, const std::string &text, const std::string &known) {
  return usage_error("unknown " + what + " \"" + text + "\"; known are: " + known);
}

bool is_tag_code(const std::string &text) noexcept {
  return text.size() > 1 && text[0] >= 'a' && text[0] <= 'd' &&
         std::all_of(text.begin() + 1, text.end(), [](char c) { return g_ascii_isdigit(c); });
}

/** Its code, its name, or its group's and its own: "Genre/Anders". */
bool is_tag(const ZoxTag &tag, const std::string &text) {
  if (tag.code == nullptr)
    return false;
  const std::string full = std::string(tag.group->name->str) + "/" + tag.name->str;
  return text == tag.code->str || same_name(text, tag.name->str) || same_name(text, full.c_str());
}

}  // namespace

bool same_name(const std::string &left, const char *right) noexcept {
  return right != nullptr && g_ascii_strcasecmp(left.c_str(), right) == 0;
}

gint32 category_number(const std::string &text) {
  const auto number = number_of(text);
  std::string known;
  for (gint32 id = 0; id < categories; ++id) {
    if (number == id || same_name(text, zox_string_category(id)))
      return id;
    add_name(known, zox_string_category(id));
  }
  throw unknown("category", text, known);
}

gint32 sub_category_number(gint32 category, const std::string &text) {
  const auto number = number_of(text);
  std::string known;
  for (guint32 id = 0; id < most_sub_categories; ++id) {
    const std::string name = zox_category_get_scat_name(category, id);
    if (name.empty())
      continue;
    if (number == id || same_name(text, name.c_str()))
      return static_cast<gint32>(id);
    add_name(known, name);
  }
  throw unknown("sub-category", text, known);
}

std::vector<gint32> state_numbers(const std::string &text) {
  const auto number = number_of(text);
  std::vector<gint32> found;
  std::string known;
  for (gint32 state = lowest_state; state <= highest_state; ++state) {
    const std::string word = zox_string_status(state);
    if (word.empty())
      continue;
    if (number == state || same_name(text, word.c_str()))
      found.push_back(state);
    add_name(known, std::to_string(state) + " " + word);
  }
  if (found.empty())
    throw unknown("state", text, known);
  return found;
}

guint32 newsgroup_id(const std::string &text) {
  if (const auto number = number_of(text);
      number && *number >= 0 && *number <= std::numeric_limits<guint32>::max())
    return static_cast<guint32>(*number);
  for (const ZoxGroup *group : Items<ZoxGroup>(zox_groups_get()))
    if (group->groupName != nullptr &&
        (same_name(text, group->groupName->str) ||
         same_name(text, OwnedText(zox_string_strip_newsgroup(group->groupName)).get())))
      return group->id;
  throw usage_error("unknown newsgroup \"" + text + "\"; see velkorctl groups");
}

TagChoice tag_choice(gint32 category, const std::string &text) {
  if (category < 0 && is_tag_code(text))
    return {text, category};
  std::vector<TagChoice> found;
  for (const ZoxTag *tag : Items<ZoxTag>(zox_get_tags()))
    if (const auto home = static_cast<gint32>(tag->category);
        (category < 0 || category == home) && is_tag(*tag, text))
      found.push_back({tag->code->str, home});
  if (found.empty())
    throw usage_error("unknown tag \"" + text + "\"; see velkorctl tags");
  if (category < 0 && std::any_of(found.begin(), found.end(), [&](const TagChoice &other) {
        return other.category != found.front().category;
      }))
    throw usage_error("the tag \"" + text + "\" belongs to several categories; name one as well");
  if (found.size() > 1)
    throw usage_error("the tag \"" + text +
                      "\" stands for several codes; name its group as well, as in Genre/Anders");
  return found.front();
}

std::string newsgroup_name(guint32 id) {
  const ZoxGroup *group = zox_group_by_id(id);
  if (group == nullptr || group->groupName == nullptr)
    return std::to_string(id);
  return OwnedText(zox_string_strip_newsgroup(group->groupName)).get();
}

std::string tag_name(gint32 category, const GString *code) {
  const ZoxTag *tag = zox_tag_find(code, category);
  return tag == nullptr || tag->name == nullptr ? code->str : tag->name->str;
}

}  // namespace velkor::ctl
