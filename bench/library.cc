/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "bench/library.h"

#include <stdexcept>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_file.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_tags.h>

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

}  // namespace

Library::Library(const std::string &cache_directory) {
  core = g_new0(ZoxAppCore, 1);
  zox_file_set_cache_dir(cache_directory.c_str());
  zox_file_set_data_dir(nullptr);
  zox_config_init();
  core->filterlist = zox_filterlist_new();
  zox_filterlist_load(core->filterlist);
  zox_categories_init();
  zox_tags_init();
  add_groups();
  core->eventlist = zox_eventlist_new();
}

Library::~Library() {
  zox_eventlist_destroy(core->eventlist);
  zox_group_free_all();
  zox_tags_free();
  zox_categories_free();
  zox_filterlist_destroy(core->filterlist);
  zox_config_free();
  zox_file_free_data_dir();
  zox_file_free_cache_dir();
  g_free(std::exchange(core, nullptr));
}

void load_list() {
  char *text = nullptr;
  const ZoxErrorCode code = zox_eventlist_load(core->eventlist, &text);
  const OwnedText message(text);
  if (code != 0)
    throw std::runtime_error(std::string("cannot load the list: ") +
                             (message ? message.get() : ""));
}

}  // namespace velkor::bench
