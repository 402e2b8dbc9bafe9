/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/core_fixture.h"

#include <stdexcept>

#include <velkor/zox_file.h>

#include "core/app_core.h"

namespace velkor::test {

CoreTest::CoreTest() {
  if (core != nullptr)
    throw std::logic_error("a core is left over");
  make_core();
  zox_file_set_cache_dir(sandbox.cache().c_str());
  zox_file_set_data_dir("/usr/share/velkor");
  zox_file_set_lib_dir(VELKOR_TEST_PLUGINS "/good");
  zox_config_init();
}

CoreTest::~CoreTest() {
  release_settings();
  release_lists();
  zox_file_free_cache_dir();
  zox_file_free_data_dir();
  zox_file_free_lib_dir();
  free_core();
}

void CoreTest::read_only_from_now_on() {
  const ZoxAppCore content = *core;
  free_core();
  make_core(Access::read_only);
  *core = content;
}

std::filesystem::path CoreTest::cache_file(std::string_view name) const {
  return sandbox.cache() / name;
}

}  // namespace velkor::test
