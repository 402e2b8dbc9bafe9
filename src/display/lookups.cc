/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "display/lookups.h"

#include <velkor/zox_groups.h>
#include <velkor/zox_string.h>

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

}  // namespace

const ShownNewsgroup &DisplayLookups::newsgroup(guint32 id) noexcept {
  auto place = newsgroups_.find(id);
  if (place == newsgroups_.end())
    place = newsgroups_.emplace(id, shown_newsgroup(groups_.find(id))).first;
  return place->second;
}

const ZoxTag *DisplayLookups::tag(const ZoxString &code, gint32 category) noexcept {
  tagKey_.assign(reinterpret_cast<const char *>(&category), sizeof category).append(code.str);
  auto place = tags_.find(tagKey_);
  if (place == tags_.end())
    place = tags_.emplace(tagKey_, zox_tag_find(&code, category)).first;
  return place->second;
}

}  // namespace velkor
