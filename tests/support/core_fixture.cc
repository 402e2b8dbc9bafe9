/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/core_fixture.h"

#include <stdexcept>
#include <utility>

#include <glib-object.h>

#include <velkor/zox_file.h>

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
  if (core->filterlist != nullptr)
    g_object_unref(core->filterlist);
  if (core->eventlist != nullptr)
    g_object_unref(core->eventlist);
  zox_file_free_cache_dir();
  zox_file_free_data_dir();
  zox_file_free_lib_dir();
  g_free(std::exchange(core, nullptr));
}

std::filesystem::path CoreTest::cache_file(std::string_view name) const {
  return sandbox.cache() / name;
}

}  // namespace velkor::test
