/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Start-up and shut-down, which know everyone. */
#include <velkor/zox_app_core.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

#include <velkor/zox_category.h>
#include <velkor/zox_config.h>
#include <velkor/zox_dbus.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_file.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_mail.h>
#include <velkor/zox_tags.h>

#include "support/assertion.h"

namespace velkor {
namespace {

[[noreturn]] void leave_to_the_running_instance() noexcept {
  std::printf("Velkor is reeds actief\n");
  g_free(std::exchange(core, nullptr));
  std::exit(1);  // NOLINT(concurrency-mt-unsafe): no other thread has been started yet
}

/** Each step builds on those before it: the postings are counted, the newsgroups looked up. */
void load_everything() noexcept {
  zox_config_load();
  core->filterlist = zox_filterlist_new();
  zox_filterlist_load(core->filterlist);
  zox_categories_init();
  zox_tags_init();
  zox_group_load();
  zox_mail_load();
  core->eventlist = zox_eventlist_new();
  zox_eventlist_load(core->eventlist, nullptr);
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

gint32 zox_app_core_init(const char *dataDir, const char *cacheDir, const char *libDir,
                         const char *dbusArgument, gint32 isGui, char **dbusError, gint32 *dbusOk) {
  ZOX_ASSERT(core == NULL);
  // GLib's threads and GObject's types have been ready by themselves since GLib 2.36.
  core = g_new0(ZoxAppCore, 1);
  gint32 alreadyActive = 0;
  const gint32 owned = zox_dbus_initialize(isGui, dbusArgument, &alreadyActive, dbusError);
  if (dbusOk != nullptr)
    *dbusOk = owned;
  if (alreadyActive != 0)
    leave_to_the_running_instance();
  zox_file_set_cache_dir(cacheDir);
  zox_file_set_data_dir(dataDir);
  zox_file_set_lib_dir(libDir);
  load_everything();
  return 1;
}

/* The library directory stays set; the mail stays with whoever still shows it. */
void zox_app_core_cleanup(void) {
  if (core == nullptr)
    return;
  zox_dbus_cleanup();
  zox_config_save();
  zox_config_free();
  zox_tags_free();
  zox_categories_free();
  zox_filterlist_destroy(core->filterlist);
  zox_eventlist_destroy(core->eventlist);
  zox_file_free_cache_dir();
  zox_file_free_data_dir();
  zox_group_free_all();
  g_free(std::exchange(core, nullptr));
}

}  // extern "C"
