/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/vocabulary.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include <velkor/zox_category.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>

#include "support/numbers.h"
#include "velkorctl/arguments.h"
#include "velkorctl/failure.h"

namespace velkor::ctl {
namespace {

constexpr gint32 category_count = 4;
/** Numbers of sub-categories are below this. */
constexpr guint32 sub_category_limit = 10;
constexpr gint32 lowest_state = ZOX_STATUS_UNKNOWN;
constexpr gint32 highest_state = ZOX_STATUS_UNSUPPORTED;

Failure unknown(const std::string &what, const std::string &text,
                const std::vector<std::string> &known) {
  return usage_error("unknown " + what + " \"" + text + "\"; known are: " + joined(known));
}

bool is_tag_code(const std::string &text) noexcept {
  return text.size() > 1 && text[0] >= 'a' && text[0] <= 'd' &&
         std::ranges::all_of(std::string_view(text).substr(1),
                             [](char letter) { return g_ascii_isdigit(letter); });
}

/** Whether `text` is the code of the tag, its name, or the names of its group and itself. */
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

std::vector<std::string> category_names() {
  std::vector<std::string> names;
  names.reserve(category_count);
  for (gint32 id = 0; id < category_count; ++id)
    names.emplace_back(zox_string_category(id));
  return names;
}

gint32 category_number(const std::string &text) {
  const auto number = whole_number(text);
  const std::vector<std::string> names = category_names();
  for (gint32 id = 0; id < category_count; ++id)
    if (number == id || same_name(text, names[static_cast<std::size_t>(id)].c_str()))
      return id;
  throw unknown("category", text, names);
}

gint32 sub_category_number(gint32 category, const std::string &text) {
  const auto number = whole_number(text);
  std::vector<std::string> known;
  for (guint32 id = 0; id < sub_category_limit; ++id) {
    const std::string name = zox_category_get_scat_name(category, id);
    if (name.empty())
      continue;
    if (number == id || same_name(text, name.c_str()))
      return static_cast<gint32>(id);
    known.push_back(name);
  }
  throw unknown("sub-category", text, known);
}

std::vector<gint32> state_numbers(const std::string &text) {
  const auto number = whole_number(text);
  std::vector<gint32> found;
  std::vector<std::string> known;
  for (gint32 state = lowest_state; state <= highest_state; ++state) {
    const std::string name = zox_string_status(state);
    if (name.empty())
      continue;
    if (number == state || same_name(text, name.c_str()))
      found.push_back(state);
    known.push_back(std::to_string(state) + " " + name);
  }
  if (found.empty())
    throw unknown("state", text, known);
  return found;
}

guint32 newsgroup_id(const std::string &text) {
  if (const auto number = whole_number(text);
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
  if (category < 0 && std::ranges::any_of(found, [&](const TagChoice &other) {
        return other.category != found.front().category;
      }))
    throw usage_error("the tag \"" + text +
                      "\" belongs to several categories; name the category too");
  if (found.size() > 1)
    throw usage_error("the tag \"" + text +
                      "\" stands for several codes; name its group too, as in Genre/Anders");
  return found.front();
}

std::string newsgroup_name(guint32 id) {
  const ZoxGroup *group = zox_group_by_id(id);
  if (group == nullptr || group->groupName == nullptr)
    return std::to_string(id);
  return OwnedText(zox_string_strip_newsgroup(group->groupName)).get();
}

std::vector<std::string> newsgroup_names(const GSList *ids) {
  std::vector<std::string> names;
  for (const GString *id : Items<GString>(ids))
    names.push_back(newsgroup_name(static_cast<guint32>(std::strtoul(id->str, nullptr, 10))));
  return names;
}

std::string tag_name(gint32 category, const GString *code) {
  const ZoxTag *tag = zox_tag_find(code, category);
  return tag == nullptr || tag->name == nullptr ? code->str : tag->name->str;
}

std::vector<std::string> tag_names(gint32 category, const GSList *codes) {
  std::vector<std::string> names;
  for (const GString *code : Items<GString>(codes))
    names.push_back(tag_name(category, code));
  return names;
}

}  // namespace velkor::ctl
