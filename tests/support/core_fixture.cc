/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/core_fixture.h"

#include <stdexcept>
#include <utility>

#include <glib-object.h>

#include <velkor/zox_category.h>
#include <velkor/zox_file.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_mail.h>
#include <velkor/zox_tags.h>

namespace velkor::test {

CoreTest::CoreTest() {
  if (core != nullptr)
    throw std::logic_error("a core is left over");
  core = g_new0(ZoxAppCore, 1);
  zox_file_set_cache_dir(sandbox.cache().c_str());
  zox_file_set_data_dir("/usr/share/velkor");
  zox_file_set_lib_dir(VELKOR_TEST_PLUGINS "/good");
  zox_config_init();
}

CoreTest::~CoreTest() {
  if (core->config != nullptr)
    zox_config_free();
  if (core->tags != nullptr)
    zox_tags_free();
  if (core->categories != nullptr)
    zox_categories_free();
  if (core->filterlist != nullptr)
    g_object_unref(core->filterlist);
  if (core->eventlist != nullptr)
    g_object_unref(core->eventlist);
  if (core->mail != nullptr)
    zox_mail_free(std::exchange(core->mail, nullptr));
  if (core->groups != nullptr)
    zox_group_free_all();
  zox_file_free_cache_dir();
  zox_file_free_data_dir();
  zox_file_free_lib_dir();
  g_free(std::exchange(core, nullptr));
}

std::filesystem::path CoreTest::cache_file(std::string_view name) const {
  return sandbox.cache() / name;
}

}  // namespace velkor::test
