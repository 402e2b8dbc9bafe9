/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "bench/library.h"

#include <stdexcept>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_groups.h>

#include "bench/posting_data.h"
#include "support/owned.h"

namespace velkor::bench {
namespace {

/** A table with the newsgroups that the postings name. */
void add_groups() {
  for (guint32 id = 0; id < newsgroups; ++id) {
    ZoxGroup *group = zox_group_new();
    group->id = id;
    group->groupName = g_string_new(nullptr);
    g_string_printf(group->groupName, "alt.binaries.nieuwsgroep%u", id);
    core->groups = g_slist_prepend(core->groups, group);
  }
}

ZoxCoreOptions options_for(const std::string &cache_directory) {
  ZoxCoreOptions options{};
  options.cacheDir = cache_directory.c_str();
  options.parts = ZOX_CORE_FILTERS | ZOX_CORE_TABLES;
  return options;
}

}  // namespace

void expect(bool condition, const char *text) {
  if (!condition)
    throw std::runtime_error(text);
}

Library::Library(const std::string &cache_directory) : core_(options_for(cache_directory)) {
  add_groups();
}

void load_list() {
  char *text = nullptr;
  const ZoxErrorCode code = zox_eventlist_load(core->eventlist, &text);
  const OwnedText message(text);
  if (code != ZOX_RESULT_SUCCESS)
    throw std::runtime_error(std::string("cannot load the list: ") +
                             (message ? message.get() : ""));
}

void save_list() {
  expect(zox_eventlist_save(core->eventlist) == 1, "cannot save the list");
}

unsigned count_postings() {
  return zox_eventlist_get_count(core->eventlist, 0);
}

}  // namespace velkor::bench
