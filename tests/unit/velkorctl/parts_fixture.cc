/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "parts_fixture.h"

#include <stdexcept>
#include <string>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_string.h>

#include "velkorctl/filter_options.h"

namespace velkor::ctl {
namespace {

void add_filter(const char *name, gint32 category, const char *tag) {
  const OwnedFilter filter(zox_filter_new_filter());
  filter->name = zox_string_new(name);
  filter->cat = category;
  filter->tags = g_slist_append(nullptr, zox_string_new(tag));
  zox_filterlist_append_filter(core->filterlist, filter.get());
}

void add_group(guint32 id, const char *name) {
  ZoxGroup *group = zox_group_new();
  group->id = id;
  group->groupName = zox_string_new(name);
  core->groups = g_slist_append(core->groups, group);
}

}  // namespace

PartsTest::PartsTest() {
  const std::string cache = sandbox.cache();
  ZoxCoreOptions options{};
  options.cacheDir = cache.c_str();
  options.parts = ZOX_CORE_TABLES;
  if (zox_app_core_open(&options, nullptr) != ZOX_CORE_OPENED)
    throw std::logic_error("the core cannot be opened");
  add_filter("DivX", 0, "a0");
  add_filter("Windows", 2, "a0");
  add_filter("Windows", 3, "a0");
  zox_categories_init();
  add_group(7, "alt.binaries.tv");
  add_group(12, "comp.os");
}

PartsTest::~PartsTest() {
  zox_app_core_close();
}

}  // namespace velkor::ctl
