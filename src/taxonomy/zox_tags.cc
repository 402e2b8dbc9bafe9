/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_tags.h>

#include <velkor/zox_app_core.h>

#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"
#include "taxonomy/tag_table.h"

namespace velkor {
namespace {

void free_tag(ZoxTag *tag) noexcept {
  replace_string(tag->code, nullptr);
  replace_string(tag->name, nullptr);
  g_free(tag);
}

using TagList = ListBuilder<ZoxTag, free_tag>;

ZoxTag *new_tag(guint32 category, const char *name) noexcept {
  ZoxTag *tag = g_new0(ZoxTag, 1);
  tag->category = category;
  tag->name = g_string_new(name);
  return tag;
}

GString *tag_code(char letter, unsigned index) noexcept {
  GString *code = g_string_new(nullptr);
  g_string_printf(code, "%c%u", letter, index);
  return code;
}

void append_group(TagList &list, const TagGroup &group) noexcept {
  ZoxTag *head = new_tag(group.category, group.name);
  list.append(head);
  unsigned index = 0;
  for (const char *name : group.tags) {
    ZoxTag *tag = new_tag(group.category, name);
    tag->group = head;
    tag->code = tag_code(group.letter, index++);
    list.append(tag);
  }
}

bool has_code(const ZoxTag *tag, const GString *code) noexcept {
  return tag->code != nullptr && g_string_equal(tag->code, code);
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_tags_init(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->tags == NULL);
  TagList list;
  for (const TagGroup &group : tag_groups())
    append_group(list, group);
  core->tags = list.release();
}

void zox_tags_free(void) {
  ZOX_ASSERT(core);
  for (ZoxTag *tag : Items<ZoxTag>(core->tags))
    free_tag(tag);
  g_slist_free(core->tags);
  core->tags = nullptr;
}

GSList *zox_get_tags(void) {
  ZOX_ASSERT(core);
  return core->tags;
}

GSList *zox_tag_get_tags_in_cat(guint32 category) {
  ZOX_ASSERT(core);
  CellBuilder<ZoxTag> found;
  for (ZoxTag *tag : Items<ZoxTag>(core->tags)) {
    if (tag->category == category)
      found.append(tag);
  }
  return found.release();
}

ZoxTag *zox_tag_find(const ZoxString *code, gint32 category) {
  ZOX_ASSERT(core);
  if (code == nullptr)
    return nullptr;
  for (ZoxTag *tag : Items<ZoxTag>(core->tags)) {
    if (has_code(tag, code) && tag->category == static_cast<guint32>(category))
      return tag;
  }
  return nullptr;
}

}  // extern "C"
