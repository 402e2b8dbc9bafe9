/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Start-up and shut-down, which know everyone. */
#include <velkor/zox_app_core.h>

#include <cerrno>
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

#include "core/app_core.h"
#include "core/cache_care.h"
#include "core/cache_directory.h"
#include "core/file_outcome.h"
#include "core/settings.h"
#include "http/workers.h"
#include "operations/request_registry.h"
#include "support/assertion.h"
#include "support/owned.h"

namespace velkor {
namespace {

[[noreturn]] void leave_to_the_running_instance() noexcept {
  std::printf("Velkor is reeds actief\n");
  free_core();
  std::exit(1);  // NOLINT(concurrency-mt-unsafe): no other thread has been started yet
}

/**
 * All but the settings, which are there. Each step builds on those before it: the filters make the
 * categories, in which the postings are counted, and the newsgroups are looked up.
 */
void load_parts(guint32 parts) noexcept {
  if ((parts & ZOX_CORE_FILTERS) != 0) {
    zox_filterlist_load(core->filterlist);
    zox_categories_init();
  }
  if ((parts & ZOX_CORE_TABLES) != 0) {
    zox_tags_free();
    zox_tags_init();
    zox_group_load();
  }
  if ((parts & ZOX_CORE_MAIL) != 0)
    zox_mail_load();
  if ((parts & ZOX_CORE_POSTINGS) != 0)
    zox_eventlist_load(core->eventlist, nullptr);
}

/** Makes what every core has, empty, and loads the parts. */
void make_parts(guint32 parts) noexcept {
  core->filterlist = zox_filterlist_new();
  core->eventlist = zox_eventlist_new();
  zox_categories_init();
  load_parts(parts);
}

/** The reverse, with the settings first and the two directories that shut-down forgets. */
void release_parts() noexcept {
  release_settings();
  zox_tags_free();
  if (core->categories != nullptr)
    zox_categories_free();
  release_lists();
  zox_file_free_cache_dir();
  zox_file_free_data_dir();
  zox_group_free_all();
}

/** The result of a step of opening, with the sentence for a failure. */
struct Opening {
  ZoxCoreResult result = ZOX_CORE_OPENED;
  OwnedText message{};

  [[nodiscard]] bool failed() const noexcept { return result != ZOX_CORE_OPENED; }
};

Opening start_service(const ZoxCoreOptions &options) noexcept {
  char *place = nullptr;
  gint32 already_active = 0;
  zox_dbus_initialize(options.isGui, options.dbusArgument, &already_active, &place);
  OwnedText message(place);
  if (already_active == 0)
    return {ZOX_CORE_OPENED, std::move(message)};
  return {ZOX_CORE_ALREADY_ACTIVE, OwnedText(g_strdup("another instance is running"))};
}

/** The failure of `action` on the cache directory. */
Opening refuse_directory(ZoxCoreResult result, const char *action, int error) noexcept {
  const OwnedText name(zox_file_parse_cache_filename(nullptr, 0));
  return {result,
          OwnedText(g_strconcat(action, " ", name.get(), ": ", g_strerror(error), nullptr))};
}

Opening open_directories(const ZoxCoreOptions &options) noexcept {
  using Result = DirectoryCheck::Result;
  name_cache_directory(options.cacheDir);
  zox_file_set_data_dir(options.dataDir);
  zox_file_set_lib_dir(options.libDir);
  DirectoryCheck check = read_only() ? DirectoryCheck{} : prepare_cache_directory();
  if (check.result == Result::usable)
    check = look_at_cache_directory();
  switch (check.result) {
  case Result::usable:
    break;
  case Result::cannot_be_made:
    return refuse_directory(ZOX_CORE_NO_DIRECTORY, "cannot make", check.error);
  case Result::not_a_directory:
    return refuse_directory(ZOX_CORE_NOT_A_DIRECTORY, "cannot use", ENOTDIR);
  case Result::cannot_be_read:
    return refuse_directory(ZOX_CORE_NOT_READABLE, "cannot read", check.error);
  case Result::cannot_be_written:
    return refuse_directory(ZOX_CORE_NOT_WRITABLE, "cannot write in", check.error);
  }
  return {};
}

/** What an earlier process left in the cache that this one may write. */
void put_cache_in_order(const char *caller) noexcept {
  remove_leftovers();
  narrow_permissions(caller);
}

/** Defaults must never take the place of settings that only cannot be read now. */
Opening open_settings() noexcept {
  load_settings();
  if (file_outcome().status != ZOX_FILE_UNREADABLE)
    return {};
  return {ZOX_CORE_SETTINGS_UNREADABLE, OwnedText(g_strdup(zox_file_last_error()->message))};
}

Opening open_core(const ZoxCoreOptions &options) noexcept {
  Opening opening;
  if ((options.parts & ZOX_CORE_BUS) != 0)
    opening = start_service(options);
  if (opening.failed())
    return opening;
  if (Opening step = open_directories(options); step.failed())
    return step;
  put_cache_in_order("zox_app_core_open");
  if ((options.parts & ZOX_CORE_SETTINGS) == 0)
    zox_config_init();
  else if (Opening step = open_settings(); step.failed())
    return step;
  make_parts(options.parts);
  return opening;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

/* Here and in opening, GLib's threads and GObject's types have been ready by themselves since GLib
   2.36. */
gint32 zox_app_core_init(const char *dataDir, const char *cacheDir, const char *libDir,
                         const char *dbusArgument, gint32 isGui, char **dbusError, gint32 *dbusOk) {
  ZOX_ASSERT(core == NULL);
  make_core();
  gint32 alreadyActive = 0;
  const gint32 owned = zox_dbus_initialize(isGui, dbusArgument, &alreadyActive, dbusError);
  if (dbusOk != nullptr)
    *dbusOk = owned;
  if (alreadyActive != 0)
    leave_to_the_running_instance();
  zox_file_set_cache_dir(cacheDir);
  zox_file_set_data_dir(dataDir);
  zox_file_set_lib_dir(libDir);
  put_cache_in_order(__func__);
  zox_config_load();
  make_parts(ZOX_CORE_ALL);
  return 1;
}

/* The library directory stays set; the mail stays with whoever still shows it. */
void zox_app_core_cleanup(void) {
  if (core == nullptr)
    return;
  request_registry().stop();
  stop_workers();
  zox_dbus_cleanup();
  zox_config_save();
  release_parts();
  free_core();
}

ZoxCoreResult zox_app_core_open(const ZoxCoreOptions *options, char **message) {
  ZOX_ASSERT(core == NULL);
  ZOX_ASSERT(options);
  make_core(options->readOnly != 0 ? Access::read_only : Access::read_write);
  Opening opening = open_core(*options);
  if (opening.failed())
    zox_app_core_close();
  hand_over(message, std::move(opening.message));
  return opening.result;
}

void zox_app_core_load(guint32 parts) {
  ZOX_ASSERT(core);
  load_parts(parts);
}

void zox_app_core_close(void) {
  if (core == nullptr)
    return;
  request_registry().stop();
  stop_workers();
  zox_dbus_cleanup();
  zox_mail_free(std::exchange(core->mail, nullptr));
  release_parts();
  zox_file_free_lib_dir();
  free_core();
}

}  // extern "C"
